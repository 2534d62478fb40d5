#include "security/role.h"

#include "values/document_array_impl.h"
#include "values/record_impl.h"

template <class Visit>
void CRole::describe(Visit && visit)
{
    visit("id", &CRole::id);
    visit("name", &CRole::name);
    visit("permissions", &CRole::permissions);
}

template class orvane::CRecord<CRole>;

namespace
{

constexpr auto all = CAccessType::All;
constexpr auto supplier = CAccessType::WhereSupplier;
constexpr auto none = CAccessType::None;

// One right as the default roles grant it.
struct DefaultRight
{
    void (CPermissions::*set)(CAccessType const &);
    CAccessType::ACCESS_TYPE administrator, user, guest;
};

constexpr DefaultRight defaultRights[] = {
    {&CPermissions::setWriteTasks, all, supplier, none},
    {&CPermissions::setReadTasks, all, all, all},
    {&CPermissions::setWriteTaskCosts, all, supplier, none},
    {&CPermissions::setReadTaskCosts, all, supplier, none},
    {&CPermissions::setWriteTaskResources, all, supplier, none},
    {&CPermissions::setReadTaskResources, all, all, all},
    {&CPermissions::setWriteTaskRisks, all, supplier, none},
    {&CPermissions::setReadTaskRisks, all, all, all},
    {&CPermissions::setWriteTaskRiskCosts, all, supplier, none},
    {&CPermissions::setReadTaskRiskCosts, all, supplier, none},
    {&CPermissions::setWriteTaskReports, all, supplier, none},
    {&CPermissions::setReadTaskReports, all, all, all},
    {&CPermissions::setWriteTaskReportCosts, all, supplier, none},
    {&CPermissions::setReadTaskReportCosts, all, supplier, none},
    {&CPermissions::setWriteResource, all, supplier, none},
    {&CPermissions::setReadResource, all, all, all},
    {&CPermissions::setWriteResourceCost, all, supplier, none},
    {&CPermissions::setReadResourceCost, all, supplier, none},
    {&CPermissions::setWriteUsers, all, supplier, none},
    {&CPermissions::setWriteRoles, all, none, none},
};

CPermissions defaultPermissions(CAccessType::ACCESS_TYPE DefaultRight::*role)
{
    CPermissions permissions;
    for (DefaultRight const & right : defaultRights) (permissions.*right.set)(right.*role);
    return permissions;
}

}  // namespace

void CRole::setToDefaultAdministratorRole()
{
    id.setGUID("4a728648a92a7148b2c5225c80b91a77");
    name = "Administrator";
    permissions = defaultPermissions(&DefaultRight::administrator);
}

void CRole::setToDefaultUserRole()
{
    id.setGUID("bdcc82f4c6d2714a938e7cbe78426ecf");
    name = "User";
    permissions = defaultPermissions(&DefaultRight::user);
}

void CRole::setToDefaultGuestRole()
{
    id.setGUID("fdbd6121365ee64781859d4a60cf4ff0");
    name = "Guest";
    permissions = defaultPermissions(&DefaultRight::guest);
}

void CRole::xmlSerialize(CProjectXMLArchive & archive)
{
    exchangeElementWithChildren(archive, "Role");
}

void CRoleArray::xmlSerialize(CProjectXMLArchive & archive)
{
    if (orvane::readWrapper(archive, *this, "Role") || !archive.isStoring()) return;
    orvane::writeWrapper(archive, "Roles", GetSize(), [&](int each) { elementForPass(each).xmlSerialize(archive); });
}
