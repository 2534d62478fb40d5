#include "model/project_data.h"

#include "model/project.h"

template <class Visit>
void CProjectData::describe(Visit && visit)
{
    visit("companies", &CProjectData::companies);
    visit("users", &CProjectData::users);
    visit("roles", &CProjectData::roles);
    visit("risks", &CProjectData::risks);
    visit("filters", &CProjectData::filters);
    visit("calendar", &CProjectData::calendar);
    visit("tasks", &CProjectData::tasks);
}

CProjectData::CProjectData()
{
    tasks.beRoots();
}

CProjectData::CProjectData(CProjectData const & other)
    : CDynamic(other),
      companies(other.companies),
      users(other.users),
      roles(other.roles),
      tasks(other.tasks),
      taskCategories(other.taskCategories),
      risks(other.risks),
      filters(other.filters),
      calendar(other.calendar),
      clientProjectID(other.clientProjectID),
      masterProjectID(other.masterProjectID),
      adminUserID(other.adminUserID),
      adminRoleID(other.adminRoleID),
      scene(other.scene),
      stateIndex(other.stateIndex),
      changed(other.changed)
{
    tasks.beRoots();
}

CProjectData & CProjectData::operator=(CProjectData const & other) = default;

// ---- the content of a new project -----------------------------------------------------------------

void CProjectData::clear()
{
    companies.RemoveAll();
    setupDefaultRoles();
    setupDefaultUser();
    tasks.RemoveAll();
    taskCategories.RemoveAll();
    risks.RemoveAll();
    filters.RemoveAll();
    calendar.clear(true);
    scene.clear();
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
    return a.stateIndex.getValue() == b.stateIndex.getValue() && a.companies == b.companies && a.users == b.users &&
           a.roles == b.roles && a.tasks == b.tasks && a.taskCategories == b.taskCategories && a.risks == b.risks && a.filters == b.filters &&
           a.calendar == b.calendar &&
           a.clientProjectID == b.clientProjectID && a.adminUserID == b.adminUserID && a.adminRoleID == b.adminRoleID;
}

bool CProjectData::setChanged()
{
    storedRisk.beginPass(tasks);
    changed = false;
    describe([this](char const *, auto part) { changed |= (this->*part).setChanged(); });
    storedRisk.endPass();
    return changed;
}

void CProjectData::resetChanged()
{
    companies.resetChanged();
    users.resetChanged();
    roles.resetChanged();
    risks.resetChanged();
    filters.resetChanged();
    calendar.resetChanged();
    tasks.resetChangedWithParents();
    taskCategories.resetChanged();
    clientProjectID.resetChanged();
    masterProjectID.resetChanged();
    adminUserID.resetChanged();
    adminRoleID.resetChanged();
    // With every flag clear a pass recomputes nothing but parents, which are right, stored risk, and verdicts of the
    // filter when another was selected.
    changed = false;
    if (storedRisk.isInUse() || CTaskCachedData::anyStoresRisk() || (project && project->isFilterVerdictDue())) setChanged();
}

void CProjectData::setProject(CProject * value)
{
    project = value;
    calendar.setProject(project);
    for (int each = 0; each < companies.GetSize(); ++each) companies.elementForPass(each).setProject(project);
    for (int each = 0; each < users.GetSize(); ++each) users.elementForPass(each).setProject(project);
    for (int each = 0; each < filters.GetSize(); ++each) filters.elementForPass(each).setProject(project);
    for (int each = 0; each < tasks.GetSize(); ++each) tasks.elementForPass(each).setProject(project);
}
