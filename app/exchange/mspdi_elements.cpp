#include "app/exchange/mspdi_elements.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <climits>
#include <cmath>
#include <type_traits>

#include "app/exchange/mspdi_values.h"

namespace orvane::app
{
namespace
{

using Context = MspdiContext;
using Draft = MspdiDraft;

// How texts become values; an empty one is never read.
struct AsWritten
{
    static void read(std::string_view text, std::string & value) { value = text; }
    static void read(std::string_view text, double & value)
    {
        double number = 0;
        auto const [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
        if (error != std::errc() || end != text.data() + text.size() || !std::isfinite(number))
            throw MspdiFault{"is no number"};
        value = number;
    }
    static void read(std::string_view text, int & value)
    {
        double number = 0;
        read(text, number);
        if (std::abs(number) > INT_MAX || std::floor(number) != number) throw MspdiFault{"is no whole number"};
        value = static_cast<int>(number);
    }
    static void read(std::string_view text, bool & value)
    {
        if (text != "0" && text != "1" && text != "true" && text != "false")
            throw MspdiFault{"is neither 0 nor 1, true nor false"};
        value = text == "1" || text == "true";
    }
    static void read(std::string_view text, std::optional<bool> & value) { read(text, value.emplace()); }
};

struct AsTime
{
    static void read(std::string_view text, OptionalMinute & value)
    {
        if (text == "NA") return;
        value = readMspdiTime(text);
        if (!value) throw MspdiFault{"is no time that exists"};
    }
};

struct AsTimeOfDay
{
    static void read(std::string_view text, std::optional<int> & value)
    {
        value = readMspdiTimeOfDay(text);
        if (!value) throw MspdiFault{"is no time of day"};
    }
};

struct AsDuration
{
    static void read(std::string_view text, std::optional<Minute> & value)
    {
        std::optional<double> const minutes = readMspdiDuration(text);
        if (!minutes) throw MspdiFault{"is no duration"};
        if (*minutes < 0) throw MspdiFault{"is a negative duration"};
        value = std::llround(*minutes);
    }
};

// The file counts hundredths.
struct AsMoney
{
    static void read(std::string_view text, double & value)
    {
        AsWritten::read(text, value);
        // So that hundredths are exact.
        if (std::abs(value) > 1e12) throw MspdiFault{"lies outside its range"};
        value /= 100;
    }
    static void read(std::string_view text, std::optional<double> & value) { read(text, value.emplace()); }
};

// Whole numbers and fractions that have bounds.
template <int least, int most>
struct AsWithin
{
    template <class T>
    static void read(std::string_view text, T & value)
    {
        T number{};
        AsWritten::read(text, number);
        if (number < least || number > most) throw MspdiFault{"lies outside its range"};
        value = number;
    }
};
using AsNumber = AsWithin<0, INT_MAX>;

// Enumerations in the order in which the format numbers them.
template <int last>
struct AsListed
{
    template <class T>
    static void read(std::string_view text, T & value)
    {
        int number = 0;
        AsWithin<0, last>::read(text, number);
        value = static_cast<T>(number);
    }
};

template <auto first, auto... rest, class Object>
auto & reach(Object & object)
{
    if constexpr (sizeof...(rest) == 0) return object.*first;
    else return reach<rest...>(object.*first);
}

// The text becomes a member of a part of the draft.
template <class As, auto... members>
constexpr MspdiElement value(Context in, std::string_view name)
{
    auto const take = [](Draft & draft, std::string_view text)
    {
        auto & target = reach<members...>(draft);
        // Names keep their blanks.
        constexpr bool isText = std::is_same_v<decltype(target), std::string &>;
        if constexpr (!isText) text = trimmed(text);
        if (!text.empty()) As::read(text, target);
    };
    return {in, name, Context::leaf, take};
}

constexpr MspdiElement opens(Context in, std::string_view name, Context opened)
{
    return {in, name, opened};
}

// Lost with its task or resource when it says another thing than the usual one.
constexpr MspdiElement lost(Context in, std::string_view name, char const * what, std::string_view usual = "0")
{
    return {in, name, Context::leaf, nullptr, what, usual, false};
}

// Likewise, counted over the whole schedule.
constexpr MspdiElement lostInAll(Context in, std::string_view name, char const * what, std::string_view usual = "0")
{
    return {in, name, Context::leaf, nullptr, what, usual, true};
}

// Lost with all that it holds.
constexpr MspdiElement lostPart(Context in, std::string_view name, char const * what)
{
    return {in, name, Context::skipped, nullptr, what, {}, false};
}

constexpr char const * drawingSettings = "settings of drawing";
constexpr char const * levellingSettings = "settings of levelling";
constexpr char const * serverSettings = "settings of the project server";
constexpr char const * byPeriod = "figures by period";
constexpr char const * otherProject = "its place in another project";
constexpr char const * documentProperties = "properties of the document, such as author and company";
constexpr char const * hyperlink = "a hyperlink";

constexpr MspdiElement elements[] = {
    opens(Context::document, "Project", Context::project),

    value<AsWritten, &Draft::documentName>(Context::project, "Name"),
    value<AsWritten, &Draft::title>(Context::project, "Title"),
    value<AsTime, &Draft::plan, &Plan::start>(Context::project, "StartDate"),
    value<AsTime, &Draft::plan, &Plan::finish>(Context::project, "FinishDate"),
    value<AsTime, &Draft::plan, &Plan::statusDate>(Context::project, "StatusDate"),
    value<AsWithin<1, 1440>, &Draft::plan, &Plan::minutesPerDay>(Context::project, "MinutesPerDay"),
    value<AsWithin<0, 10080>, &Draft::plan, &Plan::minutesPerWeek>(Context::project, "MinutesPerWeek"),
    value<AsWritten, &Draft::plan, &Plan::calendarUID>(Context::project, "CalendarUID"),
    value<AsWritten, &Draft::plan, &Plan::currency>(Context::project, "CurrencyCode"),
    value<AsWritten, &Draft::currencySymbol>(Context::project, "CurrencySymbol"),
    lostInAll(Context::project, "ScheduleFromStart", "scheduling backwards from the finish", "1"),
    lostInAll(Context::project, "Subject", documentProperties, ""),
    lostInAll(Context::project, "Category", documentProperties, ""),
    lostInAll(Context::project, "Company", documentProperties, ""),
    lostInAll(Context::project, "Manager", documentProperties, ""),
    lostInAll(Context::project, "Author", documentProperties, ""),
    lostInAll(Context::project, "Keywords", documentProperties, ""),
    opens(Context::project, "ExtendedAttributes", Context::attributeDefinitions),
    opens(Context::project, "Calendars", Context::calendars),
    opens(Context::project, "Tasks", Context::tasks),
    opens(Context::project, "Resources", Context::resources),
    opens(Context::project, "Assignments", Context::assignments),
    opens(Context::project, "Views", Context::counted),
    opens(Context::project, "Filters", Context::counted),
    opens(Context::project, "Groups", Context::counted),
    opens(Context::project, "Tables", Context::counted),
    opens(Context::project, "Maps", Context::counted),
    opens(Context::project, "Reports", Context::counted),
    opens(Context::project, "Drawings", Context::counted),
    opens(Context::project, "DataLinks", Context::counted),
    opens(Context::project, "VBAProjects", Context::counted),

    opens(Context::attributeDefinitions, "ExtendedAttribute", Context::attributeDefinition),
    value<AsWritten, &Draft::definition, &Draft::Definition::field>(Context::attributeDefinition, "FieldID"),
    value<AsWritten, &Draft::definition, &Draft::Definition::alias>(Context::attributeDefinition, "Alias"),

    opens(Context::calendars, "Calendar", Context::calendar),
    value<AsNumber, &Draft::calendar, &MspdiCalendar::calendar, &PlanCalendar::uid>(Context::calendar, "UID"),
    value<AsWritten, &Draft::calendar, &MspdiCalendar::calendar, &PlanCalendar::name>(Context::calendar, "Name"),
    value<AsWritten, &Draft::calendar, &MspdiCalendar::calendar, &PlanCalendar::isBase>(Context::calendar,
                                                                                        "IsBaseCalendar"),
    value<AsWritten, &Draft::calendar, &MspdiCalendar::calendar, &PlanCalendar::baseUID>(Context::calendar,
                                                                                         "BaseCalendarUID"),
    opens(Context::calendar, "WeekDays", Context::weekDays),
    opens(Context::calendar, "Exceptions", Context::exceptions),
    opens(Context::calendar, "WorkWeeks", Context::workWeeks),

    opens(Context::weekDays, "WeekDay", Context::weekDay),
    value<AsWithin<0, 7>, &Draft::day, &MspdiException::dayType>(Context::weekDay, "DayType"),
    value<AsWritten, &Draft::day, &MspdiException::isWorking>(Context::weekDay, "DayWorking"),
    opens(Context::weekDay, "TimePeriod", Context::period),
    opens(Context::weekDay, "WorkingTimes", Context::workingTimes),

    opens(Context::exceptions, "Exception", Context::exception),
    value<AsWritten, &Draft::day, &MspdiException::name>(Context::exception, "Name"),
    value<AsWritten, &Draft::day, &MspdiException::isEnteredByOccurrences>(Context::exception, "EnteredByOccurrences"),
    value<AsWritten, &Draft::day, &MspdiException::occurrences>(Context::exception, "Occurrences"),
    value<AsWritten, &Draft::day, &MspdiException::type>(Context::exception, "Type"),
    value<AsWritten, &Draft::day, &MspdiException::period>(Context::exception, "Period"),
    value<AsWithin<0, 127>, &Draft::day, &MspdiException::daysOfWeek>(Context::exception, "DaysOfWeek"),
    value<AsWritten, &Draft::day, &MspdiException::monthItem>(Context::exception, "MonthItem"),
    value<AsWritten, &Draft::day, &MspdiException::monthPosition>(Context::exception, "MonthPosition"),
    value<AsWritten, &Draft::day, &MspdiException::month>(Context::exception, "Month"),
    value<AsWritten, &Draft::day, &MspdiException::monthDay>(Context::exception, "MonthDay"),
    value<AsWritten, &Draft::day, &MspdiException::isWorking>(Context::exception, "DayWorking"),
    opens(Context::exception, "TimePeriod", Context::period),
    opens(Context::exception, "WorkingTimes", Context::workingTimes),

    value<AsTime, &Draft::day, &MspdiException::from>(Context::period, "FromDate"),
    value<AsTime, &Draft::day, &MspdiException::to>(Context::period, "ToDate"),
    opens(Context::workingTimes, "WorkingTime", Context::workingTime),
    value<AsTimeOfDay, &Draft::times, &Draft::Times::from>(Context::workingTime, "FromTime"),
    value<AsTimeOfDay, &Draft::times, &Draft::Times::to>(Context::workingTime, "ToTime"),

    opens(Context::workWeeks, "WorkWeek", Context::workWeek),
    value<AsWritten, &Draft::workWeek, &MspdiWorkWeek::name>(Context::workWeek, "Name"),
    opens(Context::workWeek, "TimePeriod", Context::workWeekPeriod),
    opens(Context::workWeek, "WeekDays", Context::weekDays),
    value<AsTime, &Draft::workWeek, &MspdiWorkWeek::from>(Context::workWeekPeriod, "FromDate"),
    value<AsTime, &Draft::workWeek, &MspdiWorkWeek::to>(Context::workWeekPeriod, "ToDate"),

    opens(Context::tasks, "Task", Context::task),
    value<AsNumber, &Draft::task, &PlanTask::uid>(Context::task, "UID"),
    value<AsWritten, &Draft::task, &PlanTask::id>(Context::task, "ID"),
    value<AsWritten, &Draft::task, &PlanTask::name>(Context::task, "Name"),
    value<AsWritten, &Draft::task, &PlanTask::notes>(Context::task, "Notes"),
    value<AsNumber, &Draft::task, &PlanTask::outlineLevel>(Context::task, "OutlineLevel"),
    value<AsWritten, &Draft::task, &PlanTask::isBlank>(Context::task, "IsNull"),
    value<AsWritten, &Draft::task, &PlanTask::isMilestone>(Context::task, "Milestone"),
    value<AsWritten, &Draft::task, &PlanTask::isSummary>(Context::task, "Summary"),
    value<AsWritten, &Draft::task, &PlanTask::isManual>(Context::task, "Manual"),
    value<AsWritten, &Draft::task, &PlanTask::isActive>(Context::task, "Active"),
    value<AsDuration, &Draft::task, &PlanTask::duration>(Context::task, "Duration"),
    value<AsWritten, &Draft::taskExtras, &Draft::TaskExtras::type>(Context::task, "Type"),
    value<AsWritten, &Draft::taskExtras, &Draft::TaskExtras::durationFormat>(Context::task, "DurationFormat"),
    value<AsTime, &Draft::task, &PlanTask::start>(Context::task, "Start"),
    value<AsTime, &Draft::task, &PlanTask::finish>(Context::task, "Finish"),
    value<AsTime, &Draft::task, &PlanTask::actualStart>(Context::task, "ActualStart"),
    value<AsTime, &Draft::task, &PlanTask::actualFinish>(Context::task, "ActualFinish"),
    value<AsWithin<0, 100>, &Draft::task, &PlanTask::percentComplete>(Context::task, "PercentComplete"),
    value<AsWritten, &Draft::taskExtras, &Draft::TaskExtras::percentWorkComplete>(Context::task, "PercentWorkComplete"),
    value<AsWritten, &Draft::task, &PlanTask::calendarUID>(Context::task, "CalendarUID"),
    value<AsListed<7>, &Draft::task, &PlanTask::constraint>(Context::task, "ConstraintType"),
    value<AsTime, &Draft::task, &PlanTask::constraintDate>(Context::task, "ConstraintDate"),
    value<AsTime, &Draft::task, &PlanTask::deadline>(Context::task, "Deadline"),
    value<AsMoney, &Draft::task, &PlanTask::fixedCost>(Context::task, "FixedCost"),
    value<AsWritten, &Draft::taskExtras, &Draft::TaskExtras::wbs>(Context::task, "WBS"),
    value<AsWritten, &Draft::taskExtras, &Draft::TaskExtras::outlineNumber>(Context::task, "OutlineNumber"),
    opens(Context::task, "PredecessorLink", Context::link),
    opens(Context::task, "Baseline", Context::baseline),
    opens(Context::task, "ExtendedAttribute", Context::customField),
    lostPart(Context::task, "OutlineCode", "outline codes"),
    lostPart(Context::task, "TimephasedData", byPeriod),
    lost(Context::task, "Priority", "the priority", "500"),
    lost(Context::task, "LevelingDelay", "the levelling delay"),
    lost(Context::task, "IgnoreResourceCalendar", "that it ignores the calendars of resources"),
    lost(Context::task, "IsSubproject", "the project inserted there"),
    lost(Context::task, "ExternalTask", otherProject),
    lost(Context::task, "PhysicalPercentComplete", "the physical percent complete"),
    lost(Context::task, "Contact", "the contact", ""),
    lost(Context::task, "Hyperlink", hyperlink, ""),
    lost(Context::task, "HyperlinkAddress", hyperlink, ""),
    lost(Context::task, "Recurring", "the rule of recurrence"),
    lost(Context::task, "StartText", "a text in place of the start", ""),
    lost(Context::task, "FinishText", "a text in place of the finish", ""),
    lost(Context::task, "DurationText", "a text in place of the duration", ""),
    lost(Context::task, "OvertimeWork", "overtime"),
    lostInAll(Context::task, "EffortDriven", "effort-driven tasks"),
    lostInAll(Context::task, "Estimated", "marks of estimated durations"),
    lostInAll(Context::task, "FixedCostAccrual", "when costs accrue", "3"),
    lostInAll(Context::task, "EarnedValueMethod", "the method of earned value"),
    lostInAll(Context::task, "LevelAssignments", levellingSettings, "1"),
    lostInAll(Context::task, "LevelingCanSplit", levellingSettings, "1"),
    lostInAll(Context::task, "HideBar", drawingSettings),
    lostInAll(Context::task, "Rollup", drawingSettings),
    lostInAll(Context::task, "DisplayAsSummary", drawingSettings),
    lostInAll(Context::task, "CommitmentType", serverSettings),

    value<AsWritten, &Draft::link, &Draft::Link::link, &PlanLink::predecessorUID>(Context::link, "PredecessorUID"),
    value<AsListed<3>, &Draft::link, &Draft::Link::link, &PlanLink::type>(Context::link, "Type"),
    value<AsWithin<-INT_MAX, INT_MAX>, &Draft::link, &Draft::Link::link, &PlanLink::lag>(Context::link, "LinkLag"),
    value<AsWritten, &Draft::link, &Draft::Link::lagFormat>(Context::link, "LagFormat"),
    value<AsWritten, &Draft::link, &Draft::Link::isCrossProject>(Context::link, "CrossProject"),

    value<AsWritten, &Draft::baseline, &Draft::Baseline::number>(Context::baseline, "Number"),
    value<AsTime, &Draft::baseline, &Draft::Baseline::baseline, &PlanBaseline::start>(Context::baseline, "Start"),
    value<AsTime, &Draft::baseline, &Draft::Baseline::baseline, &PlanBaseline::finish>(Context::baseline, "Finish"),
    value<AsDuration, &Draft::baseline, &Draft::Baseline::baseline, &PlanBaseline::duration>(Context::baseline,
                                                                                             "Duration"),
    value<AsMoney, &Draft::baseline, &Draft::Baseline::baseline, &PlanBaseline::cost>(Context::baseline, "Cost"),
    lost(Context::baseline, "FixedCost", "fixed costs of baselines"),
    lostPart(Context::baseline, "TimephasedData", byPeriod),

    value<AsWritten, &Draft::customField, &Draft::CustomField::field>(Context::customField, "FieldID"),
    value<AsWritten, &Draft::customField, &Draft::CustomField::value>(Context::customField, "Value"),

    opens(Context::resources, "Resource", Context::resource),
    value<AsNumber, &Draft::resource, &PlanResource::uid>(Context::resource, "UID"),
    value<AsWritten, &Draft::resourceExtras, &Draft::ResourceExtras::id>(Context::resource, "ID"),
    value<AsWritten, &Draft::resource, &PlanResource::name>(Context::resource, "Name"),
    value<AsWritten, &Draft::resourceExtras, &Draft::ResourceExtras::type>(Context::resource, "Type"),
    value<AsWritten, &Draft::resourceExtras, &Draft::ResourceExtras::isCost>(Context::resource, "IsCostResource"),
    value<AsWritten, &Draft::resourceExtras, &Draft::ResourceExtras::isBlank>(Context::resource, "IsNull"),
    value<AsWritten, &Draft::resource, &PlanResource::group>(Context::resource, "Group"),
    value<AsWritten, &Draft::resource, &PlanResource::notes>(Context::resource, "Notes"),
    value<AsWritten, &Draft::resource, &PlanResource::maxUnits>(Context::resource, "MaxUnits"),
    value<AsWritten, &Draft::resource, &PlanResource::standardRate>(Context::resource, "StandardRate"),
    value<AsWritten, &Draft::resource, &PlanResource::overtimeRate>(Context::resource, "OvertimeRate"),
    value<AsMoney, &Draft::resource, &PlanResource::costPerUse>(Context::resource, "CostPerUse"),
    value<AsWritten, &Draft::resource, &PlanResource::calendarUID>(Context::resource, "CalendarUID"),
    opens(Context::resource, "Rates", Context::rates),
    lostPart(Context::resource, "ExtendedAttribute", "custom fields"),
    lostPart(Context::resource, "OutlineCode", "outline codes"),
    lostPart(Context::resource, "Baseline", "baselines"),
    lostPart(Context::resource, "TimephasedData", byPeriod),
    lostPart(Context::resource, "AvailabilityPeriods", "periods of availability"),
    lost(Context::resource, "AvailableFrom", "periods of availability", ""),
    lost(Context::resource, "Code", "the code", ""),
    lost(Context::resource, "EmailAddress", "the address for mail", ""),
    lost(Context::resource, "NTAccount", "the account", ""),
    lost(Context::resource, "Phonetics", "how the name sounds", ""),
    lost(Context::resource, "MaterialLabel", "the unit of the material", ""),
    lost(Context::resource, "CostCenter", "the cost centre", ""),
    lost(Context::resource, "Hyperlink", hyperlink, ""),
    lost(Context::resource, "HyperlinkAddress", hyperlink, ""),
    lost(Context::resource, "IsBudget", "that it is a budget"),
    lost(Context::resource, "IsInactive", "that it is inactive"),
    lost(Context::resource, "IsGeneric", "that it stands for a role"),
    lostInAll(Context::resource, "Initials", "initials of resources", ""),
    lostInAll(Context::resource, "AccrueAt", "when costs accrue", "3"),
    lostInAll(Context::resource, "CanLevel", levellingSettings, "1"),
    lostInAll(Context::resource, "BookingType", "marks of proposed bookings"),
    lostInAll(Context::resource, "WorkGroup", serverSettings),
    opens(Context::rates, "Rate", Context::rate),

    opens(Context::assignments, "Assignment", Context::assignment),
    value<AsWritten, &Draft::assignment, &PlanAssignment::taskUID>(Context::assignment, "TaskUID"),
    value<AsWritten, &Draft::assignment, &PlanAssignment::resourceUID>(Context::assignment, "ResourceUID"),
    value<AsWritten, &Draft::assignment, &PlanAssignment::units>(Context::assignment, "Units"),
    value<AsMoney, &Draft::assignment, &PlanAssignment::cost>(Context::assignment, "Cost"),
    opens(Context::assignment, "TimephasedData", Context::byPeriod),
    lostPart(Context::assignment, "Baseline", "baselines of assignments"),
    lostPart(Context::assignment, "ExtendedAttribute", "custom fields of assignments"),
    lost(Context::assignment, "WorkContour", "the contour of work"),
    lost(Context::assignment, "Delay", "the delay of an assignment"),
    lost(Context::assignment, "LevelingDelay", "the levelling delay of an assignment"),
    lost(Context::assignment, "OvertimeWork", "overtime of an assignment"),
    lost(Context::assignment, "CostRateTable", "the rate table of an assignment"),
    lost(Context::assignment, "RateScale", "material by time"),
    lost(Context::assignment, "BudgetWork", "a budget"),
    lost(Context::assignment, "BudgetCost", "a budget"),
    lost(Context::assignment, "Notes", "notes of an assignment", ""),
    lost(Context::assignment, "Hyperlink", hyperlink, ""),
    lostInAll(Context::assignment, "BookingType", "marks of proposed bookings"),
    value<AsWritten, &Draft::byPeriod, &Draft::ByPeriod::type>(Context::byPeriod, "Type"),
    value<AsWritten, &Draft::byPeriod, &Draft::ByPeriod::value>(Context::byPeriod, "Value"),
};

// What the other program computes from the rest, and how it is set up for its user: passed over.
constexpr struct
{
    Context in;
    std::string_view names;
} passedOver[] = {
    {Context::project,
     "SaveVersion SaveVersionEx BuildNumber GUID CreationDate Revision LastSaved FYStartDate CriticalSlackLimit "
     "CurrencyDigits CurrencySymbolPosition DefaultStartTime DefaultFinishTime DaysPerMonth DefaultTaskType "
     "DefaultFixedCostAccrual DefaultStandardRate DefaultOvertimeRate DurationFormat WorkFormat EditableActualCosts "
     "HonorConstraints EarnedValueMethod InsertedProjectsLikeSummary MultipleCriticalPaths NewTasksEffortDriven "
     "NewTasksEstimated SplitsInProgressTasks SpreadActualCost SpreadPercentComplete TaskUpdatesResource "
     "FiscalYearStart WeekStartDay MoveCompletedEndsBack MoveRemainingStartsBack MoveRemainingStartsForward "
     "MoveCompletedEndsForward BaselineForEarnedValue AutoAddNewResourcesAndTasks CurrentDate "
     "MicrosoftProjectServerURL Autolink NewTaskStartDate NewTasksAreManual DefaultTaskEVMethod "
     "ProjectExternallyEdited ExtendedCreationDate ActualsInSync RemoveFileProperties AdminProject BaselineCalendar "
     "UpdateManuallyScheduledTasksWhenEditingLinks KeepTaskOnNearestWorkingTimeWhenMadeAutoScheduled OutlineCodes "
     "WBSMasks UID Template"},
    {Context::attributeDefinition,
     "FieldName CFType Guid ElemType MaxMultiValues UserDef AliasPhonetics RollupType CalculationType Formula "
     "RestrictValues ValuelistSortOrder AppendNewValues Default Ltuid PhoneticAlias SecondaryPID SecondaryGuid "
     "AutoRollDown DefaultGuid Required ValueList PhoneticsAlias"},
    {Context::calendar, "GUID IsBaselineCalendar"},
    {Context::task,
     "GUID CreateDate WBSLevel ManualStart ManualFinish ManualDuration Work Stop Resume ResumeValid OverAllocated "
     "Critical IsSubprojectReadOnly SubprojectName ExternalTaskProject EarlyStart EarlyFinish LateStart LateFinish "
     "StartVariance FinishVariance WorkVariance DurationVariance FreeSlack TotalSlack StartSlack FinishSlack Cost "
     "OvertimeCost ActualDuration ActualCost ActualOvertimeCost ActualWork ActualOvertimeWork RegularWork "
     "RemainingDuration RemainingCost RemainingWork RemainingOvertimeCost RemainingOvertimeWork ACWP CV BCWS BCWP "
     "CostVariance LevelingDelayFormat PreLeveledStart PreLeveledFinish HyperlinkSubAddress IsPublished "
     "StatusManager CommitmentStart CommitmentFinish ActualWorkProtected ActualOvertimeWorkProtected "
     "FreeformDurationFormat"},
    {Context::link, "CrossProjectName"},
    {Context::baseline, "Interim Work DurationFormat EstimatedDuration BCWS BCWP FixedCostAccrual"},
    {Context::customField, "UID ValueID ValueGUID DurationFormat"},
    {Context::resource,
     "GUID WindowsUserAccount AvailableTo OverAllocated PeakUnits Start Finish Work RegularWork OvertimeWork "
     "ActualWork RemainingWork ActualOvertimeWork RemainingOvertimeWork PercentWorkComplete StandardRateFormat Cost "
     "OvertimeRateFormat OvertimeCost ActualCost ActualOvertimeCost RemainingCost RemainingOvertimeCost "
     "WorkVariance CostVariance SV CV ACWP BCWS BCWP ActualsInSync HyperlinkSubAddress ActiveDirectoryGUID "
     "ActualWorkProtected ActualOvertimeWorkProtected CreationDate IsEnterprise AssnOwner AssnOwnerGuid "
     "IsTeamAssignmentPool"},
    {Context::rate, "RatesFrom RatesTo RateTable StandardRate StandardRateFormat OvertimeRate OvertimeRateFormat "
                    "CostPerUse"},
    {Context::assignment,
     "UID GUID PercentWorkComplete ActualCost ActualFinish ActualOvertimeCost ActualOvertimeWork ActualStart "
     "ActualWork ACWP Confirmed CostVariance CV Finish FinishVariance FixedMaterial HasFixedRateUnits "
     "LevelingDelayFormat LinkedFields Milestone Overallocated OvertimeCost PeakUnits RegularWork RemainingCost "
     "RemainingOvertimeCost RemainingOvertimeWork RemainingWork ResponsePending Resume Start StartVariance Stop "
     "Summary SV UpdateNeeded VAC Work WorkVariance BCWS BCWP CreationDate AssnOwner AssnOwnerGuid "
     "ActualWorkProtected ActualOvertimeWorkProtected HyperlinkAddress HyperlinkSubAddress Unit"},
    {Context::byPeriod, "UID Start Finish Unit"},
};

// All elements by context and name: open addressing, more than twice as many places as elements.
class ElementIndex
{
public:
    ElementIndex()
    {
        for (MspdiElement const & each : elements) put(each);
        for (auto const & [in, names] : passedOver)
            for (std::size_t at = 0; at < names.size();)
            {
                std::size_t const end = std::min(names.find(' ', at), names.size());
                put({in, names.substr(at, end - at)});
                at = end + 1;
            }
    }

