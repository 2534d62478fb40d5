#pragma once

#include <optional>
#include <unordered_set>
#include <utility>
#include <vector>

#include "model/project.h"
#include "platform/host.h"
#include "rules/rules_checker.h"
#include "values/enumerations.h"

// One user action on a project: a short-lived object on the stack. Its constructor marks the start, its
// operations change the model, and its destructor derives all that follows from the changes and tells the
// open dialogs. Derived figures are those of the last derived pass, so within an action they may be older
// than the changes.
//
// The context says on whose behalf the rules run. The client on which the user acted sees warnings, and
// the selection moves to what was created; a transaction server has neither selection nor dialogs and does
// not drive the critical path after removals; a client that replays another's action keeps its dialogs
// current. The changes to the model are the same in all three.
//
// It must not outlive its project. Without a project every operation is refused. A second checker for the
// same project may live within the first, but its end clears the flags that the first will read.
class CLocalRulesChecker : public CDynamic<CLocalRulesChecker>, public IRulesChecker
{
public:
    CLocalRulesChecker(CProject * project, CRulesCheckerContext const & context);
    CLocalRulesChecker(CLocalRulesChecker const &) = delete;
    CLocalRulesChecker & operator=(CLocalRulesChecker const &) = delete;
    ~CLocalRulesChecker() override;

    // How many live now, in all projects.
    static int getNumberOfLocalRulesCheckers() { return s_live; }
    // The text of the last warning composed, whether or not it was shown.
    CString const & getMessage() const { return message; }

    // The project as a whole.
    bool clear() override;
    // Go back or forth by that many kept states, as CProject::pushState keeps them; true also when there was none.
    bool undo(int count) override;
    bool redo(int count) override;
    // These two are places for a protocol between machines, succeed, and do nothing: restoring a state is the
    // application's.
    bool setState(int state) override;
    bool rollback() { return true; }

    // New tasks at the end of the list, after so many blank rows. Without a current user the result is
    // false, and the task stays without a supply chain.
    bool addTaskWithName(CString const & name, int blankCount) override;
    bool addTaskWithDuration(CProjectDuration const & duration, int blankCount) override;
    bool addTaskWithFinish(CProjectTime const & time, int blankCount, bool isFinish) override;

    // One task's fields. A blank task becomes real when it is given a name, comments, a status or a time.
    bool changeTaskName(CTaskID const & taskID, CString const & name) override;
    bool changeTaskStatus(CTaskID const & taskID, CTaskStatus const & status) override;
    bool changeTaskDuration(CTaskID const & taskID, CProjectDuration const & duration, bool keepStart) override;
    bool changeTaskStart(CTaskID const & taskID, CProjectTime const & time) override;
    bool changeTaskFinish(CTaskID const & taskID, CProjectTime const & time) override;
    bool changeTaskRiskType(CTaskID const & taskID, CRiskType const & type) override;
    bool changeTaskDominantCalendar(CTaskID const & taskID, CCalendarID const & calendarID) override;
    bool changeTaskRiskBuffer(CTaskID const & taskID, bool isBuffer) override;
    bool changeTaskComments(CTaskID const & taskID, CString const & comments) override;
    bool changeTaskConstraint(CTaskID const & taskID, CTaskConstraint const & constraint) override;
    bool changeTaskCategory(CTaskID const & taskID, CString const & name) override;
    bool changeTaskType(CTaskID const & taskID, CTaskType const & type) override;
    bool changeTaskTemplateFlag(CTaskID const & taskID, bool isTemplate) override;
    // Progress: the times of a start or a finish; changeTaskStatus follows.
    bool startTask(CTaskID const & taskID, CProjectTime const & time) override;
    bool finishTask(CTaskID const & taskID, CProjectTime const & time) override;
    // Rows are blanked, or go with everything below them.
    bool clearTasks(CTaskIDArray const & taskIDs) override;
    bool removeTasks(CTaskIDArray const & taskIDs) override;

