#include "app/json/records.h"

#include <utility>

#include <fmt/format.h>

#include "app/command.h"
#include "app/json/given_fields.h"

namespace orvane::app
{
namespace
{

// In the place of a getter: what is read and never written. In the place of a setter: what is written and never read.
struct Hidden
{
};
struct ReadOnly
{
};
constexpr Hidden hidden;
constexpr ReadOnly readOnly;

// ---- the fields of each record ----------------------------------------------------------------------
//
// They are set in this order: what others depend on stands first.

template <class Visit>
void fields(Visit && visit, CLink const *)
{
    visit("id", &CLink::getID, &CLink::setID);
    visit("upstreamTaskID", &CLink::getUpstreamTaskID, &CLink::setUpstreamTaskID);
    visit("type", &CLink::getType, &CLink::setType);
    visit("status", &CLink::getStatus, &CLink::setStatus);
    visit("delay", &CLink::getDelay, &CLink::setDelay);
}

template <class Visit>
void fields(Visit && visit, CCost const *)
{
    visit("id", &CCost::getID, &CCost::setID);
    visit("description", &CCost::getDescription, &CCost::setDescription);
    visit("amount", &CCost::getAmount, &CCost::setAmount);
    visit("type", &CCost::getType, &CCost::setType);
}

template <class Visit>
void fields(Visit && visit, CRisk const *)
{
    visit("id", &CRisk::getID, &CRisk::setID);
    visit("description", &CRisk::getDescription, &CRisk::setDescription);
    visit("valueMode", &CRisk::getValueMode, &CRisk::setValueMode);
    visit("subRisks", &CRisk::getSubRisks, &CRisk::setSubRisks);
}

// The two sizes as they are stored, whichever of them is in force.
CProjectDouble storedPercent(CAssignedRisk const & assigned)
{
    CAssignedRisk inPercent(assigned);
    inPercent.setValueMode(CRiskValueMode::Percent);
    return inPercent.getValuePercent(CTask());
}

CProjectDuration storedFixed(CAssignedRisk const & assigned)
{
    CAssignedRisk fixed(assigned);
    fixed.setValueMode(CRiskValueMode::Fixed);
    return fixed.getValueFixed(CTask());
}

template <class Visit>
void fields(Visit && visit, CAssignedRisk const *)
{
    visit("id", &CAssignedRisk::getID, &CAssignedRisk::setID);
    visit("riskID", &CAssignedRisk::getRiskID, &CAssignedRisk::setRiskID);
    visit("status", &CAssignedRisk::getStatus, &CAssignedRisk::setStatus);
    visit("weight", &CAssignedRisk::getWeight, &CAssignedRisk::setWeight);
    visit("valueMode", &CAssignedRisk::getValueMode, &CAssignedRisk::setValueMode);
    visit("valuePercent", &storedPercent, &CAssignedRisk::setValuePercent);
    visit("valueFixed", &storedFixed, &CAssignedRisk::setValueFixed);
    visit("bufferID", &CAssignedRisk::getBufferID, &CAssignedRisk::setBufferID);
    visit("costs", &CAssignedRisk::getCosts, &CAssignedRisk::setCosts);
}

template <class Visit>
void fields(Visit && visit, CAssignedResource const *)
{
    visit("id", &CAssignedResource::getID, &CAssignedResource::setID);
    visit("resourceID", &CAssignedResource::getResourceID, &CAssignedResource::setResourceID);
    visit("percentageAssigned", &CAssignedResource::getPercentageAssigned, &CAssignedResource::setPercentageAssigned);
    visit("displayAsPercent", &CAssignedResource::getDisplayAsPercent, &CAssignedResource::setDisplayAsPercent);
    visit("resourceProfileType", &CAssignedResource::getResourceProfileType,
          &CAssignedResource::setResourceProfileType);
    visit("transform", &CAssignedResource::getTransform, &CAssignedResource::setTransform);
}

template <class Visit>
void fields(Visit && visit, CTaskReport const *)
{
    visit("id", &CTaskReport::getID, &CTaskReport::setID);
    visit("riskID", &CTaskReport::getRiskID, &CTaskReport::setRiskID);
    visit("date", &CTaskReport::getDate, &CTaskReport::setDate);
    visit("duration", &CTaskReport::getDuration, &CTaskReport::setDuration);
    visit("type", &CTaskReport::getType, &CTaskReport::setType);
    visit("comments", &CTaskReport::getComments, &CTaskReport::setComments);
    visit("costs", &CTaskReport::getCosts, &CTaskReport::setCosts);
}

template <class Visit>
void fields(Visit && visit, CSupplyChain const *)
{
    visit("id", &CSupplyChain::getID, &CSupplyChain::setID);
    visit("supplierID", &CSupplyChain::getSupplierID, &CSupplyChain::setSupplierID);
    visit("customerID", &CSupplyChain::getCustomerID, &CSupplyChain::setCustomerID);
}

template <class Visit>
void fields(Visit && visit, CTaskConstraint const *)
{
    visit("type", &CTaskConstraint::getType, &CTaskConstraint::setType);
}

template <class Visit>
void fields(Visit && visit, CCalendarDayType const *)
{
    visit("id", &CCalendarDayType::getID, &CCalendarDayType::setID);
    visit("description", &CCalendarDayType::getDescription, &CCalendarDayType::setDescription);
    visit("color", &CCalendarDayType::getColor, &CCalendarDayType::setColor);
    visit("dayType", &CCalendarDayType::getDayType, &CCalendarDayType::setDayType);
    visit("timeOfDaySpanArray", &CCalendarDayType::getTimeOfDaySpanArray, &CCalendarDayType::setTimeOfDaySpanArray);
}

template <class Visit>
void fields(Visit && visit, CProjectTimeOfDaySpan const *)
{
    visit("start", &CProjectTimeOfDaySpan::getStart, &CProjectTimeOfDaySpan::setStart);
    visit("end", &CProjectTimeOfDaySpan::getEnd, &CProjectTimeOfDaySpan::setEnd);
}

template <class Visit>
void fields(Visit && visit, CCalendarException const *)
{
    visit("date", &CCalendarException::getDate, &CCalendarException::setDate);
    visit("calendarDayTypeID", &CCalendarException::getCalendarDayTypeID, &CCalendarException::setCalendarDayTypeID);
}

template <class Visit>
void fields(Visit && visit, CCalendarWeek const *)
{
    constexpr char const * days[] = {"sunday", "monday", "tuesday", "wednesday", "thursday", "friday", "saturday"};
    for (int day = 1; day <= 7; ++day)
        visit(days[day - 1],
              [day](CCalendarWeek const & week) -> CCalendarDayTypeID const & { return week.getDay(day); },
              [day](CCalendarWeek & week, CCalendarDayTypeID const & id) { week.setDay(day, id); });
}

template <class Visit>
void fields(Visit && visit, CCalendar const *)
{
    visit("id", &CCalendar::getID, &CCalendar::setID);
    visit("inUse", &CCalendar::getInUse, &CCalendar::setInUse);
    visit("normalDayInUse", &CCalendar::getNormalDayInUse, &CCalendar::setNormalDayInUse);
    visit("calendarDayTypes", &CCalendar::getCalendarDayTypes, &CCalendar::setCalendarDayTypes);
    visit("calendarWeek", &CCalendar::getCalendarWeek, &CCalendar::setCalendarWeek);
    visit("calendarDayExceptions", &CCalendar::getCalendarDayExceptions, &CCalendar::setCalendarDayExceptions);
}

// A parent tells the rates and dates of those below it, and keeps none of its own: hence they stand behind.
template <std::derived_from<CResourceBase> Resource, class Visit>
void fields(Visit && visit, Resource const *)
{
    visit("id", &Resource::getID, &Resource::setID);
    visit("name", &Resource::getName, &Resource::setName);
    visit("description", &Resource::getDescription, &Resource::setDescription);
    visit("status", &Resource::getStatus, &Resource::setStatus);
    visit("leadTime", &Resource::getLeadTime, &Resource::setLeadTime);
    visit("orderRequired", &Resource::getOrderRequired, &Resource::setOrderRequired);
    visit("autoAccept", &Resource::getAutoAccept, &Resource::setAutoAccept);
    visit("totalUnitsAvailable", &Resource::getTotalUnitsAvailable, &Resource::setTotalUnitsAvailable);
    visit("resourceUnitType", &Resource::getResourceUnitType, &Resource::setResourceUnitType);
    visit("supplierReferences", &Resource::getSupplierReferences, &Resource::setSupplierReferences);
    visit("costs", &Resource::getCosts, &Resource::setCosts);
    visit("resourceRepresentations", &Resource::getRepresentations, &Resource::setResourceRepresentations);
    visit("subResources", &Resource::getSubResources, &Resource::setSubResources);
    visit("useRatePerDay", &Resource::getUseRatePerDay, &Resource::setUseRatePerDay);
    if constexpr (requires { &Resource::getUsedOn; }) visit("usedOn", &Resource::getUsedOn, &Resource::setUsedOn);
    else
    {
        visit("percentageUsed", &Resource::getPercentageUsed, &Resource::setPercentageUsed);
        visit("availableFrom", &Resource::getAvailableFrom, &Resource::setAvailableFrom);
        visit("availableTo", &Resource::getAvailableTo, &Resource::setAvailableTo);
        visit("calendar", &Resource::getCalendar, &Resource::setCalendar);
    }
}

template <class Visit>
void fields(Visit && visit, CCompany const *)
{
    visit("id", &CCompany::getID, &CCompany::setID);
    visit("name", &CCompany::getName, &CCompany::setName);
    visit("type", &CCompany::getType, &CCompany::setType);
    visit("address", &CCompany::getAddress, &CCompany::setAddress);
    visit("telephoneNumber", &CCompany::getTelephoneNumber, &CCompany::setTelephoneNumber);
    visit("faxNumber", &CCompany::getFaxNumber, &CCompany::setFaxNumber);
    visit("emailAddress", &CCompany::getEmailAddress, &CCompany::setEmailAddress);
    visit("color", &CCompany::getColor, &CCompany::setColor);
    visit("calendar", &CCompany::getCalendar, &CCompany::setCalendar);
    visit("equipmentResources", &CCompany::getEquipmentResources, &CCompany::setEquipmentResources);
    visit("humanResources", &CCompany::getHumanResources, &CCompany::setHumanResources);
    visit("locationResources", &CCompany::getLocationResources, &CCompany::setLocationResources);
    visit("materialResources", &CCompany::getMaterialResources, &CCompany::setMaterialResources);
}

template <class Visit>
void fields(Visit && visit, CPermissions const *)
{
    visit("writeTasks", &CPermissions::getWriteTasks, &CPermissions::setWriteTasks);
    visit("readTasks", &CPermissions::getReadTasks, &CPermissions::setReadTasks);
    visit("writeTaskCosts", &CPermissions::getWriteTaskCosts, &CPermissions::setWriteTaskCosts);
    visit("readTaskCosts", &CPermissions::getReadTaskCosts, &CPermissions::setReadTaskCosts);
    visit("writeTaskResources", &CPermissions::getWriteTaskResources, &CPermissions::setWriteTaskResources);
    visit("readTaskResources", &CPermissions::getReadTaskResources, &CPermissions::setReadTaskResources);
    visit("writeTaskRisks", &CPermissions::getWriteTaskRisks, &CPermissions::setWriteTaskRisks);
    visit("readTaskRisks", &CPermissions::getReadTaskRisks, &CPermissions::setReadTaskRisks);
    visit("writeTaskRiskCosts", &CPermissions::getWriteTaskRiskCosts, &CPermissions::setWriteTaskRiskCosts);
    visit("readTaskRiskCosts", &CPermissions::getReadTaskRiskCosts, &CPermissions::setReadTaskRiskCosts);
    visit("writeTaskReports", &CPermissions::getWriteTaskReports, &CPermissions::setWriteTaskReports);
    visit("readTaskReports", &CPermissions::getReadTaskReports, &CPermissions::setReadTaskReports);
    visit("writeTaskReportCosts", &CPermissions::getWriteTaskReportCosts, &CPermissions::setWriteTaskReportCosts);
    visit("readTaskReportCosts", &CPermissions::getReadTaskReportCosts, &CPermissions::setReadTaskReportCosts);
    visit("writeResource", &CPermissions::getWriteResource, &CPermissions::setWriteResource);
    visit("readResource", &CPermissions::getReadResource, &CPermissions::setReadResource);
    visit("writeResourceCost", &CPermissions::getWriteResourceCost, &CPermissions::setWriteResourceCost);
    visit("readResourceCost", &CPermissions::getReadResourceCost, &CPermissions::setReadResourceCost);
    visit("writeUsers", &CPermissions::getWriteUsers, &CPermissions::setWriteUsers);
    visit("writeRoles", &CPermissions::getWriteRoles, &CPermissions::setWriteRoles);
}

template <class Visit>
void fields(Visit && visit, CRole const *)
{
    visit("id", &CRole::getID, &CRole::setID);
    visit("name", &CRole::getName, &CRole::setName);
    visit("permissions", &CRole::getPermissions, &CRole::setPermissions);
}

template <class Visit>
void fields(Visit && visit, CUser const *)
{
    visit("id", &CUser::getID, &CUser::setID);
    visit("name", &CUser::getName, &CUser::setName);
    visit("login", &CUser::getLogin, &CUser::setLogin);
    visit("password", hidden, &CUser::setPassword);
    visit("email", &CUser::getEmail, &CUser::setEmail);
    visit("telephoneNumber", &CUser::getTelephoneNumber, &CUser::setTelephoneNumber);
    visit("mobileTelephoneNumber", &CUser::getMobileTelephoneNumber, &CUser::setMobileTelephoneNumber);
    visit("roleID", &CUser::getRoleID, &CUser::setRoleID);
    visit("companyID", &CUser::getCompanyID, &CUser::setCompanyID);
    visit("permissions", &CUser::getPermissions, &CUser::setPermissions);
}

template <class Visit>
void fields(Visit && visit, CNameFilter const *)
{
    visit("inUse", &CNameFilter::getInUse, &CNameFilter::setInUse);
    visit("names", &CNameFilter::getNames, &CNameFilter::setNames);
    visit("includeMatches", &CNameFilter::getIncludeMatches, &CNameFilter::setIncludeMatches);
    visit("matchCase", &CNameFilter::getMatchCase, &CNameFilter::setMatchCase);
    visit("matchWholeWordOnly", &CNameFilter::getMatchWholeWordOnly, &CNameFilter::setMatchWholeWordOnly);
}

template <class Visit>
void fields(Visit && visit, CDateRangeFilter const *)
{
    visit("inUse", &CDateRangeFilter::getInUse, &CDateRangeFilter::setInUse);
    visit("start", &CDateRangeFilter::getStart, &CDateRangeFilter::setStart);
    visit("end", &CDateRangeFilter::getEnd, &CDateRangeFilter::setEnd);
    visit("includeOverlaps", &CDateRangeFilter::getIncludeOverlaps, &CDateRangeFilter::setIncludeOverlaps);
}

template <class Visit>
void fields(Visit && visit, CStatusFilter const *)
{
    visit("inUse", &CStatusFilter::getInUse, &CStatusFilter::setInUse);
    visit("holdIncluded", &CStatusFilter::getHoldIncluded, &CStatusFilter::setHoldIncluded);
    visit("approvedIncluded", &CStatusFilter::getApprovedIncluded, &CStatusFilter::setApprovedIncluded);
    visit("readyIncluded", &CStatusFilter::getReadyIncluded, &CStatusFilter::setReadyIncluded);
    visit("goIncluded", &CStatusFilter::getGoIncluded, &CStatusFilter::setGoIncluded);
    visit("tbaIncluded", &CStatusFilter::getTbaIncluded, &CStatusFilter::setTbaIncluded);
    visit("startedIncluded", &CStatusFilter::getStartedIncluded, &CStatusFilter::setStartedIncluded);
    visit("finishedIncluded", &CStatusFilter::getFinishedIncluded, &CStatusFilter::setFinishedIncluded);
}

template <class Visit>
void fields(Visit && visit, CResourcesFilter const *)
{
    visit("inUse", &CResourcesFilter::getInUse, &CResourcesFilter::setInUse);
    visit("resourcesIncluded", &CResourcesFilter::getResourcesIncluded, &CResourcesFilter::setResourcesIncluded);
}

template <class Visit>
void fields(Visit && visit, CRiskFilter const *)
{
    visit("inUse", &CRiskFilter::getInUse, &CRiskFilter::setInUse);
    visit("riskIncluded", &CRiskFilter::getRiskIncluded, &CRiskFilter::setRiskIncluded);
}

template <class Visit>
void fields(Visit && visit, CCompanyFilter const *)
{
    visit("inUse", &CCompanyFilter::getInUse, &CCompanyFilter::setInUse);
    visit("companyIncluded", &CCompanyFilter::getCompanyIncluded, &CCompanyFilter::setCompanyIncluded);
    visit("mode", &CCompanyFilter::getMode, &CCompanyFilter::setMode);
}

template <class Visit>
void fields(Visit && visit, CFilter const *)
{
    visit("id", &CFilter::getID, &CFilter::setID);
    visit("name", &CFilter::getName, &CFilter::setName);
    visit("filterMode", &CFilter::getFilterMode, &CFilter::setFilterMode);
    visit("nameFilter", &CFilter::getNameFilter, &CFilter::setNameFilter);
    visit("dateRangeFilter", &CFilter::getDateRangeFilter, &CFilter::setDateRangeFilter);
    visit("statusFilter", &CFilter::getStatusFilter, &CFilter::setStatusFilter);
    visit("resourcesFilter", &CFilter::getResourcesFilter, &CFilter::setResourcesFilter);
    visit("riskFilter", &CFilter::getRiskFilter, &CFilter::setRiskFilter);
    visit("companyFilter", &CFilter::getCompanyFilter, &CFilter::setCompanyFilter);
}

template <class Visit>
void fields(Visit && visit, CMaterial const *)
{
    visit("color", &CMaterial::getColor, &CMaterial::setColor);
    visit("opacity", &CMaterial::getOpacity, &CMaterial::setOpacity);
}

// A task takes times while it is open and free, risks before it is begun, and children last.
template <class Visit>
void fields(Visit && visit, CTask const *)
{
    visit("id", &CTask::getID, &CTask::setID);
    visit("name", &CTask::getName, &CTask::setName);
    visit("comments", &CTask::getComments, &CTask::setComments);
    visit("template", &CTask::isTemplate, &CTask::setTemplate);
    visit("taskType", &CTask::getTaskType, &CTask::setTaskType);
    visit("categoryID", &CTask::getCategoryID, &CTask::setCategoryID);
    visit("riskBuffer", &CTask::getRiskBuffer, &CTask::setRiskBuffer);
    visit("dominantCalendarID", &CTask::getDominantCalendarID, &CTask::setDominantCalendarID);
    visit("supplyChain", &CTask::getSupplyChain, &CTask::setSupplyChain);
    visit("riskType", &CTask::getRiskType, &CTask::setRiskType);
    visit("plannedStartTime", &CTask::getPlannedStartTime, &CTask::reschedulePlannedStartTime);
    visit("duration", &CTask::getDuration, &CTask::setDuration);
    visit("constraint", &CTask::getConstraint, &CTask::setConstraint);
    visit("upstreamLinks", &CTask::getUpstreamLinks, &CTask::setUpstreamLinks);
    visit("assignedResources", &CTask::getAssignedResources, &CTask::setAssignedResources);
    visit("assignedRisks", &CTask::getAssignedRisks, &CTask::setAssignedRisks);
    visit("costs", &CTask::getCosts, &CTask::setCosts);
    visit("status", &CTask::getStatus, &CTask::setStatus);
    visit("actualStartTime", &CTask::getActualStartTime, &CTask::setActualStartTime);
    visit("predictedFinishTime", &CTask::getPredictedFinishTime, &CTask::setPredictedFinishTime);
    visit("actualFinishTime", &CTask::getActualFinishTime, &CTask::setActualFinishTime);
    visit("taskReports", &CTask::getTaskReports, &CTask::setTaskReports);
    visit("baselineSet", &CTask::isBaselineSet, readOnly);
    visit("baselineStart", &CTask::getBaselineStart, readOnly);
    visit("baselineDuration", &CTask::getBaselineDuration, readOnly);
    visit("baselineFinish", &CTask::getBaselineFinish, readOnly);
    visit("baselineEquipmentCost", &CTask::getBaselineEquipmentCost, readOnly);
    visit("baselineHumanCost", &CTask::getBaselineHumanCost, readOnly);
    visit("baselineLocationCost", &CTask::getBaselineLocationCost, readOnly);
    visit("baselineMaterialCost", &CTask::getBaselineMaterialCost, readOnly);
    visit("baselineMitigatedRiskCost", &CTask::getBaselineMitigatedRiskCost, readOnly);
    visit("baselineUnmitigatedRiskCost", &CTask::getBaselineUnmitigatedRiskCost, readOnly);
    visit("baselineTaskCost", &CTask::getBaselineTaskCost, readOnly);
    visit("subTasks", &CTask::getSubTasks, &CTask::setSubTasks);
}

// ---- writing ----------------------------------------------------------------------------------------

template <class Value>
Json fieldJson(Value const & value)
{
    if constexpr (!std::is_pointer_v<Value>) return toJson(value);
    else return value ? toJson(*value) : Json::array();
}

template <class Record>
Json fieldsJson(Record const & record, std::string_view without)
{
    Json json = Json::object();
    auto const write = [&](std::string_view name, auto get, auto)
    {
        if constexpr (!std::is_same_v<decltype(get), Hidden>)
            if (name != without) json.push_back({std::string(name), fieldJson(std::invoke(get, record))});
    };
    fields(write, &record);
    return json;
}

template <class Record>
void appendFields(std::string & text, Record const & record, std::string_view without)
{
    ObjectText object(text);
    auto const append = [&](std::string_view name, auto get, auto)
    {
        if constexpr (!std::is_same_v<decltype(get), Hidden>)
        {
            if (name == without) return;
            decltype(auto) value = std::invoke(get, record);
            if constexpr (!std::is_pointer_v<std::remove_cvref_t<decltype(value)>>) object.add(name, value);
            else if (value) object.add(name, *value);
            else object.begin(name), text += "[]";
        }
    };
    fields(append, &record);
    object.end();
}

// ---- reading ----------------------------------------------------------------------------------------

// What a setter takes behind the record.
template <class Setter>
struct Taken : Taken<decltype(&Setter::operator())>
{
};
template <class Answer, class Record, class Value>
struct Taken<Answer (Record::*)(Value)> : std::type_identity<std::remove_cvref_t<Value>>
{
};
template <class Answer, class Setter, class Record, class Value>
struct Taken<Answer (Setter::*)(Record &, Value) const> : std::type_identity<std::remove_cvref_t<Value>>
{
};

// What the field holds, as the setter takes it; new where there is nothing yet.
template <class Value, class Record, class Get>
Value presentValue(Record const & record, Get get)
{
    if constexpr (std::is_same_v<Get, Hidden>) return Value();
    else if constexpr (std::is_pointer_v<std::invoke_result_t<Get, Record const &>>)
    {
        auto const * const value = std::invoke(get, record);
        return value ? Value(*value) : Value();
    }
    else if constexpr (requires { std::invoke(get, record).getValue(); } && std::is_arithmetic_v<Value>)
        return std::invoke(get, record).getValue();
    else return Value(std::invoke(get, record));
}

// Whether the record keeps what it was given. Records and their lists are not compared deeply.
template <class Value, class Record, class Get>
bool keeps(Record const & record, Get get, Value const & given)
{
    if constexpr (std::is_same_v<Get, Hidden>) return true;
    else if constexpr (ListOfValues<Value>) return presentValue<Value>(record, get).GetSize() == given.GetSize();
    else if constexpr (LeafValue<Value> || std::is_arithmetic_v<Value>)
        return presentValue<Value>(record, get) == given;
    else return true;
}

template <class Record, class Get, class Set>
void setField(Record & record, Get get, Set set, Json const & json, Reader const & reader)
{
    if constexpr (std::is_same_v<Set, ReadOnly>) throw Refusal("is computed and cannot be set");
    else
    {
        using Value = typename Taken<Set>::type;
        auto value = presentValue<Value>(record, get);
        readJson(json, value, reader);
        std::invoke(set, record, value);
        if (!keeps<Value>(record, get, value)) refuseJson(json, "value that stands here");
    }
}

// How deep records are nested in one another.
class Depth
{
public:
    Depth()
    {
        constexpr int most = 100;
        if (depth >= most) throw Refusal(fmt::format("nests deeper than {} records", most));
        ++depth;
    }
    Depth(Depth const &) = delete;
    Depth & operator=(Depth const &) = delete;
    ~Depth() { --depth; }

private:
    static inline thread_local int depth = 0;
};

// In a calendar, "@Name" is its day type of that name.
void findDayType(CCalendar const & calendar, std::string_view name, CIDBase & id)
{
    int count = 0;
    for (CCalendarDayType const & each : calendar.getCalendarDayTypes())
    {
        if (each.getDescription().view() != name) continue;
        ++count;
        id = each.getID();
    }
    if (count != 1)
        throw Refusal(fmt::format("the calendar has {} types of day \"{}\"", count ? "several" : "no", name));
}

Reader readerWithin(CCalendar const & calendar, Reader const & reader)
{
    Reader within = reader;
    within.named = [&calendar, &reader](std::string_view text, CIDBase & id)
    {
        bool const isHere = text.starts_with('@') && !reader.isProof && dynamic_cast<CCalendarDayTypeID *>(&id);
        if (isHere) findDayType(calendar, text.substr(1), id);
        else if (reader.named) reader.named(text, id);
        else throw Refusal(fmt::format("\"{}\" is no identifier", text));
    };
    return within;
}

template <class Record>
void setGivenFields(Record & record, Json const & json, Reader const & reader)
{
    GivenFields given(json);
    auto const read = [&](std::string_view name, auto get, auto set)
    {
        auto const body = [&](Json const & value) { setField(record, get, set, value, reader); };
        given.with(name, body);
    };
    fields(read, &record);
    given.refuseOthers();
}

}  // namespace

template <class Record>
Json RecordForm<Record>::write(Record const & record, std::string_view without)
{
    return fieldsJson(record, without);
}

template <class Record>
void RecordForm<Record>::append(std::string & text, Record const & record, std::string_view without)
{
    appendFields(text, record, without);
}

template <class Record>
void RecordForm<Record>::setFields(Record & record, Json const & json, Reader const & reader)
{
    Depth const depth;
    if constexpr (std::is_same_v<Record, CCalendar>) setGivenFields(record, json, readerWithin(record, reader));
    else
    {
        if constexpr (std::is_same_v<Record, CTask>)
            if (reader.project) record.setProject(reader.project);
        setGivenFields(record, json, reader);
    }
}

template class RecordForm<CAssignedResource>;
template class RecordForm<CAssignedRisk>;
template class RecordForm<CCalendar>;
template class RecordForm<CCalendarDayType>;
template class RecordForm<CCalendarException>;
template class RecordForm<CCalendarWeek>;
template class RecordForm<CCompany>;
template class RecordForm<CCompanyFilter>;
template class RecordForm<CCost>;
template class RecordForm<CDateRangeFilter>;
template class RecordForm<CEquipmentResource>;
template class RecordForm<CFilter>;
template class RecordForm<CHumanResource>;
template class RecordForm<CLink>;
template class RecordForm<CLocationResource>;
template class RecordForm<CMaterial>;
template class RecordForm<CMaterialResource>;
template class RecordForm<CNameFilter>;
template class RecordForm<CPermissions>;
template class RecordForm<CProjectTimeOfDaySpan>;
template class RecordForm<CResourcesFilter>;
template class RecordForm<CRisk>;
template class RecordForm<CRiskFilter>;
template class RecordForm<CRole>;
template class RecordForm<CStatusFilter>;
template class RecordForm<CSupplyChain>;
template class RecordForm<CTask>;
template class RecordForm<CTaskConstraint>;
template class RecordForm<CTaskReport>;
template class RecordForm<CUser>;

}  // namespace orvane::app