    MspdiElement const * find(Context in, std::basic_string_view<char16_t> name) const
    {
        for (std::size_t at = placeOf(in, name); places[at].name.data(); at = (at + 1) % places.size())
            if (places[at].in == in &&
                std::equal(name.begin(), name.end(), places[at].name.begin(), places[at].name.end(),
                           [](char16_t a, char b) { return a == char16_t(b); }))
                return &places[at];
        return nullptr;
    }

private:
    template <class Name>
    static std::size_t placeOf(Context in, Name const & name)
    {
        // A few letters tell most names apart.
        std::size_t place = static_cast<std::size_t>(in) * 131 + name.size();
        for (std::size_t const each : {std::size_t{0}, name.size() / 3, name.size() / 2, name.size() - 1})
            place = place * 31 + static_cast<std::size_t>(name[each]);
        return (place ^ place >> 11) % std::tuple_size_v<decltype(places)>;
    }
    void put(MspdiElement const & element)
    {
        std::size_t at = placeOf(element.in, element.name);
        while (places[at].name.data()) at = (at + 1) % places.size();
        places[at] = element;
    }

    std::array<MspdiElement, 2048> places{};
};

}  // namespace

MspdiElement const * findMspdiElement(MspdiContext in, char16_t const * name)
{
    static ElementIndex const index;
    return index.find(in, name);
}

bool saysTheUsual(MspdiElement const & element, std::string_view text)
{
    if (text.empty() || text == "NA" || text == element.usual) return true;
    // Zero in any form: a number, a duration, a flag.
    return element.usual == "0" && (text == "false" || text.find_first_not_of("0.-PTHMS") == text.npos);
}

}  // namespace orvane::app