    // The shape of the tree. A new task beside the target or as its last child; on every client it alone is selected.
    bool insertBlankTask(CTaskID const & targetID, CInsertType const & type) override;
    // Among the siblings, to another position that one of them has.
    bool repositionTask(CTaskID const & taskID, int newIndex) override;
    // Under another parent, or to the roots when there is no such task, in the order of their rows from the index on,
    // each as it leaves the tree the ones before it made. What stands there already, or would come to stand below
    // itself, is passed over. A root may be put up to 65,536 rows past the last one, and blank rows fill the gap; a
    // task that is put past the last child is gone. False when a task cannot take children, and when the moves closed
    // a circle of links, of which the user is told; the moves stay done.
    bool repositionTasks(CTaskIDArray const & taskIDs, CTaskID const & newParentID, int index) override;
    // A copy of a task with all below it, supplied by the current user's company: over another task, whose identifier
    // stays, or at the end of the list after so many blank rows. What is copied gets identifiers of its own, and links
    // as the mode says. The first is refused when one task stands below the other, and when it closed a circle.
    bool pasteIntoTask(CTaskID const & targetID, CTaskID const & sourceID, CTaskPasteMode const & mode) override;
    bool pasteIntoNewTask(CTaskID const & sourceID, int blankCount, CTaskPasteMode const & mode) override;
    // Appends copies under the identifiers that they have.
    bool importTasks(CTaskArray const & imported) override;

    // What was planned is kept to compare with, or let go. Unknown tasks and those that cannot change are passed over.
    bool setTasksBaseline(CTaskIDArray const & taskIDs) override;
    bool clearTasksBaseline(CTaskIDArray const & taskIDs) override;

    // Resources. What joins the project starts with a copy of its calendar that is not in force. A resource that is
    // moved to a place that does not exist is gone: the application restores the state before.
    bool addEquipmentResourceToCompany(CEquipmentResource const & resource, CCompanyID const & companyID) override;
    bool addHumanResourceToCompany(CHumanResource const & resource, CCompanyID const & companyID) override;
    bool addLocationResourceToCompany(CLocationResource const & resource, CCompanyID const & companyID) override;
    bool addMaterialResourceToCompany(CMaterialResource const & resource, CCompanyID const & companyID) override;
    // Work assigned to a parent that was a leaf passes to the new leaves.
    bool addEquipmentResourceToParent(CEquipmentResource const & resource, CResourceID const & parentID) override;
    bool addHumanResourceToParent(CHumanResource const & resource, CResourceID const & parentID) override;
    bool addLocationResourceToParent(CLocationResource const & resource, CResourceID const & parentID) override;
    bool addMaterialResourceToParent(CMaterialResource const & resource, CResourceID const & parentID) override;
    bool makeSubResource(CResourceID const & childID, CResourceID const & parentID) override;
    bool changeResourceSupplier(CResourceID const & resourceID, CCompanyID const & companyID) override;
    // With everything below it; refused while any of it is assigned.
    bool removeResource(CResourceID const & resourceID) override;
    bool setResourceName(CResourceID const & resourceID, CString const & name) override;
    bool setResourceAutoAccept(CResourceID const & resourceID, bool accept) override;
    bool setResourceOrderRequired(CResourceID const & resourceID, bool required) override;
    bool setResourceUsedOn(CResourceID const & resourceID, CProjectTime const & time) override;
    bool setResourceLeadTime(CResourceID const & resourceID, CProjectDuration const & leadTime) override;
    bool setResourceUseRatePerDay(CResourceID const & resourceID, int rate) override;
    bool setResourceTotalUnitsAvailable(CResourceID const & resourceID, int units) override;
    bool setResourceUnitType(CResourceID const & resourceID, CResourceUnitType const & type) override;
    bool addResourceCost(CResourceID const & resourceID) override;
    bool changeResourceCost(CCost const & cost) override;
    bool removeResourceCost(CCostID const & costID) override;
    bool addResourceSupplierReference(CResourceID const & resourceID, CString const & reference, int & index) override;
    bool setResourceSupplierReference(CResourceID const & resourceID, CString const & reference, int index) override;
    bool removeResourceSupplierReference(CResourceID const & resourceID, int index) override;

