#pragma once

#include "platform/project_xml_archive.h"
#include "values/enumerations.h"
#include "values/record.h"

class CCompanyID;
class CRole;
class CTask;
class CUser;

// What a user may see and change: twenty rights, each a choice of All, None, or where the user's company
// is the supplier or a customer of the task in question. A company supplies its own resources and users,
// and nobody is their customer; roles have neither, so that only All opens them.
//
// All opens also what does not exist; a user without a company is neither supplier nor customer.
class CPermissions : public orvane::CRecord<CPermissions>, public IProjectXMLTagProcessor
{
public:
    // Who asks, and for what. Pointers may be null.
    using User = CUser const *;
    using Task = CTask const *;
    // The company that owns the resource in question.
    using Owner = CCompanyID const &;

    // Whether the user may; each question reads one right.
    bool canWriteTask(User user, Task task) const { return onTask(writeTasks, user, task); }
    bool canReadTask(User user, Task task) const { return onTask(readTasks, user, task); }
    bool canWriteTaskCost(User user, Task task) const { return onTask(writeTaskCosts, user, task); }
    bool canReadTaskCost(User user, Task task) const { return onTask(readTaskCosts, user, task); }
    bool canWriteTaskResources(User user, Task task) const { return onTask(writeTaskResources, user, task); }
    bool canReadTaskResources(User user, Task task) const { return onTask(readTaskResources, user, task); }
    bool canWriteTaskRisks(User user, Task task) const { return onTask(writeTaskRisks, user, task); }
    bool canReadTaskRisks(User user, Task task) const { return onTask(readTaskRisks, user, task); }
    bool canWriteTaskRiskCosts(User user, Task task) const { return onTask(writeTaskRiskCosts, user, task); }
    bool canReadTaskRiskCosts(User user, Task task) const { return onTask(readTaskRiskCosts, user, task); }
    bool canWriteTaskReports(User user, Task task) const { return onTask(writeTaskReports, user, task); }
    bool canReadTaskReports(User user, Task task) const { return onTask(readTaskReports, user, task); }
    bool canWriteTaskReportCosts(User user, Task task) const { return onTask(writeTaskReportCosts, user, task); }
    bool canReadTaskReportCosts(User user, Task task) const { return onTask(readTaskReportCosts, user, task); }
    bool canWriteResource(User user, Owner owner) const { return onResource(writeResources, user, owner); }
    bool canReadResource(User user, Owner owner) const { return onResource(readResources, user, owner); }
    bool canWriteResourceCost(User user, Owner owner) const { return onResource(writeResourceCosts, user, owner); }
    bool canReadResourceCost(User user, Owner owner) const { return onResource(readResourceCosts, user, owner); }
    bool canWriteUser(User user, User who) const { return getAccess(writeUsers, isSupplierOfUser(user, who), false); }
    bool canWriteRole(User, CRole const *) const { return getAccess(writeRoles, false, false); }

    // What the user's company is to a task, a company's resource or another user. False for null pointers
    // and for a user without a company.
    static bool isSupplierOfTask(User user, Task task);
    static bool isCustomerOfTask(User user, Task task);
    static bool isSupplierOfResource(User user, Owner owner);
    static bool isSupplierOfUser(User user, User other);
    // Whether a right is granted to somebody who is the supplier, a customer, both or neither.
    static bool getAccess(CAccessType const & right, bool isSupplier, bool isCustomer);

    // Some right grants access somewhere that its counterpart does not. Of two sets each can be greater.
    bool operator>(CPermissions const & other) const;
    // Cuts rights down to those they rest on: nobody writes what they cannot read, or reaches a detail of
    // something that they cannot reach.
    void makeSubPermissionsInheritFromParent();

