#pragma once

#include "model/connection_credentials.h"
#include "model/project_data.h"
#include "schedule/critical_path_cached_data.h"
#include "view/presentation_data.h"

class CDocument;

// One open project: its content, the state of its views, and who is logged in. The application reads it
// through this class and changes it through CLocalRulesChecker alone, one short-lived object per action.
//
// Pointers and references handed out hold until the next change of the project. A lookup that finds
// nothing answers null, and a search for a NULL identifier finds nothing.
class CProject : public CDynamic<CProject>
{
public:
    // A new project with the default roles, the administrator logged in, and an empty plan. The document,
    // which may be null, is told of modifications and not owned; the flag is ignored.
    CProject(CDocument * document, bool);
    // The same without a document, its content replaced by the given one.
    explicit CProject(CProjectData const & data);
    CProject(CProject const &) = delete;
    CProject & operator=(CProject const &) = delete;
    ~CProject() override;

    // Copies that the caller owns.
    CProjectData * getCopyOfProjectData() const { return new CProjectData(projectData); }
    CPresentationData * getCopyOfPresentationData() const { return new CPresentationData(presentationData); }
    // Takes the content of the object over; null, an object of another class and the project's own are ignored.
    void setProjectData(CProjectData * data);
    void setPresentationData(CPresentationData * data);
    // After a load: gives the project what a file can lack, and derives flags, caches and critical path.
    void postSerialize();

    void setModified();
    bool getChanged() const { return projectData.getChanged(); }
    void resetChanged();

    // Identity.
    CProjectID const & getProjectID() const { return projectData.clientProjectID; }
    CString const & getDirectory() const { return directory; }
    CString const & getProjectName() const { return projectName; }
    CString const & getProjectHistoryDirectory() const { return projectHistoryDirectory; }
    void setProjectNameDirectoryAndHistoryDirectory(CString const & name, CString const & folder, CString const & historyFolder);
    bool getFullHistory() const { return fullHistory; }
    void setFullHistory(bool keep) { fullHistory = keep; }
    CString const & getCurrentStateName() const { return currentStateName; }
    // The number under which the project's clipboard format is registered.
    unsigned int getClipBoardFormat() const { return clipboardFormat; }

    // Users. A failed login leaves the current user as it was.
    bool login(CString const & login, CString const & password);
    bool loginCheck(CString const & login, CString const & password) const { return projectData.loginCheck(login, password); }
    bool loginUsingCredentials();
    CConnectionCredentials const & getConnectionCredentials() const { return connectionCredentials; }
    void setConnectionCredentials(CConnectionCredentials const & credentials) { connectionCredentials = credentials; }
    CUser const * getCurrentUser() const;
    CRole const * getCurrentRole() const;
    CUser const * getAdminUser() const { return getUser(projectData.adminUserID); }
    CRole const * getAdminRole() const { return getRole(projectData.adminRoleID); }
    CUser const * getUser(int index) const;
    CUser const * getUser(CUserID const & id) const;
    CRole const * getRole(int index) const;
    CRole const * getRole(CRoleID const & id) const;
    int getNumberOfUsers() const { return projectData.users.GetSize(); }
    int getNumberOfRoles() const { return projectData.roles.GetSize(); }
    CUserArray const & getAllUsers() const { return projectData.users; }
    CRoleArray const & getAllRoles() const { return projectData.roles; }
    // Whether a user belongs to the company.
    bool hasUsers(CCompanyID const & id) const;

    // Tasks. The number of tasks counts the roots, blank ones included; the total number counts every
    // valid task, but none below a blank one.
    int getNumberOfTasks() const { return projectData.tasks.GetSize(); }
    int getTotalNumberOfTasks() const { return projectData.tasks.countValidTasks(); }
    int getNumberOfSubtasks(CTask const & task) const { return task.calculateNumberOfChildren(); }
    CTaskArray const & getAllTasks() const { return projectData.tasks; }
    CTask const * getTask(int index) const;
    CTask const * getTask(CTaskID const & id) const;
    CTask const * getTask(CLinkID const & id) const;
    CTask const * getTask(CSupplyChainID const & id) const;
    // By the last derived pass; null for a root task.
    CTask const * getTaskParent(CTaskID const & id) const;
    CTask const * getTaskParent(CTask const & task) const { return task.getParentOfLastPass(); }
    CTaskCategoryArray const & getTaskCategories() const { return projectData.taskCategories; }
    // Removes the category unless a valid task, none below a blank one, uses it.
    void clearUnusedTaskCategory(CTaskCategoryID const & id);

    // Links: the limits that the links of a task and of others on it set to its start; not valid without any.
    CProjectTime getEarliestStartFromUpstreamLinks(CTaskID const & id) const;
    CProjectTime getEarliestStartFromUpstreamLinks(CTask const & task) const;
    CProjectTime getLatestStartFromDownstreamLinks(CTaskID const & id) const;
    CProjectTime getLatestStartFromDownstreamLinks(CTask const & task) const;
    // Every link that leaves the task, in the order of the tree.
    void getDownstreamLinks(CTaskID const & id, CLinkArray & links) const;
    bool hasAnyDownstreamLinks(CTaskID const & id) const;

    // Calendars. An identifier that is NULL or unknown means the project calendar; a calendar that is not in
    // use gives way to the one above it.
    CCalendar const & getProjectCalendar() const { return projectData.calendar; }
    CCalendar const & getCalendarInUse(CCalendarID const & id) const;
    // The calendar of that identifier itself, in use or not.
    CCalendar const & getActualCalendar(CCalendarID const & id) const;

    // The longest chain of linked tasks; see CCriticalPathCachedData.
    CCriticalPathCachedData const & getCriticalPath() const { return criticalPathCache; }
    bool isInCriticalPath(CTaskID const & id) const { return criticalPathCache.isInCriticalPath(id); }
    bool isInCriticalPath(CLinkID const & id) const { return criticalPathCache.isInCriticalPath(id); }
    bool hasChildrenInCriticalPath(CTask const & task) const { return criticalPathCache.hasChildrenInCriticalPath(task); }
    bool getCriticalPathChanged() const { return criticalPathCache.getChanged(); }
    void updateCriticalPath() { criticalPathCache.updateFromProject(this); }

    // State of the views.
    CPresentationData const & getPresentationData() const { return presentationData; }
    CTaskID const & getPrimarySelectedTaskID() const { return presentationData.getPrimarySelectedTaskID(); }
    CTaskIDArray const & getSelectedTaskID() const { return presentationData.getSelectedTaskID(); }
    CFilterID const & getSelectedFilterID() const { return presentationData.getSelectedFilterID(); }
    bool getTaskPresentation(CTaskID const & id, CTaskPresentation & presentation) const;
    // Whether an ancestor is shown collapsed.
    bool isTaskHidden(CTaskID const & id) const;

    static int getCreated() { return s_created; }
    static int getDeleted() { return s_deleted; }

private:
    friend class CLocalRulesChecker;

    void initialize();
    bool isTaskCategoryUsed(CTaskArray const & tasks, CTaskCategoryID const & id) const;
    void validateTaskPresentations();

    CProjectData projectData;
    CPresentationData presentationData;
    CDocument * document = nullptr;
    CString currentStateName;
    unsigned int clipboardFormat = 0;
    CCriticalPathCachedData criticalPathCache;
    CConnectionCredentials connectionCredentials;
    CUserID currentUserID{orvane::nullID};
    CString directory;
    CString projectName;
    CString projectHistoryDirectory;
    bool fullHistory = false;

    static inline int s_created = 0;
    static inline int s_deleted = 0;
};