    // Assignments. The first ends on the leaves of a resource, the second assigns a parent as such.
    bool assignResourceToTask(CTaskID const & taskID, CResourceID const & resourceID) override;
    bool assignResourceToTasks(CTaskIDArray const & taskIDs, CResourceID const & resourceID) override;
    bool changeAssignedResource(CAssignedResource const & assigned) override;
    bool unassignResource(CAssignedResourceID const & assignedID) override;
    // Replaces the calendar of the same identifier, of the project, a company or a resource.
    bool setCalendar(CCalendar const & calendar) override;

    // The register of risks, the risks that tasks take on, and what is reported on started tasks.
    bool addRisk(CRisk const & risk, CRiskID const & parentID) override;
    bool renameRisk(CRiskID const & riskID, CString const & name) override;
    bool setRiskValueMode(CRiskID const & riskID, CRiskValueMode const & mode) override;
    bool removeRisk(CRiskID const & riskID) override;
    bool makeSubRisk(CRiskID const & childID, CRiskID const & parentID) override;
    bool assignRiskToTask(CTaskIDArray const & taskIDs, CRiskID const & riskID) override;
    bool changeAssignedRisk(CAssignedRisk const & assigned) override;
    bool unassignRisk(CAssignedRiskID const & assignedID) override;
    bool addTaskReport(CTaskID const & taskID, CRiskID const & riskID, CProjectDate const & date, CTaskReportType const & type,
                       CProjectDuration const & duration) override;
    bool changeTaskReport(CTaskReport const & report) override;
    bool removeTaskReport(CTaskReportID const & reportID) override;
    // Costs of tasks.
    bool addTaskCost(CTaskID const & taskID) override;
    bool changeTaskCost(CCost const & cost) override;
    bool removeTaskCost(CCostID const & costID) override;

    // Companies, users, roles. A company's resources change by their own operations alone, and it goes only while
    // no task has a part for it. The setters of its texts and its type answer true for a change alone.
    bool addCompany(CCompany const & company) override;
    bool changeCompany(CCompany const & company) override;
    bool removeCompany(CCompanyID const & companyID) override;
    bool setCompanyName(CCompanyID const & companyID, CString const & name) override;
    bool setCompanyAddress(CCompanyID const & companyID, CString const & address) override;
    bool setCompanyTelephoneNumber(CCompanyID const & companyID, CString const & number) override;
    bool setCompanyFaxNumber(CCompanyID const & companyID, CString const & number) override;
    bool setCompanyEmailAddress(CCompanyID const & companyID, CString const & address) override;
    bool setCompanyType(CCompanyID const & companyID, CCompanyType const & type) override;
    bool setCompanyColor(CCompanyID const & companyID, unsigned long color) override;
    // Every company in the chain must be known.
    bool changeSupplyChain(CSupplyChain const & chain) override;
    // Rights are cut down to what they rest on, and may not exceed those of the current user. A user who is refused
    // for that has been added all the same.
    bool addRole(CRole const & role) override;
    bool changeRole(CRole const & role) override;
    bool removeRole(CRoleID const & roleID) override;
    bool addUser(CUser const & user) override;
    bool changeUser(CUser const & user) override;
    bool removeUser(CUserID const & userID) override;

    // Links. A link that is refused as doubled or circular stays in place: the application restores the
    // state before.
    bool addLink(CTaskID const & upstreamID, CTaskID const & downstreamID, CLinkType const & type) override;
    bool changeLink(CLink const & link) override;
    bool removeLink(CLinkID const & linkID) override;