    CAccessType const & getWriteTasks() const { return writeTasks; }
    CAccessType const & getReadTasks() const { return readTasks; }
    CAccessType const & getWriteTaskCosts() const { return writeTaskCosts; }
    CAccessType const & getReadTaskCosts() const { return readTaskCosts; }
    CAccessType const & getWriteTaskResources() const { return writeTaskResources; }
    CAccessType const & getReadTaskResources() const { return readTaskResources; }
    CAccessType const & getWriteTaskRisks() const { return writeTaskRisks; }
    CAccessType const & getReadTaskRisks() const { return readTaskRisks; }
    CAccessType const & getWriteTaskRiskCosts() const { return writeTaskRiskCosts; }
    CAccessType const & getReadTaskRiskCosts() const { return readTaskRiskCosts; }
    CAccessType const & getWriteTaskReports() const { return writeTaskReports; }
    CAccessType const & getReadTaskReports() const { return readTaskReports; }
    CAccessType const & getWriteTaskReportCosts() const { return writeTaskReportCosts; }
    CAccessType const & getReadTaskReportCosts() const { return readTaskReportCosts; }
    CAccessType const & getWriteResource() const { return writeResources; }
    CAccessType const & getReadResource() const { return readResources; }
    CAccessType const & getWriteResourceCost() const { return writeResourceCosts; }
    CAccessType const & getReadResourceCost() const { return readResourceCosts; }
    CAccessType const & getWriteUsers() const { return writeUsers; }
    CAccessType const & getWriteRoles() const { return writeRoles; }

    void setWriteTasks(CAccessType const & value) { writeTasks = value; }
    void setReadTasks(CAccessType const & value) { readTasks = value; }
    void setWriteTaskCosts(CAccessType const & value) { writeTaskCosts = value; }
    void setReadTaskCosts(CAccessType const & value) { readTaskCosts = value; }
    void setWriteTaskResources(CAccessType const & value) { writeTaskResources = value; }
    void setReadTaskResources(CAccessType const & value) { readTaskResources = value; }
    void setWriteTaskRisks(CAccessType const & value) { writeTaskRisks = value; }
    void setReadTaskRisks(CAccessType const & value) { readTaskRisks = value; }
    void setWriteTaskRiskCosts(CAccessType const & value) { writeTaskRiskCosts = value; }
    void setReadTaskRiskCosts(CAccessType const & value) { readTaskRiskCosts = value; }
    void setWriteTaskReports(CAccessType const & value) { writeTaskReports = value; }
    void setReadTaskReports(CAccessType const & value) { readTaskReports = value; }
    void setWriteTaskReportCosts(CAccessType const & value) { writeTaskReportCosts = value; }
    void setReadTaskReportCosts(CAccessType const & value) { readTaskReportCosts = value; }
    void setWriteResource(CAccessType const & value) { writeResources = value; }
    void setReadResource(CAccessType const & value) { readResources = value; }
    void setWriteResourceCost(CAccessType const & value) { writeResourceCosts = value; }
    void setReadResourceCost(CAccessType const & value) { readResourceCosts = value; }
    void setWriteUsers(CAccessType const & value) { writeUsers = value; }
    void setWriteRoles(CAccessType const & value) { writeRoles = value; }

    void Serialize(CProjectArchive & archive);
    void xmlSerialize(CProjectXMLArchive & archive) override;

private:
    friend class orvane::CRecord<CPermissions>;
    template <class Visit>
    static void describe(Visit && visit);

    // Files once told the rights on tasks and their costs alone: those on details follow them.
    void spreadTaskRights();
    static bool onTask(CAccessType const & right, User user, Task task);
    static bool onResource(CAccessType const & right, User user, Owner owner)
    {
        return getAccess(right, isSupplierOfResource(user, owner), false);
    }

    CAccessType writeTasks{CAccessType::None}, readTasks{CAccessType::None};
    CAccessType writeTaskCosts{CAccessType::None}, readTaskCosts{CAccessType::None};
    CAccessType writeTaskResources{CAccessType::None}, readTaskResources{CAccessType::None};
    CAccessType writeTaskRisks{CAccessType::None}, readTaskRisks{CAccessType::None};
    CAccessType writeTaskRiskCosts{CAccessType::None}, readTaskRiskCosts{CAccessType::None};
    CAccessType writeTaskReports{CAccessType::None}, readTaskReports{CAccessType::None};
    CAccessType writeTaskReportCosts{CAccessType::None}, readTaskReportCosts{CAccessType::None};
    CAccessType writeResources{CAccessType::None}, readResources{CAccessType::None};
    CAccessType writeResourceCosts{CAccessType::None}, readResourceCosts{CAccessType::None};
    CAccessType writeUsers{CAccessType::None};
    CAccessType writeRoles{CAccessType::None};
};
extern template class orvane::CRecord<CPermissions>;
