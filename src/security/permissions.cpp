#include "security/permissions.h"

#include <utility>

#include "model/task.h"
#include "security/user.h"
#include "values/record_impl.h"

template <class Visit>
void CPermissions::describe(Visit && visit)
{
    visit("writeTasks", &CPermissions::writeTasks);
    visit("readTasks", &CPermissions::readTasks);
    visit("writeTaskCosts", &CPermissions::writeTaskCosts);
    visit("readTaskCosts", &CPermissions::readTaskCosts);
    visit("writeTaskResources", &CPermissions::writeTaskResources);
    visit("readTaskResources", &CPermissions::readTaskResources);
    visit("writeTaskRisks", &CPermissions::writeTaskRisks);
    visit("readTaskRisks", &CPermissions::readTaskRisks);
    visit("writeTaskRiskCosts", &CPermissions::writeTaskRiskCosts);
    visit("readTaskRiskCosts", &CPermissions::readTaskRiskCosts);
    visit("writeTaskReports", &CPermissions::writeTaskReports);
    visit("readTaskReports", &CPermissions::readTaskReports);
    visit("writeTaskReportCosts", &CPermissions::writeTaskReportCosts);
    visit("readTaskReportCosts", &CPermissions::readTaskReportCosts);
    visit("writeResources", &CPermissions::writeResources);
    visit("readResources", &CPermissions::readResources);
    visit("writeResourceCosts", &CPermissions::writeResourceCosts);
    visit("readResourceCosts", &CPermissions::readResourceCosts);
    visit("writeUsers", &CPermissions::writeUsers);
    visit("writeRoles", &CPermissions::writeRoles);
}

template class orvane::CRecord<CPermissions>;

bool CPermissions::isSupplierOfTask(User user, Task task)
{
    return task && isSupplierOfResource(user, task->getSupplyChain().getSupplierID());
}

bool CPermissions::isCustomerOfTask(User user, Task task)
{
    return user && task && !user->getCompanyID().isNULL() &&
           task->getSupplyChain().getCustomerID().findByID(user->getCompanyID()) >= 0;
}

bool CPermissions::isSupplierOfResource(User user, Owner owner)
{
    return user && !user->getCompanyID().isNULL() && user->getCompanyID() == owner;
}

bool CPermissions::isSupplierOfUser(User user, User other)
{
    return other && isSupplierOfResource(user, other->getCompanyID());
}

bool CPermissions::getAccess(CAccessType const & right, bool isSupplier, bool isCustomer)
{
    switch (right.getEquivalentValue())
    {
        case CAccessType::All: return true;
        case CAccessType::WhereSupplier: return isSupplier;
        case CAccessType::WhereCustomer: return isCustomer;
        case CAccessType::WhereSupplierOrCustomer: return isSupplier || isCustomer;
        default: return false;
    }
}

bool CPermissions::onTask(CAccessType const & right, User user, Task task)
{
    return getAccess(right, isSupplierOfTask(user, task), isCustomerOfTask(user, task));
}

bool CPermissions::operator>(CPermissions const & other) const
{
    bool greater = false;
    describe([&](char const *, auto right) { greater = greater || this->*right > other.*right; });
    return greater;
}

void CPermissions::makeSubPermissionsInheritFromParent()
{
    using P = CPermissions;
    // A right and the one that limits it. The order matters: supplier and customer limit each other, so
    // that a later parent can put another right in the place of an earlier cut.
    static constexpr std::pair<CAccessType P::*, CAccessType P::*> limits[] = {
        {&P::writeTasks, &P::readTasks},
        {&P::readTaskCosts, &P::readTasks},
        {&P::readTaskResources, &P::readTasks},
        {&P::readTaskRisks, &P::readTasks},
        {&P::readTaskRiskCosts, &P::readTaskRisks},
        {&P::readTaskReports, &P::readTasks},
        {&P::readTaskReportCosts, &P::readTaskReports},
        {&P::writeTaskCosts, &P::writeTasks},
        {&P::writeTaskResources, &P::writeTasks},
        {&P::writeTaskRisks, &P::writeTasks},
        {&P::writeTaskRiskCosts, &P::writeTaskRisks},
        {&P::writeTaskReports, &P::writeTasks},
        {&P::writeTaskReportCosts, &P::writeTaskReports},
        {&P::writeTaskCosts, &P::readTaskCosts},
        {&P::writeTaskResources, &P::readTaskResources},
        {&P::writeTaskRisks, &P::readTaskRisks},
        {&P::writeTaskRiskCosts, &P::readTaskRiskCosts},
        {&P::writeTaskReports, &P::readTaskReports},
        {&P::writeTaskReportCosts, &P::readTaskReportCosts},
        {&P::readResourceCosts, &P::readResources},
        {&P::writeResources, &P::readResources},
        {&P::writeResourceCosts, &P::writeResources},
        {&P::writeResourceCosts, &P::readResourceCosts},
    };
    for (auto const & [right, parent] : limits) (this->*right).makeEqualOrLessPermissive(this->*parent);
}

void CPermissions::Serialize(CProjectArchive & archive)
{
    int const version = archive.fileVersion();
    archive.exchange(writeTasks, readTasks, writeTaskCosts, readTaskCosts);
    if (version < 20) spreadTaskRights();
    else
    {
        archive.exchange(writeTaskResources, readTaskResources, writeTaskRisks, readTaskRisks, writeTaskRiskCosts,
                         readTaskRiskCosts, writeTaskReports, readTaskReports, writeTaskReportCosts,
                         readTaskReportCosts);
        for (CAccessType * const right : {&writeResources, &readResources, &writeResourceCosts, &readResourceCosts})
            archive.exchangeSince(26, *right, CAccessType(CAccessType::All));
    }
    archive.exchange(writeUsers, writeRoles);
}

void CPermissions::spreadTaskRights()
{
    writeTaskResources = writeTaskRisks = writeTaskReports = writeTasks;
    readTaskResources = readTaskRisks = readTaskReports = readTasks;
    writeTaskRiskCosts = writeTaskReportCosts = writeTaskCosts;
    readTaskRiskCosts = readTaskReportCosts = readTaskCosts;
}

void CPermissions::xmlSerialize(CProjectXMLArchive & archive)
{
    if (archive.readsAnother("Permissions")) return;
    exchangeElement(archive, "Permissions");
}