    // State of the views. Selecting with all that follows from it, as in CPresentationData.
    bool setPrimarySelectedTaskID(CTaskID const & id);
    bool setSelectedTaskID(CTaskIDArray const & ids) { return project && presentationData->setSelectedTaskID(ids); }
    bool setSelectedTaskReportID(CTaskReportID const & id);
    bool setSelectedCompanyID(CCompanyID const & id) { return project && presentationData->setSelectedCompanyID(id); }
    bool setSelectedResourceID(CResourceID const & id);
    bool setSelectedRiskID(CRiskID const & id) { return project && presentationData->setSelectedRiskID(id); }
    bool setPrimarySelectedSceneEntityID(CEntityID const & id);
    bool setSelectedSceneEntityID(CEntityIDArray const & ids);
    bool setSelectedUserID(CUserID const & id) { return project && presentationData->setSelectedUserID(id); }
    bool setSelectedRoleID(CRoleID const & id) { return project && presentationData->setSelectedRoleID(id); }
    // Selects the two tasks that the link joins, as far as they are not hidden; false for an unknown link.
    bool setSelectedLinksTasks(CLinkID const & linkID);
    // These take what they are given, and count as a change also when nothing differs.
    bool setSelectedTaskReportCostID(CCostID const & id);
    bool setSelectedFilterID(CFilterID const & id);
    bool setSelectedAssignedRiskCostID(CCostID const & id);
    bool setSelectedTaskCostID(CCostID const & id);
    bool setSelectedResourceCostID(CCostID const & id);
    bool setResourceUtilisationPresentation(CResourceUtilisationPresentation const & presentation);
    bool setNavigatorPresentation(CNavigatorPresentation const & presentation);
    bool set3DPresentation(C3DPresentation const & presentation);
    bool setGanttPresentation(CGanttPresentation const & presentation);
    bool setEVAGraphPresentation(CEVAGraphPresentation const & presentation);
    // How one item is shown, as in CPresentationData.
    bool addResourcePresentation(CResourceID const & id);
    bool setResourcePresentation(CResourceID const & id, CResourcePresentation const & presentation);
    bool removeResourcePresentation(CResourceID const & id);
    bool addRiskPresentation(CRiskID const & id) { return project && presentationData->addRiskPresentation(id); }
    bool removeRiskPresentation(CRiskID const & id) { return project && presentationData->removeRiskPresentation(id); }
    bool addTaskPresentation(CTaskID const & id) { return project && presentationData->addTaskPresentation(id); }
    bool setTaskPresentation(CTaskID const & id, CTaskPresentation const & presentation);
    bool removeTaskPresentation(CTaskID const & id) { return project && presentationData->removeTaskPresentation(id); }
    // The risk, and if recursive all below it; then it must exist.
    bool setRiskPresentation(CRiskID const & id, CRiskPresentation const & presentation, bool recursive);
    // All risks of the array and below; none, and true, for null.
    bool setRiskPresentation(CRiskArray const * risks, CRiskPresentation const & presentation);
    // False when there is neither such an item nor an entry for it.
    bool expandResource(CResourceID const & id) { return showExpanded(id, true); }
    bool collapseResource(CResourceID const & id) { return showExpanded(id, false); }
    bool expandRisk(CRiskID const & id) { return showExpanded(id, true); }
    bool collapseRisk(CRiskID const & id) { return showExpanded(id, false); }
    // The entries of the item and of all below it; false when one has a NULL identifier.
    bool removeAllResourcePresentations(CEquipmentResource const & resource);
    bool removeAllResourcePresentations(CHumanResource const & resource);
    bool removeAllResourcePresentations(CLocationResource const & resource);
    bool removeAllResourcePresentations(CMaterialResource const & resource);
    bool removeAllResourcePresentations(CCompany const & company);
    bool removeAllRiskPresentations(CRisk const & risk);
    bool removeAllTaskPresentations(CTask const & task);

    // The scene. It takes over what is added; the entity that it refuses, by which adding stops, and all after it stay
    // the caller's. Removing an unknown entity succeeds, and what is removed still stands for its resources.
    bool clearScene() override;
    bool addEntitiesToScene(CObArray const & entities) override;
    bool removeEntityFromScene(CEntityID const & entityID) override;
    bool renameEntityInScene(CEntityID const & entityID, CString const & name) override;
    // With all below it, each the same.
    bool changeEntityTransform(CEntityID const & entityID, CTransform const & transform) override;
    // Of a group, the solids at any depth.
    bool changeEntityMaterial(CEntityID const & entityID, CMaterial const & material) override;
    // In metres; false for an entity of another kind. A box is an extrusion.
    bool changeEntityBoxDimensions(CEntityID const & entityID, CPOINT2DArray const & outline, double height) override;
    bool changeEntityExtrusionDimensions(CEntityID const & entityID, CPOINT2DArray const & outline,
                                         double height) override;
    bool changeEntityCylinderDimensions(CEntityID const & entityID, double radius, double height) override;
    bool changeEntitySphereDimensions(CEntityID const & entityID, double radius) override;
    // Which entities stand for a resource. Those assigned twice count twice; unassigning takes every occurrence, and
    // from one resource it leaves those below as they are.
    bool assignEntityToResource(CEntityID const & entityID, CResourceID const & resourceID) override;
    bool unassignEntityFromResource(CEntityID const & entityID, CResourceID const & resourceID) override;
    bool unassignAllEntitiesFromResource(CResourceID const & resourceID) override;
    bool unassignEntityFromAllResources(CEntityID const & entityID) override;

