#include "model/project_data.h"

template <class Visit>
void CProjectData::describe(Visit && visit)
{
    visit("users", &CProjectData::users);
    visit("roles", &CProjectData::roles);
    visit("calendar", &CProjectData::calendar);
    visit("tasks", &CProjectData::tasks);
}

CProjectData::CProjectData()
{
    tasks.beRoots();
}

CProjectData::CProjectData(CProjectData const & other)
    : CDynamic(other),
      users(other.users),
      roles(other.roles),
      tasks(other.tasks),
      taskCategories(other.taskCategories),
      calendar(other.calendar),
      clientProjectID(other.clientProjectID),
      masterProjectID(other.masterProjectID),
      adminUserID(other.adminUserID),
      adminRoleID(other.adminRoleID),
      stateIndex(other.stateIndex),
      changed(other.changed)
{
    tasks.beRoots();
}

CProjectData & CProjectData::operator=(CProjectData const & other) = default;

// ---- the content of a new project -----------------------------------------------------------------

void CProjectData::clear()
{
    setupDefaultRoles();
    setupDefaultUser();
    tasks.RemoveAll();
    taskCategories.RemoveAll();
    calendar.clear(true);
    clientProjectID = CProjectID();
    masterProjectID = CProjectID();
}

void CProjectData::setupDefaultRoles()
{
    CRole administrator;
    CRole user;
    CRole guest;
    administrator.setToDefaultAdministratorRole();
    user.setToDefaultUserRole();
    guest.setToDefaultGuestRole();
    roles.RemoveAll();
    for (CRole const * role : {&administrator, &user, &guest}) roles.Add(*role);
    adminRoleID = administrator.getID();
}

void CProjectData::setupDefaultUser()
{
    CUser administrator;
    administrator.setupBlankAdministratorUser(adminRoleID);
    users.RemoveAll();
    users.Add(administrator);
    adminUserID = administrator.getID();
}

bool CProjectData::checkAdminUserAndRoleExist() const
{
    constexpr char administrator[] = "Administrator";
    if (adminUserID.isNULL() || adminRoleID.isNULL()) return false;
    int const user = users.findByID(adminUserID);
    int const role = roles.findByID(adminRoleID);
    return user >= 0 && role >= 0 && users.GetAt(user).getLogin() == administrator &&
           users.GetAt(user).getName() == administrator && roles.GetAt(role).getName() == administrator;
}

bool CProjectData::loginCheck(CString const & login, CString const & password) const
{
    int const user = users.findByLogin(login);
    return user >= 0 && users.GetAt(user).getPassword() == password;
}

// ---- comparison and flags -------------------------------------------------------------------------

bool CProjectData::equal(CProjectData const & a, CProjectData const & b)
{
    return a.stateIndex.getValue() == b.stateIndex.getValue() && a.users == b.users && a.roles == b.roles &&
           a.tasks == b.tasks && a.taskCategories == b.taskCategories && a.calendar == b.calendar &&
           a.clientProjectID == b.clientProjectID && a.adminUserID == b.adminUserID && a.adminRoleID == b.adminRoleID;
}

bool CProjectData::setChanged()
{
    if (CTaskCachedData::anyStoresRisk())
        for (int each = 0; each < tasks.GetSize(); ++each) tasks.elementForPass(each).resetAllCachedData();
    changed = false;
    describe([this](char const *, auto part) { changed |= (this->*part).setChanged(); });
    return changed;
}

void CProjectData::resetChanged()
{
    users.resetChanged();
    roles.resetChanged();
    calendar.resetChanged();
    tasks.resetChangedWithParents();
    taskCategories.resetChanged();
    clientProjectID.resetChanged();
    masterProjectID.resetChanged();
    adminUserID.resetChanged();
    adminRoleID.resetChanged();
    // With every flag clear a pass recomputes nothing but parents, which are right, and stored risk.
    changed = false;
    if (CTaskCachedData::anyStoresRisk()) setChanged();
}

void CProjectData::setProject(CProject * project)
{
    calendar.setProject(project);
    for (int each = 0; each < users.GetSize(); ++each) users.elementForPass(each).setProject(project);
    for (int each = 0; each < tasks.GetSize(); ++each) tasks.elementForPass(each).setProject(project);
}
