#pragma once

#include "security/permissions.h"
#include "values/identifiers.h"
#include "values/scalars.h"
#include "values/typed_array.h"

class CProject;

// Somebody who works on the project. What a user may do comes from the user's role and depends on the
// company that the user belongs to; see CPermissions.
class CUser : public orvane::CRecord<CUser>, public IProjectXMLTagProcessor
{
public:
    // Nameless, with fresh identifiers of a role and a company that do not exist.
    CUser() = default;
    // Without a role and a company. An empty name becomes the login.
    CUser(CString const & login, CString const & password, CString const & name, CString const & email,
          CString const & telephoneNumber, CString const & mobileTelephoneNumber);

    CUserID const & getID() const { return id; }
    void setID(CUserID const & value) { id = value; }
    CProjectString const & getName() const { return name; }
    void setName(CProjectString const & value) { name = value; }
    CProjectString const & getLogin() const { return login; }
    void setLogin(CProjectString const & value) { login = value; }
    // In plain text. Never to be shown, logged or exported.
    CProjectString const & getPassword() const { return password; }
    void setPassword(CProjectString const & value) { password = value; }
    CProjectString const & getEmail() const { return email; }
    void setEmail(CProjectString const & value) { email = value; }
    CProjectString const & getTelephoneNumber() const { return telephoneNumber; }
    void setTelephoneNumber(CProjectString const & value) { telephoneNumber = value; }
    CProjectString const & getMobileTelephoneNumber() const { return mobileTelephoneNumber; }
    void setMobileTelephoneNumber(CProjectString const & value) { mobileTelephoneNumber = value; }
    CRoleID const & getRoleID() const { return roleID; }
    void setRoleID(CRoleID const & value) { roleID = value; }
    // NULL for a user who belongs to no company.
    CCompanyID const & getCompanyID() const { return companyID; }
    void setCompanyID(CCompanyID const & value) { companyID = value; }
    // The user's own set, which counts only while the role cannot be found.
    CPermissions const & getPermissions() const { return permissions; }
    void setPermissions(CPermissions const & value) { permissions = value; }
    void makeSubPermissionsInheritFromParentPermissions() { permissions.makeSubPermissionsInheritFromParent(); }

    // The permissions of the role, or the user's own without one. Holds until the project changes.
    CPermissions const & getActivePermissions() const;

    // Whether the active permissions let this user.
    bool canWriteTask(CTask const * task) const { return rights().canWriteTask(this, task); }
    bool canReadTask(CTask const * task) const { return rights().canReadTask(this, task); }
    bool canWriteTaskCost(CTask const * task) const { return rights().canWriteTaskCost(this, task); }
    bool canReadTaskCost(CTask const * task) const { return rights().canReadTaskCost(this, task); }
    bool canWriteTaskResource(CTask const * task) const { return rights().canWriteTaskResources(this, task); }
    bool canReadTaskResource(CTask const * task) const { return rights().canReadTaskResources(this, task); }
    bool canWriteTaskRisk(CTask const * task) const { return rights().canWriteTaskRisks(this, task); }
    bool canReadTaskRisk(CTask const * task) const { return rights().canReadTaskRisks(this, task); }
    bool canWriteTaskRiskCost(CTask const * task) const { return rights().canWriteTaskRiskCosts(this, task); }
    bool canReadTaskRiskCost(CTask const * task) const { return rights().canReadTaskRiskCosts(this, task); }
    bool canWriteTaskReport(CTask const * task) const { return rights().canWriteTaskReports(this, task); }
    bool canReadTaskReport(CTask const * task) const { return rights().canReadTaskReports(this, task); }
    bool canWriteTaskReportCost(CTask const * task) const { return rights().canWriteTaskReportCosts(this, task); }
    bool canReadTaskReportCost(CTask const * task) const { return rights().canReadTaskReportCosts(this, task); }
    bool canWriteResource(CCompanyID const & owner) const { return rights().canWriteResource(this, owner); }
    bool canReadResource(CCompanyID const & owner) const { return rights().canReadResource(this, owner); }
    bool canWriteResourceCost(CCompanyID const & owner) const { return rights().canWriteResourceCost(this, owner); }
    bool canReadResourceCost(CCompanyID const & owner) const { return rights().canReadResourceCost(this, owner); }
    bool canWriteUser(CUser const * user) const { return rights().canWriteUser(this, user); }
    bool canWriteRole(CRole const * role) const { return rights().canWriteRole(this, role); }

    // The same of an object of the project; one that cannot be found counts as null.
    bool canWriteTask(CTaskID const & id) const { return canWriteTask(findTask(id)); }
    bool canReadTask(CTaskID const & id) const { return canReadTask(findTask(id)); }
    bool canWriteTaskCost(CTaskID const & id) const { return canWriteTaskCost(findTask(id)); }
    bool canWriteTaskResource(CTaskID const & id) const { return canWriteTaskResource(findTask(id)); }
    bool canWriteTaskRisk(CTaskID const & id) const { return canWriteTaskRisk(findTask(id)); }
    bool canWriteTaskReport(CTaskID const & id) const { return canWriteTaskReport(findTask(id)); }
    bool canWriteUser(CUserID const & id) const;
    bool canWriteRole(CRoleID const & id) const;

    // Tells that something is not allowed, and whom to ask.
    void showNoAccessNotice() const;

    // Becomes the administrator of a new project, without a password.
    void setupBlankAdministratorUser(CRoleID const & adminRoleID);
    // After a load: a role that is gone becomes the administrator's.
    void postSerialize(CProject * project);
    void setProject(CProject * value) { project = value; }

    void Serialize(CProjectArchive & archive);
    // Without the password. Reads its attributes from whatever element it is given, its permissions from theirs.
    void xmlSerialize(CProjectXMLArchive & archive) override;

private:
    friend class orvane::CRecord<CUser>;
    template <class Visit>
    static void describe(Visit && visit);

    CPermissions const & rights() const { return getActivePermissions(); }
    CTask const * findTask(CTaskID const & id) const;

    CUserID id;
    CProjectString name;
    CProjectString login;
    CProjectString password;
    CProjectString email;
    CProjectString telephoneNumber;
    CProjectString mobileTelephoneNumber;
    CRoleID roleID;
    CCompanyID companyID;
    CPermissions permissions;
    CProject * project = nullptr;
};
extern template class orvane::CRecord<CUser>;

class CUserArray : public orvane::CIdentifiedArray<CUserArray, CUser>, public IProjectXMLTagProcessor
{
public:
    // The position of the first user with exactly that login, or -1.
    int findByLogin(orvane::Text login) const;

    // A user whose login is there already is not read a second time.
    void xmlSerialize(CProjectXMLArchive & archive) override;
};