    // Names of tasks; see isStringMatch and replaceSubString. The search goes from the primary selected task through
    // the rows and around, and selects what it finds; that task itself is not found. Blank tasks hide all below them.
    bool findNext(CString const & text, bool forward, bool matchCase, bool wholeWord) override;
    // In the primary selected task alone; where that does not match, finds the next one instead.
    bool replaceCurrent(CString const & text, CString const & replacement, bool forward, bool matchCase,
                        bool wholeWord) override;
    // True when any name matched; one that would break the limits stays.
    bool replaceAll(CString const & text, CString const & replacement, bool matchCase, bool wholeWord) override;

    // Filters. Adding is refused for an identifier that is there, changing and removing for one that is not. Removing
    // asks where the user acted.
    bool addFilter(CFilter const & filter) override;
    bool changeFilter(CFilter const & filter) override;
    bool removeFilter(CFilterID const & filterID) override;
    // Takes from the selection what the selected filter by itself hides.
    void deselectTasksThatAreExcludedByFilter();

private:
    bool isOriginatingClient() const { return context == CRulesCheckerContext::OriginatingClient; }
    bool isTransactionServer() const { return context == CRulesCheckerContext::TransactionServer; }
    void updateEverybody();
    // Keeps the library's text of that number as the message, and shows it where the user acted.
    void warnUser(int stringNumber);

    // The same of a text composed here.
    void warnUser(CString const & text);

    CTask * getTask(CTaskID const & id) const;

    // Parts of the state of the views.
    template <class Field>
    bool assignView(Field CPresentationData::*field, Field const & value);
    bool showExpanded(CResourceID const & id, bool expanded);
    bool showExpanded(CRiskID const & id, bool expanded);
    bool setEntriesOf(CRisk const & risk, CRiskPresentation const & presentation);
    template <class Resource>
    bool removeEntriesOf(Resource const & resource);
    // The task that holds what bears the identifier: an assignment, a report, a cost.
    template <class ID>
    CTask * getHolder(ID const & id) const
    {
        CTask const * const holder = project ? project->getTask(id) : nullptr;
        return holder ? getTask(holder->getID()) : nullptr;
    }
    CRisk * getRisk(CRiskID const & id) const;
    CResourceBase * getResourceBase(CResourceID const & id) const;
    CEquipmentResource * getEquipmentResource(CResourceID const & id) const;
    CHumanResource * getHumanResource(CResourceID const & id) const;
    CLocationResource * getLocationResource(CResourceID const & id) const;
    CMaterialResource * getMaterialResource(CResourceID const & id) const;
    template <class Resource>
    Resource * getWritable(CResourceID const & id) const;
    // What `visit` answers for the resource, of the first kind that has it; false without one.
    template <class Visit>
    bool withResource(CResourceID const & id, Visit const & visit) const;
    CResourceBase * getResourceOfCost(CCostID const & costID) const;
    // Every task of the plan, children before their parent.
    template <class Visit>
    void forEachTask(Visit const & visit)
    {
        forEachTask(*tasks, visit);
    }
    template <class Visit>
    void forEachTask(CTaskArray & array, Visit const & visit);

    void insertBlankTasksAtEnd(int count);
    void makeTaskValid(CTask & task);
    // What the three operations that add a task share: `fill` gives the new task its content before it has
    // a supply chain, `place` its times afterwards.
    template <class Fill, class Place>
    bool addTask(int blankCount, Fill const & fill, Place const & place);
    bool isEditable(CTask const & task) const;
    bool blankTask(CTaskID const & id);

