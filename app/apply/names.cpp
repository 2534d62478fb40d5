#include "app/apply/names.h"

#include <fmt/format.h>

#include "app/apply/solids.h"
#include "app/command.h"
#include "app/walks.h"

namespace orvane::app
{
namespace
{

// ---- everything that has a name ---------------------------------------------------------------------
//
// Each calls `visit` with the name and the identifier of all objects of that kind.

template <class Visit>
void forEachCalendar(CProject const & project, Visit const & visit)
{
    visit("Project", project.getProjectCalendar().getID());
    for (CCompany const & company : project.getAllCompanies()) visit(company.getName(), company.getCalendar().getID());
    auto const visitOwn = [&](auto const & resource)
    {
        if constexpr (requires { resource.getCalendar(); }) visit(resource.getName(), resource.getCalendar().getID());
    };
    forEachResource(project, visitOwn);
}

template <class Visit>
void forEachEntity(CProject const & project, Visit const & visit)
{
    CObArray entities;
    project.getScene().getAllEntities(entities, CEntity::GetThisClass(), true);
    for (int each = 0; each < entities.GetSize(); ++each)
    {
        auto const & entity = static_cast<CEntity const &>(*entities.GetAt(each));
        visit(entity.getName(), idOf(entity));
    }
}

// Links, costs and the like have no names.
template <class ID, class Visit>
void forEachNamed(CProject const & project, Visit const & visit)
{
    auto const visitNamed = [&](auto const & object) { visit(object.getName(), object.getID()); };
    auto const visitAll = [&](auto const & array)
    {
        for (auto const & each : array) visitNamed(each);
    };
    if constexpr (std::is_same_v<ID, CTaskID>) visitItems(project.getAllTasks(), visitNamed);
    else if constexpr (std::is_same_v<ID, CCompanyID>) visitAll(project.getAllCompanies());
    else if constexpr (std::is_same_v<ID, CResourceID>) forEachResource(project, visitNamed);
    else if constexpr (std::is_same_v<ID, CRiskID>)
        visitItems(project.getAllRisks(), [&](CRisk const & risk) { visit(risk.getDescription(), risk.getID()); });
    else if constexpr (std::is_same_v<ID, CRoleID>) visitAll(project.getAllRoles());
    else if constexpr (std::is_same_v<ID, CFilterID>) visitAll(project.getAllFilters());
    else if constexpr (std::is_same_v<ID, CTaskCategoryID>) visitAll(project.getTaskCategories());
    else if constexpr (std::is_same_v<ID, CCalendarID>) forEachCalendar(project, visit);
    else if constexpr (std::is_same_v<ID, CEntityID>) forEachEntity(project, visit);
    else if constexpr (std::is_same_v<ID, CUserID>)
        for (CUser const & user : project.getAllUsers()) visit(user.getLogin(), user.getID());
}

// Copies the element of that identifier; false without one.
template <class Array, class ID, class Element>
bool copyElement(Array const & array, ID const & id, Element & out)
{
    int const position = array.findByID(id);
    if (position >= 0) out = array.GetAt(position);
    return position >= 0;
}

}  // namespace

std::string kindOf(CIDBase const & id)
{
    std::string kind(id.tagName().view());
    if (kind.ends_with("ID")) kind.resize(kind.size() - 2);
    if (!kind.empty()) kind[0] = static_cast<char>(kind[0] | 0x20);
    return kind;
}

// ---- what there is ----------------------------------------------------------------------------------

bool findPresent(CProject const & project, CLinkID const & id, CLink & out)
{
    CTask const * const task = project.getTask(id);
    return task && copyElement(task->getUpstreamLinks(), id, out);
}

bool findPresent(CProject const & project, CCostID const & id, CCost & out)
{
    CTask const * const task = project.getTask(id);
    if (task && task->getCosts()) return copyElement(*task->getCosts(), id, out);
    CResourceBase const * const resource = project.getResourceFromCost(id);
    return resource && resource->findResourceCost(out, id);
}

bool findPresent(CProject const & project, CRiskID const & id, CRisk & out)
{
    return project.getRisk(id, out);
}

bool findPresent(CProject const & project, CAssignedRiskID const & id, CAssignedRisk & out)
{
    return project.getAssignedRisk(out, id);
}

bool findPresent(CProject const & project, CAssignedResourceID const & id, CAssignedResource & out)
{
    CTask const * const task = project.getTask(id);
    return task && copyElement(task->getAssignedResources(), id, out);
}

bool findPresent(CProject const & project, CTaskReportID const & id, CTaskReport & out)
{
    CTask const * const task = project.getTask(id);
    return task && copyElement(task->getTaskReports(), id, out);
}

bool findPresent(CProject const & project, CSupplyChainID const & id, CSupplyChain & out)
{
    CTask const * const task = project.getTask(id);
    if (task) out = task->getSupplyChain();
    return task;
}

bool findPresent(CProject const & project, CCompanyID const & id, CCompany & out)
{
    return copyElement(project.getAllCompanies(), id, out);
}

bool findPresent(CProject const & project, CCalendarID const & id, CCalendar & out)
{
    CCalendar const & calendar = project.getActualCalendar(id);
    bool const found = calendar.getID() == id;
    if (found) out = calendar;
    return found;
}

bool findPresent(CProject const & project, CUserID const & id, CUser & out)
{
    return copyElement(project.getAllUsers(), id, out);
}

bool findPresent(CProject const & project, CRoleID const & id, CRole & out)
{
    return copyElement(project.getAllRoles(), id, out);
}

bool findPresent(CProject const & project, CFilterID const & id, CFilter & out)
{
    return copyElement(project.getAllFilters(), id, out);
}

// ---- names ------------------------------------------------------------------------------------------

void Names::find(std::string_view text, CIDBase & id) const
{
    if (text.starts_with('$')) findLabelled(text.substr(1), id);
    else if (text.starts_with('@')) findNamed(text.substr(1), id);
    else throw Refusal(fmt::format("\"{}\" is no identifier: 32 hexadecimal digits, $label or @Name", text));
}

void Names::findLabelled(std::string_view name, CIDBase & id) const
{
    auto const labelled = labels.find(name);
    if (labelled == labels.end()) throw Refusal(fmt::format("nothing is labelled \"${}\"", name));
    auto const found = labelled->second.find(kindOf(id));
    if (found == labelled->second.end()) throw Refusal(fmt::format("\"${}\" labels no {}", name, kindOf(id)));
    id.setGUID(found->second);
}

void Names::findNamed(std::string_view name, CIDBase & id) const
{
    int count = 0;
    auto const visitKind = [&]<class ID>(std::type_identity<ID>)
    {
        if (!dynamic_cast<ID *>(&id)) return;
        auto const visit = [&](CString const & each, ID const & eachID)
        {
            if (each.view() != name) return;
            ++count;
            id = eachID;
        };
        forEachNamed<ID>(project, visit);
    };
    forEachKindOfID(visitKind);
    if (count != 1)
        throw Refusal(fmt::format("{} {} is named \"{}\"", count ? "more than one" : "no", kindOf(id), name));
}

}  // namespace orvane::app
