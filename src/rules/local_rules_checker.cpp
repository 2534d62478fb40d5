#include "rules/local_rules_checker.h"

#include "platform/dialog.h"
#include "platform/message.h"
#include "platform/string_table.h"

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
    warnUser(orvane::loadString(stringNumber));
}

void CLocalRulesChecker::warnUser(CString const & text)
{
    message = text;
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

bool CLocalRulesChecker::undo(int count)
{
    if (!project) return false;
    project->undo(count);
    criticalPathDirty = true;
    return true;
}

bool CLocalRulesChecker::redo(int count)
{
    if (!project) return false;
    project->redo(count);
    criticalPathDirty = true;
    return true;
}

bool CLocalRulesChecker::setState(int)
{
    return true;
}