    // A batch of removals, which settles each parent once.
    class Removal;
    bool desummarizeIfChildrenAreInvalid(CTaskID const & taskID);
    void deselectSubTasks(CTask const & task);

    // Rows that come in, move and are copied.
    bool insertTaskAbove(CTask const & task, CTask const & target);
    bool insertTaskBelow(CTask const & task, CTask const & target);
    bool insertTaskBeside(CTask const & task, CTask const & target, int offset);
    bool insertTaskAsChild(CTask const & task, CTask & target);
    void addPresentationsForTasks(CTaskArray const & array);
    class Relocation;
    // Those that are there, each once, parents before children.
    static void putTaskIdsInOrderOfTasks(CTaskIDArray const & ids, CTaskArray const & array, CTaskIDArray & ordered);
    class Pasting;
    bool setCurrentUserAsSupplierOfTaskTree(CTask & task);
    static void removeUpstreamLinksOfSubtree(CTask & task);
    bool presentPasted(CTaskID const & id);

    // Resources of any kind.
    template <class Resource>
    Resource joining(Resource const & resource);
    template <class Array, class Resource>
    bool append(Array & array, Resource const & resource);
    template <class Resource>
    bool addToCompany(Resource const & resource, CCompanyID const & companyID);
    template <class Resource>
    bool addToParent(Resource const & resource, CResourceID const & parentID);
    bool detachResource(CResourceID const & resourceID);
    bool takeOut(CResourceID const & resourceID);
    template <class Value, class Argument>
    bool setResourceField(CResourceID const & resourceID, void (CResourceBase::*setter)(Value), Argument const & value);

    // Assignments.
    void assign(CTask & task, CResourceID const & resourceID, int useRatePerDay);
    int getUseRatePerDay(CResourceID const & resourceID) const;
    bool rulesCalendarOf(CTask const & task, CResourceID const & resourceID) const;
    static void collectAssignments(CTask const & task, CResourceID const & resourceID,
                                   std::vector<std::pair<CTaskID, CAssignedResourceID>> & assignments);
    bool replaceResourceAssignments(CResourceID const & from, CResourceIDArray const & to);
    // Puts the leaves of each resource in its place.
    bool replaceResourceAssignments(CAssignedResourceArray & assignments);
    void replaceResourceAssignments(CAssignedResourceArray & assignments, int index, CResourceIDArray const & leaves);

    // What follows without a change of its own: its fields are assigned to themselves, so that the task shows as changed.
    void flagAssignedResourceAsChanged(CResourceID const & resourceID);
    void flagAssignedRiskAsChanged(CRiskID const & riskID);
    using CalendarIDs = std::unordered_set<_GUID>;
    void collectCalendars(CCompany const & company, CalendarIDs & calendarIDs) const;
    void flagTasksCalendarAsChanged(CalendarIDs const & calendarIDs);
    void flagCompanyCalendarUsersAsChanged(CCompany const & company);
    void flagProjectCalendarUsersAsChanged();
    bool setCompanyOrResourceCalendar(CCalendar const & calendar);

    // Risks, reports and costs of tasks.
    template <class Change>
    bool changeRisk(Change const & change);
    void transferBufferedRiskToNewBuffers(CTask & task, CTaskIDArray const & from, CTaskIDArray const & to);
    CTask * getReportedTask(CTaskReportID const & reportID) const;

    // Filters: what is about to go, with all below it, is no longer chosen.
    void removeFromFilters(CCompanyID const & companyID);
    void removeFromFilters(CResourceID const & resourceID);
    void removeFromFilters(CRiskID const & riskID);
    template <class ID>
    void forgetInFilters(ID const & id);
    template <class Items>
    void forgetTreesInFilters(Items const & items);

    CEntity * getEntity(CEntityID const & id) const;
    template <class Resource>
    bool unassignEntityFromAllResources(Resource const & resource, CEntityID const & entityID);

