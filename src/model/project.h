#pragma once

#include "model/connection_credentials.h"
#include "model/project_data.h"
#include "model/resource_index.h"
#include "persistence/undo_redo_list.h"
#include "schedule/critical_path_cached_data.h"
#include "view/presentation_data.h"

class CDocument;

namespace orvane
{
enum class Packing;
struct SaveGuard;
}

// One open project: its content, the state of its views, and who is logged in. The application reads it
// through this class and changes it through CLocalRulesChecker alone, one short-lived object per action.
//
// Pointers and references handed out hold until the next change of the project. A lookup that finds
// nothing answers null, and a search for a NULL identifier finds nothing.
class CProject : public CDynamic<CProject>, public IProjectXMLTagProcessor
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
    void setFullHistory(bool keep);

    // Files. A project file is a gzip file of the layout that docs/file-format.md tells.
    //
    // The whole project; afterwards, when loading, what a file can lack is given and everything derived.
    void Serialize(CProjectArchive & archive);
    // 1 when the project stands in the file, whole and on the disk; until then the file holds what it held before.
    // 0 when it cannot be opened, which the user is told, and while another save runs. What goes wrong later throws
    // CFileException or CArchiveException, and further saves answer 0.
    int saveToFile(CString const & fileName);
    // The same for a state to come back to, which is written often and soon replaced: in less time, into more bytes.
    int saveState(CString const & fileName);
    // 1 when the project was read. 0 when it cannot be opened, when reading failed, which leaves the project partly
    // replaced, and while another load runs. In place of the first two `throwOnError` throws the integer 0.
    int readFromFile(CString const & fileName, bool throwOnError);
    // What the root of the project's XML document holds; docs/xml-document.md tells its elements.
    void xmlSerialize(CProjectXMLArchive & archive) override;
    // Writes the document, gzip-compressed on request. When the file cannot be opened the user is told; what goes
    // wrong later throws CFileException. No parser accepts the root's name, so that reading a document that was
    // written leaves the project as it was. Derives the critical path anew.
    void xmlSerialize(bool write, CString const & fileName, bool compressed);

    // States to come back to; see CProjectUndoRedoList.
    CProjectStateIndex const & getCurrentStateIndex() const { return projectData.stateIndex; }
    void setCurrentStateIndex(CProjectStateIndex const & index) { projectData.stateIndex = index; }
    CString const & getCurrentStateName() const { return currentStateName; }
    // Before an action of that name: keeps the present state, or without full history a recovery file.
    void pushState(CString const & name);
    // Goes back to what was kept for the present state.
    void pullState(bool saveRecovery);
    bool canUndo() const;
    bool canRedo() const;
    // Remove states too far from the present one: within the maximum number all stay.
    void clearUndoStack() { undoRedoList.clearUndoStack(); }
    void clearRedoStack() { undoRedoList.clearRedoStack(); }
    void clearRedoAndUndoStack();
    // Names of neighbouring states are not kept: always empty, and the array stays as it is.
    CString const & getUndoStateName() const;
    CString const & getRedoStateName() const;
    void getStateNames(CStringArray &, int &) const {}

    // The file from which a project that was open during a crash can be read.
    static CString const & recoveryFileName();
    static bool recoveryFileExists();
    static void removeRecoveryFile();
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
    CTask const * getTask(CAssignedResourceID const & id) const;
    CTask const * getTask(CAssignedRiskID const & id) const;
    CTask const * getTask(CTaskReportID const & id) const;
    // Among the tasks' own costs.
    CTask const * getTask(CCostID const & id) const;
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

    // The own calendar of the resource that is assigned; null for a material, which has none.
    CCalendar const * getResourceCalendarFromAssignedResourceID(CAssignedResourceID const & id) const;

    // Companies and their resources. A resource is found at any depth; where its kind is not known, equipment is
    // tried before people, places and materials.
    int getNumberOfCompanies() const { return projectData.companies.GetSize(); }
    CCompanyArray const & getAllCompanies() const { return projectData.companies; }
    CCompany const * getCompany(int index) const;
    CCompany const * getCompany(CCompanyID const & id) const;
    CResourceBase const * getResource(CResourceID const & id) const;
    CResourceType getResourceType(CResourceID const & id) const;
    CEquipmentResource const * getEquipmentResource(CResourceID const & id) const;
    CHumanResource const * getHumanResource(CResourceID const & id) const;
    CLocationResource const * getLocationResource(CResourceID const & id) const;
    CMaterialResource const * getMaterialResource(CResourceID const & id) const;
    // Also hand back the company under which the resource stands; null when there is none.
    CEquipmentResource const * getEquipmentResource(CResourceID const & id, CCompany const *& company) const;
    CHumanResource const * getHumanResource(CResourceID const & id, CCompany const *& company) const;
    CLocationResource const * getLocationResource(CResourceID const & id, CCompany const *& company) const;
    CMaterialResource const * getMaterialResource(CResourceID const & id, CCompany const *& company) const;
    // The resource above; null for one directly under its company.
    CEquipmentResource const * getEquipmentParent(CResourceID const & id) const;
    CHumanResource const * getHumanParent(CResourceID const & id) const;
    CLocationResource const * getLocationParent(CResourceID const & id) const;
    CMaterialResource const * getMaterialParent(CResourceID const & id) const;
    CCompany const * getParentCompany(CResourceID const & id) const;
    CCompany const * getParentCompany(CEquipmentResource const & resource) const;
    CCompany const * getParentCompany(CHumanResource const & resource) const;
    CCompany const * getParentCompany(CLocationResource const & resource) const;
    CCompany const * getParentCompany(CMaterialResource const & resource) const;
    // The resource whose own costs hold that cost.
    CResourceBase const * getResourceFromCost(CCostID const & id) const;
    // Copies of the leaves of all companies.
    CEquipmentResourceArray getAllEquipmentResources() const;
    CHumanResourceArray getAllHumanResources() const;
    CLocationResourceArray getAllLocationResources() const;
    CMaterialResourceArray getAllMaterialResources() const;
    // Replaces the array by copies of what the task is assigned directly under a company, and of no sub-resource.
    void getEquipmentResources(CTask const & task, CEquipmentResourceArray & resources) const;
    void getHumanResources(CTask const & task, CHumanResourceArray & resources) const;
    void getLocationResources(CTask const & task, CLocationResourceArray & resources) const;
    void getMaterialResources(CTask const & task, CMaterialResourceArray & resources) const;
    // Adds copies of all tasks with an assignment of exactly this resource; whether there were any.
    bool getTasksAssignedTo(CResourceID const & id, CTaskArray & tasks) const;
    bool hasTasksAssignedTo(CResourceID const & id) const;
    // Whether a task is assigned this resource or one below it.
    bool isAssignedToTasks(CResourceID const & id) const;
    bool hasResources(CCompanyID const & id) const;
    bool hasResourcesThatAreAssignedToTasks(CCompanyID const & id) const;
    // Adds the assignments whose identifier occurs more than once in the plan, children before their parent; whether
    // there were any.
    bool findDuplicateIDs(CAssignedResourceArray & duplicates) const;
    // What bears that identifier among the resources; null when nothing does. Holds until the project changes.
    orvane::CResourceIndex::Holders const * findResources(CResourceID const & id) const
    {
        return resourceIndex.find(projectData.companies, id);
    }

    // When the first root task starts, and when the last ends with room for all its risk. Blank tasks and times that
    // are not valid do not count; without any other the answer is not valid.
    CProjectTime getProjectStart() const;
    CProjectTime getProjectEnd() const;
    // Copies of the leaf tasks that start after the moment on which the Gantt view is focussed, that have then begun
    // and not ended (at the very start or end included), that ended before. A time that is not valid counts as its
    // number.
    CTaskArray getTasksScheduledAfterFocussedTime() const;
    CTaskArray getTasksInProgressDuringFocussedTime() const;
    CTaskArray getTasksCompletedBeforeFocussedTime() const;

    // Money of the whole plan; see CTask::getTreeCosts and its kin.
    double getTotalCosts(CCostTotalType const & totalType) const;
    double getTotalEquipmentResourceCosts(CCostTotalType const & totalType) const;
    double getTotalHumanResourceCosts(CCostTotalType const & totalType) const;
    double getTotalLocationResourceCosts(CCostTotalType const & totalType) const;
    double getTotalMaterialResourceCosts(CCostTotalType const & totalType) const;
    double getTotalMitigatedRiskCosts() const;
    double getTotalUnmitigatedRiskCosts() const;

    // The site in three dimensions.
    CScene const & getScene() const { return projectData.scene; }
    // At any depth, at once; null for an unknown entity.
    CEntity * getEntity(CEntityID const & id) const { return projectData.scene.getEntity(CHandle(id.getGUID())); }

    // Filters; the selected one, null when none is, decides which tasks the views show.
    int getNumberOfFilters() const { return projectData.filters.GetSize(); }
    CFilterArray const & getAllFilters() const { return projectData.filters; }
    CFilter const * getFilter(int index) const;
    CFilter const * getFilter(CFilterID const & id) const;
    CFilter const * getSelectedFilter() const { return getFilter(getSelectedFilterID()); }

    // The register of risks.
    int getNumberOfRisks() const { return projectData.risks.GetSize(); }
    CRiskArray const & getAllRisks() const { return projectData.risks; }
    // A copy of a top-level risk; one with a NULL identifier outside the register.
    CRisk getRisk(int index) const;
    // Copies the risk of that identifier, at any depth; without one the copy gets a NULL identifier.
    bool getRisk(CRiskID const & id, CRisk & risk) const;
    // The top-level risk of the tree in which a sub-risk stands; null for a top-level risk.
    CRisk const * getRiskParent(CRiskID const & id) const;
    CAssignedRisk const * getAssignedRisk(CAssignedRiskID const & id) const;
    bool getAssignedRisk(CAssignedRisk & assigned, CAssignedRiskID const & id) const;
    // Whether a task is assigned the risk or one below it, or reports on it.
    bool isAssignedToTasks(CRiskID const & id) const;
    // Replaces the array by copies of the leaf tasks that buffer risk and depend on the task.
    void getDownstreamRiskBuffers(CTaskID const & id, CTaskArray & buffers) const;
    bool doesAssignedRiskHaveCost(CAssignedRiskID const & id) const;
    bool doesTaskReportHaveCost(CTaskReportID const & id) const;
    // Whether the costs given differ from those that the task holds under that identifier.
    bool areAssignedRiskCostsDifferent(CTask const & task, CAssignedRisk const & assigned) const;
    bool areTaskReportCostsDifferent(CTask const & task, CTaskReport const & report) const;

    // The longest chain of linked tasks; see CCriticalPathCachedData.
    CCriticalPathCachedData const & getCriticalPath() const { return criticalPathCache; }
    bool isInCriticalPath(CTaskID const & id) const { return criticalPathCache.isInCriticalPath(id); }
    bool isInCriticalPath(CLinkID const & id) const { return criticalPathCache.isInCriticalPath(id); }
    bool hasChildrenInCriticalPath(CTask const & task) const { return criticalPathCache.hasChildrenInCriticalPath(task); }
    bool getCriticalPathChanged() const { return criticalPathCache.getChanged(); }
    void updateCriticalPath() { criticalPathCache.updateFromProject(this); }

    // State of the views; see CPresentationData.
    CPresentationData const & getPresentationData() const { return presentationData; }
    CTaskID const & getPrimarySelectedTaskID() const { return presentationData.getPrimarySelectedTaskID(); }
    CTaskIDArray const & getSelectedTaskID() const { return presentationData.getSelectedTaskID(); }
    CCompanyID const & getSelectedCompanyID() const { return presentationData.getSelectedCompanyID(); }
    CResourceID const & getSelectedResourceID() const { return presentationData.getSelectedResourceID(); }
    CRiskID const & getSelectedRiskID() const { return presentationData.getSelectedRiskID(); }
    CFilterID const & getSelectedFilterID() const { return presentationData.getSelectedFilterID(); }
    CCostID const & getSelectedAssignedRiskCostID() const { return presentationData.getSelectedAssignedRiskCostID(); }
    CCostID const & getSelectedTaskCostID() const { return presentationData.getSelectedTaskCostID(); }
    CCostID const & getSelectedResourceCostID() const { return presentationData.getSelectedResourceCostID(); }
    CEntityID const & getPrimarySelectedSceneEntityID() const { return presentationData.getPrimarySelectedSceneEntityID(); }
    CEntityIDArray const & getSelectedSceneEntityID() const { return presentationData.getSelectedSceneEntityID(); }
    CTaskReportID const & getSelectedTaskReportID() const { return presentationData.getSelectedTaskReportID(); }
    CCostID const & getSelectedTaskReportCostID() const { return presentationData.getSelectedTaskReportCostID(); }
    CUserID const & getSelectedUserID() const { return presentationData.getSelectedUserID(); }
    CRoleID const & getSelectedRoleID() const { return presentationData.getSelectedRoleID(); }
    CAssignedRiskID getSelectedAssignedRiskID() const { return presentationData.getSelectedAssignedRiskID(); }
    CAssignedResourceID getSelectedAssignedResourceID() const { return presentationData.getSelectedAssignedResourceID(); }
    CResourceUtilisationPresentation const & getResourceUtilisationPresentation() const;
    CEVAGraphPresentation const & getEVAGraphPresentation() const { return presentationData.getEVAGraphPresentation(); }
    CNavigatorPresentation const & getNavigatorPresentation() const { return presentationData.getNavigatorPresentation(); }
    C3DPresentation const & get3DPresentation() const { return presentationData.get3DPresentation(); }
    CGanttPresentation const & getGanttPresentation() const { return presentationData.getGanttPresentation(); }
    bool getResourcePresentation(CResourceID const & id, CResourcePresentation & presentation) const;
    bool getRiskPresentation(CRiskID const & id, CRiskPresentation & presentation) const;
    bool getTaskPresentation(CTaskID const & id, CTaskPresentation & presentation) const;
    // Whether the task or one below it has children and shows them, or hides them; both false for an unknown task.
    bool isTaskOrDescendantsExpanded(CTaskID const & id) const { return hasRowShowingChildren(getTask(id), true); }
    bool isTaskOrDescendantsCollapsed(CTaskID const & id) const { return hasRowShowingChildren(getTask(id), false); }
    // Whether an ancestor is shown collapsed.
    bool isTaskHidden(CTaskID const & id) const;

    // Whether the verdict of the selected filter may have changed for every task: another filter was selected, or its
    // content changed.
    bool isFilterVerdictDue() const;
    // What buffered risks place in buffer tasks; for the derived pass.
    orvane::CStoredRisk & storedRisk() { return projectData.storedRisk; }

    static int getCreated() { return s_created; }
    static int getDeleted() { return s_deleted; }

private:
    friend class CLocalRulesChecker;
    // Tests put the guard of saves back.
    friend struct orvane::SaveGuard;

    void initialize();
    bool undo(int count);
    bool redo(int count);
    int save(CString const & fileName, orvane::Packing packing);
    void saveRecoveryFile();
    bool isTaskCategoryUsed(CTaskArray const & tasks, CTaskCategoryID const & id) const;
    bool showsChildren(CTask const & task) const;
    bool hasRowShowingChildren(CTask const * task, bool show) const;
    void validateResourcePresentations();
    void validateRiskPresentations();
    void validateTaskPresentations();

    template <class Resource>
    orvane::CResourceIndex::Place placeOf(CResourceID const & id) const;
    CRisk const * findRisk(CRiskID const & id) const;

    CProjectData projectData;
    mutable orvane::CResourceIndex resourceIndex;
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
    CProjectUndoRedoList undoRedoList{this};

    // While a save or a load runs, no other begins.
    static inline bool saving = false;
    static inline bool loading = false;
    static inline int s_created = 0;
    static inline int s_deleted = 0;
};
