#pragma once

#include <map>
#include <string>
#include <string_view>
#include <type_traits>
#include <utility>

#include "model/project.h"

// How actions speak of the objects of a project.
namespace orvane::app
{

// Calls `visit` with the std::type_identity of each kind of identifier that an action can speak of.
template <class Visit>
void forEachKindOfID(Visit && visit)
{
    auto const all = [&]<class... IDs>(std::type_identity<IDs>... kinds) { (visit(kinds), ...); };
    all(std::type_identity<CTaskID>(), std::type_identity<CLinkID>(), std::type_identity<CSupplyChainID>(),
        std::type_identity<CAssignedResourceID>(), std::type_identity<CAssignedRiskID>(),
        std::type_identity<CTaskReportID>(), std::type_identity<CCostID>(), std::type_identity<CTaskCategoryID>(),
        std::type_identity<CCompanyID>(), std::type_identity<CResourceID>(), std::type_identity<CCalendarID>(),
        std::type_identity<CRiskID>(), std::type_identity<CUserID>(), std::type_identity<CRoleID>(),
        std::type_identity<CFilterID>(), std::type_identity<CEntityID>());
}

// The kind in words, from the name under which its identifier stands in documents: "supplyChain" for SupplyChainID.
std::string kindOf(CIDBase const & id);

// Whether the project holds what bears that identifier.
template <class ID>
bool exists(CProject const & project, ID const & id)
{
    if constexpr (std::is_same_v<ID, CCostID>) return project.getTask(id) || project.getResourceFromCost(id);
    else if constexpr (requires { project.getTask(id); }) return project.getTask(id);
    else if constexpr (requires { project.getCompany(id); }) return project.getCompany(id);
    else if constexpr (requires { project.getResource(id); }) return project.getResource(id);
    else if constexpr (requires { project.getUser(id); }) return project.getUser(id);
    else if constexpr (requires { project.getRole(id); }) return project.getRole(id);
    else if constexpr (requires { project.getFilter(id); }) return project.getFilter(id);
    else if constexpr (requires { project.getEntity(id); }) return project.getEntity(id);
    else if constexpr (std::is_same_v<ID, CCalendarID>) return project.getActualCalendar(id).getID() == id;
    else if constexpr (std::is_same_v<ID, CTaskCategoryID>) return project.getTaskCategories().findByID(id) >= 0;
    else
    {
        static_assert(std::is_same_v<ID, CRiskID>);
        CRisk ignored;
        return project.getRisk(id, ignored);
    }
}

// Copies the record of that identifier out of the project; false when it holds none.
bool findPresent(CProject const & project, CLinkID const & id, CLink & out);
bool findPresent(CProject const & project, CCostID const & id, CCost & out);
bool findPresent(CProject const & project, CRiskID const & id, CRisk & out);
bool findPresent(CProject const & project, CAssignedRiskID const & id, CAssignedRisk & out);
bool findPresent(CProject const & project, CAssignedResourceID const & id, CAssignedResource & out);
bool findPresent(CProject const & project, CTaskReportID const & id, CTaskReport & out);
bool findPresent(CProject const & project, CSupplyChainID const & id, CSupplyChain & out);
bool findPresent(CProject const & project, CCompanyID const & id, CCompany & out);
bool findPresent(CProject const & project, CCalendarID const & id, CCalendar & out);
bool findPresent(CProject const & project, CUserID const & id, CUser & out);
bool findPresent(CProject const & project, CRoleID const & id, CRole & out);
bool findPresent(CProject const & project, CFilterID const & id, CFilter & out);

// Identifiers by their kind: those of one object and of what came with it.
using Identities = std::map<std::string, _GUID>;

// What "$label" and "@Name" stand for.
class Names
{
public:
    explicit Names(CProject const & project) : project(project) {}

    // Finds the object of the identifier's kind. A label says one that was named before. "@Name" is the only one with
    // exactly that name: of a task, company, resource, filter, role, category or entity the name, of a risk its
    // description, of a user the login, of a calendar the name of its company or resource, and "Project" for the
    // project's. Refuses what stands for none, or several.
    void find(std::string_view text, CIDBase & id) const;
    void label(std::string const & name, Identities identities) { labels[name] = std::move(identities); }

private:
    void findLabelled(std::string_view name, CIDBase & id) const;
    void findNamed(std::string_view name, CIDBase & id) const;

    CProject const & project;
    std::map<std::string, Identities, std::less<>> labels;
};

}  // namespace orvane::app
