#pragma once

#include <optional>

#include "model/project.h"
#include "platform/host.h"
#include "rules/unbuilt_rules.h"
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
class CLocalRulesChecker : public CDynamic<CLocalRulesChecker>, public orvane::CUnbuiltRules
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

    // The project as a whole. Restoring a state is the application's; these two are places for a protocol
    // between machines, succeed, and do nothing.
    bool clear() override;
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

    // Links. A link that is refused as doubled or circular stays in place: the application restores the
    // state before.
    bool addLink(CTaskID const & upstreamID, CTaskID const & downstreamID, CLinkType const & type) override;
    bool changeLink(CLink const & link) override;
    bool removeLink(CLinkID const & linkID) override;

    // State of the views.
    bool setPrimarySelectedTaskID(CTaskID const & id);
    bool setSelectedTaskID(CTaskIDArray const & ids);
    // Selects the two tasks that the link joins, as far as they are not hidden; false for an unknown link.
    bool setSelectedLinksTasks(CLinkID const & linkID);
    bool addTaskPresentation(CTaskID const & id);
    bool setTaskPresentation(CTaskID const & id, CTaskPresentation const & presentation);
    bool removeTaskPresentation(CTaskID const & id);
    // The entries of the task and all below it, children first.
    bool removeAllTaskPresentations(CTask const & task);
    // Takes from the selection what the selected filter hides.
    void deselectTasksThatAreExcludedByFilter();

private:
    bool isOriginatingClient() const { return context == CRulesCheckerContext::OriginatingClient; }
    bool isTransactionServer() const { return context == CRulesCheckerContext::TransactionServer; }
    void updateEverybody();
    // Keeps the library's text of that number as the message, and shows it where the user acted.
    void warnUser(int stringNumber);

    CTask * getTask(CTaskID const & id) const;

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
