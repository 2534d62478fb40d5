#include "rules/local_rules_checker.h"

#include "platform/dialog.h"
#include "platform/message.h"
#include "rules/string_table.h"

// ---- the life of one action -----------------------------------------------------------------------

CLocalRulesChecker::CLocalRulesChecker(CProject * project, CRulesCheckerContext const & context)
    : project(project), context(context)
{
    ++s_live;
    if (!project) return;
    presentationData = &project->presentationData;
    projectData = &project->projectData;
    users = &projectData->users;
    tasks = &projectData->tasks;
    projectData->resetChanged();
    presentationData->resetChanged();
    project->criticalPathCache.resetChanged();
}

// The flags are reset only after the dialogs have read them.
CLocalRulesChecker::~CLocalRulesChecker()
{
    waitCursor.reset();
    if (project)
    {
        projectData->setChanged();
        presentationData->setChanged();
        if (criticalPathDirty) project->updateCriticalPath();
        updateEverybody();
        projectData->resetChanged();
        presentationData->resetChanged();
        project->criticalPathCache.resetChanged();
    }
    --s_live;
}

void CLocalRulesChecker::updateEverybody()
{
    if (!isTransactionServer()) CModelessDialog::updateAllDialogs(false);
}

void CLocalRulesChecker::warnUser(int stringNumber)
{
    message = orvane::loadString(stringNumber);
    if (isOriginatingClient()) warning(message);
}

CTask * CLocalRulesChecker::getTask(CTaskID const & id) const
{
    return project && !id.isNULL() ? tasks->findInForest(id) : nullptr;
}

// ---- the project as a whole -----------------------------------------------------------------------

bool CLocalRulesChecker::clear()
{
    if (!project) return false;
    projectData->clear();
    presentationData->clear();
    projectData->setProject(project);
    projectData->flagAsChanged();
    criticalPathDirty = true;
    return true;
}

bool CLocalRulesChecker::setState(int)
{
    return true;
}

// ---- state of the views ---------------------------------------------------------------------------

bool CLocalRulesChecker::setPrimarySelectedTaskID(CTaskID const & id)
{
    return project && presentationData->setPrimarySelectedTaskID(id);
}

bool CLocalRulesChecker::setSelectedTaskID(CTaskIDArray const & ids)
{
    return project && presentationData->setSelectedTaskID(ids);
}

bool CLocalRulesChecker::setSelectedLinksTasks(CLinkID const & linkID)
{
    CTask const * const holder = project ? project->getTask(linkID) : nullptr;
    if (!holder) return false;
    CTaskIDArray joined;
    if (!project->isTaskHidden(holder->getID())) joined.Add(holder->getID());
    int const link = holder->getUpstreamLinks().findByID(linkID);
    if (link < 0) return false;
    CTaskID const & upstreamID = holder->getUpstreamLinks().GetAt(link).getUpstreamTaskID();
    if (!project->isTaskHidden(upstreamID)) joined.Add(upstreamID);
    presentationData->setSelectedTaskID(joined);
    return true;
}

bool CLocalRulesChecker::addTaskPresentation(CTaskID const & id)
{
    return project && presentationData->addTaskPresentation(id);
}

bool CLocalRulesChecker::setTaskPresentation(CTaskID const & id, CTaskPresentation const & presentation)
{
    return project && presentationData->setTaskPresentation(id, presentation);
}

bool CLocalRulesChecker::removeTaskPresentation(CTaskID const & id)
{
    return project && presentationData->removeTaskPresentation(id);
}

bool CLocalRulesChecker::removeAllTaskPresentations(CTask const & task)
{
    bool all = true;
    if (task.getSubTasks())
        for (CTask const & child : *task.getSubTasks()) all = removeAllTaskPresentations(child) && all;
    return removeTaskPresentation(task.getID()) && all;
}

void CLocalRulesChecker::deselectTasksThatAreExcludedByFilter()
{
    // Nothing can select a filter yet, and without a selected filter every task is included.
}

void CLocalRulesChecker::deselectSubTasks(CTask const & task)
{
    if (!task.getSubTasks()) return;
    CTaskIDArray selection(presentationData->getSelectedTaskID());
    int const before = selection.GetSize();
    for (CTask const & child : *task.getSubTasks())
    {
        if (presentationData->getPrimarySelectedTaskID() == child.getID()) presentationData->clearPrimarySelectedTask();
        int const selected = selection.findByID(child.getID());
        if (selected >= 0) selection.RemoveAt(selected);
    }
    if (selection.GetSize() < before) presentationData->setSelectedTaskID(selection);
    for (CTask const & child : *task.getSubTasks()) deselectSubTasks(child);
}