    bool doesCurrentPrimaryTaskMatch(CString const & text, bool matchCase, bool wholeWord) const;
    // `passedCurrent` says whether the walk has come past the primary selected task, behind which the search begins.
    bool searchForAndSelectTask(CTaskArray const & array, CString const & text, bool forward, bool matchCase,
                                bool wholeWord, bool & passedCurrent);
    bool replaceAll(CTaskArray const & array, CString const & text, CString const & replacement, bool matchCase,
                    bool wholeWord);

    // Companies, users, roles.
    template <class Array, class ID>
    static auto writableElement(Array & array, ID const & id) -> decltype(&array.elementForPass(0));
    CCompany * getCompany(CCompanyID const & id) const;
    CSupplyChain * getSupplyChain(CSupplyChainID const & id) const;
    CUser * getUser(CUserID const & id) const;
    CRole * getRole(CRoleID const & id) const;
    static bool checkCompanyName(CCompany const & company);
    static bool checkCompanyType(CCompany const & company);
    static bool checkCompanyAddress(CCompany const & company);
    static bool checkCompanyTelephoneNumber(CCompany const & company);
    static bool checkCompanyFaxNumber(CCompany const & company);
    static bool checkCompanyEmailAddress(CCompany const & company);
    static bool checkCompanyCalendar(CCompany const & company);
    // Whether no two of the tops have the same identifier.
    static bool checkCompanyEquipmentResources(CCompany const & company);
    static bool checkCompanyHumanResources(CCompany const & company);
    static bool checkCompanyLocationResources(CCompany const & company);
    static bool checkCompanyMaterialResources(CCompany const & company);
    static bool checkUserLogin(CUser const & user);
    static bool checkUserPassword(CUser const & user);
    static bool checkUserName(CUser const & user);
    static bool checkUserTelephoneNumber(CUser const & user);
    static bool checkUserMobileTelephoneNumber(CUser const & user);
    static bool checkUserEmailAddress(CUser const & user);
    // Whether no task has the company for its supplier or a customer; tells the user of the first that has.
    bool makeCompanyNotBeSupplier(CCompanyID const & companyID);
    bool makeCompanyNotBeSupplier(CTaskArray const & array, CCompanyID const & companyID);
    // Whether there is a current user who has these rights; tells one who has not.
    bool mayGrant(CPermissions const & permissions);

    bool removeLink(CTask & task, CLinkID const & linkID);
    bool removeLinks(CTaskID const & taskID);
    bool removeLinksFromTaskOrSubtasks(CTaskID const & taskID);

    CProject * project;
    CPresentationData * presentationData = nullptr;
    CProjectData * projectData = nullptr;
    CUserArray * users = nullptr;
    CTaskArray * tasks = nullptr;
    CRulesCheckerContext context;
    CString message;
    bool criticalPathDirty = false;
    std::optional<CWaitCursor> waitCursor{std::in_place};

    static inline int s_live = 0;
};

template <class Resource>
Resource * CLocalRulesChecker::getWritable(CResourceID const & id) const
{
    auto const * const holders = project ? project->findResources(id) : nullptr;
    if (!holders) return nullptr;
    return static_cast<Resource *>(holders->places[orvane::CResourceIndex::kindOf<Resource>()].resource);
}

template <class Array, class ID>
auto CLocalRulesChecker::writableElement(Array & array, ID const & id) -> decltype(&array.elementForPass(0))
{
    int const position = id.isNULL() ? -1 : array.findByID(id);
    return position < 0 ? nullptr : &array.elementForPass(position);
}

template <class Visit>
bool CLocalRulesChecker::withResource(CResourceID const & id, Visit const & visit) const
{
    if (CEquipmentResource * const equipment = getEquipmentResource(id)) return visit(*equipment);
    if (CHumanResource * const human = getHumanResource(id)) return visit(*human);
    if (CLocationResource * const location = getLocationResource(id)) return visit(*location);
    if (CMaterialResource * const material = getMaterialResource(id)) return visit(*material);
    return false;
}

template <class Visit>
void CLocalRulesChecker::forEachTask(CTaskArray & array, Visit const & visit)
{
    for (int each = 0; each < array.GetSize(); ++each)
    {
        CTask & task = array.elementForPass(each);
        if (CTaskArray * const children = task.getWritableSubTasks()) forEachTask(*children, visit);
        visit(task);
    }
}
