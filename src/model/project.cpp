#include "model/project.h"

#include "config/project_config.h"
#include "model/array_access.h"
#include "platform/document.h"
#include "platform/registered_name.h"

// ---- life -----------------------------------------------------------------------------------------

CProject::CProject(CDocument * document, bool)
{
    ++s_created;
    initialize();
    this->document = document;
    setFullHistory(CProjectConfig::getFullHistory() != 0);
}

CProject::CProject(CProjectData const & data) : CProject(nullptr, false)
{
    projectData = data;
    projectData.setProject(this);
}

CProject::~CProject()
{
    ++s_deleted;
}

void CProject::initialize()
{
    currentStateName = "Start";
    clipboardFormat = RegisterClipboardFormat("Orvane Schedule Clipboard Format");
    presentationData.clear();
    projectData.clear();
    login("Administrator", "");
    presentationData.setProject(this);
    projectData.setProject(this);
}

void CProject::setProjectData(CProjectData * data)
{
    if (!data || data == &projectData || !data->IsKindOf(CProjectData::GetThisClass())) return;
    projectData = *data;
    projectData.setProject(this);
}

void CProject::setPresentationData(CPresentationData * data)
{
    if (!data || data == &presentationData || !data->IsKindOf(CPresentationData::GetThisClass())) return;
    presentationData = *data;
    presentationData.setProject(this);
}

void CProject::postSerialize()
{
    if (!projectData.checkAdminUserAndRoleExist())
    {
        projectData.setupDefaultRoles();
        projectData.setupDefaultUser();
    }
    validateRiskPresentations();
    validateResourcePresentations();
    projectData.calendar.setProject(this);
    CCompanyArray & companies = projectData.companies;
    for (int each = 0; each < companies.GetSize(); ++each) companies.elementForPass(each).postSerialize(this);
    validateTaskPresentations();
    CTaskArray & tasks = projectData.tasks;
    for (int each = 0; each < tasks.GetSize(); ++each) tasks.elementForPass(each).postSerialize(this);
    CUserArray & users = projectData.users;
    for (int each = 0; each < users.GetSize(); ++each) users.elementForPass(each).postSerialize(this);
    CFilterArray & filters = projectData.filters;
    for (int each = 0; each < filters.GetSize(); ++each) filters.elementForPass(each).setProject(this);
    projectData.setChanged();
    presentationData.setChanged();
    updateCriticalPath();
}

void CProject::setModified()
{
    if (document) document->SetModifiedFlag(true);
}

void CProject::resetChanged()
{
    projectData.resetChanged();
    presentationData.resetChanged();
}

// ---- users ----------------------------------------------------------------------------------------

bool CProject::login(CString const & login, CString const & password)
{
    if (!loginCheck(login, password)) return false;
    currentUserID = projectData.users.GetAt(projectData.users.findByLogin(login)).getID();
    return !currentUserID.isNULL();
}

bool CProject::loginUsingCredentials()
{
    return login(connectionCredentials.getUserName(), connectionCredentials.getPassword());
}

CUser const * CProject::getCurrentUser() const
{
    return getUser(currentUserID);
}

CRole const * CProject::getCurrentRole() const
{
    CUser const * const user = getCurrentUser();
    return user ? getRole(user->getRoleID()) : nullptr;
}

CUser const * CProject::getUser(int index) const
{
    return orvane::elementAt(projectData.users, index);
}

CUser const * CProject::getUser(CUserID const & id) const
{
    return orvane::elementOf(projectData.users, id);
}

CRole const * CProject::getRole(int index) const
{
    return orvane::elementAt(projectData.roles, index);
}

CRole const * CProject::getRole(CRoleID const & id) const
{
    return orvane::elementOf(projectData.roles, id);
}

bool CProject::hasUsers(CCompanyID const & id) const
{
    if (id.isNULL()) return false;
    for (CUser const & user : projectData.users)
        if (user.getCompanyID() == id) return true;
    return false;
}

// ---- tasks ----------------------------------------------------------------------------------------

CTask const * CProject::getTask(int index) const
{
    return orvane::elementAt(projectData.tasks, index);
}

CTask const * CProject::getTask(CTaskID const & id) const
{
    return id.isNULL() ? nullptr : projectData.tasks.findInForest(id);
}

CTask const * CProject::getTask(CLinkID const & id) const
{
    return id.isNULL() ? nullptr : projectData.tasks.getLinkIndex()->findHolder(id);
}

CTask const * CProject::getTask(CSupplyChainID const & id) const
{
    return id.isNULL() ? nullptr : projectData.tasks.findTask(id);
}

CTask const * CProject::getTask(CAssignedResourceID const & id) const
{
    return projectData.tasks.findTask(id);
}

CTask const * CProject::getTask(CAssignedRiskID const & id) const
{
    return projectData.tasks.findTask(id);
}

CTask const * CProject::getTask(CTaskReportID const & id) const
{
    return id.isNULL() ? nullptr : projectData.tasks.findTask(id);
}

CTask const * CProject::getTask(CCostID const & id) const
{
    return id.isNULL() ? nullptr : projectData.tasks.findTask(id);
}

CTask const * CProject::getTaskParent(CTaskID const & id) const
{
    CTask const * const task = getTask(id);
    return task ? getTaskParent(*task) : nullptr;
}

bool CProject::isTaskCategoryUsed(CTaskArray const & tasks, CTaskCategoryID const & id) const
{
    for (CTask const & task : tasks)
    {
        if (!task.isValid()) continue;
        if (task.getCategoryID() == id) return true;
        if (task.getSubTasks() && isTaskCategoryUsed(*task.getSubTasks(), id)) return true;
    }
    return false;
}

void CProject::clearUnusedTaskCategory(CTaskCategoryID const & id)
{
    int const position = projectData.taskCategories.findByID(id);
    if (position >= 0 && !isTaskCategoryUsed(projectData.tasks, id)) projectData.taskCategories.RemoveAt(position);
}
