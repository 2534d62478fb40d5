// Finding and replacing text in the names of tasks. The primary selected task is where the search stands.

#include "rules/local_rules_checker.h"

#include "config/text_search.h"
#include "platform/string_table.h"
#include "rules/text_checks.h"

namespace
{

// Calls `visit` for each task in the order of the rows, or in the reverse of it, until it answers true; whether it
// did. A blank task hides all below it.
template <class Visit>
bool visitRows(CTaskArray const & array, bool forward, Visit const & visit)
{
    int const last = array.GetUpperBound();
    for (int step = 0; step <= last; ++step)
    {
        CTask const & task = array.GetAt(forward ? step : last - step);
        if (!task.isValid()) continue;
        auto const below = [&] { return task.isSummaryTask() && visitRows(*task.getSubTasks(), forward, visit); };
        if ((!forward && below()) || visit(task) || (forward && below())) return true;
    }
    return false;
}

CString describeNotFound(CString const & text)
{
    return orvane::loadString(orvane::text::notFound) + "\"" + text + "\"";
}

}  // namespace

// ---- finding --------------------------------------------------------------------------------------

bool CLocalRulesChecker::doesCurrentPrimaryTaskMatch(CString const & text, bool matchCase, bool wholeWord) const
{
    CTask const * const task = getTask(presentationData->getPrimarySelectedTaskID());
    return task && isStringMatch(text, task->getName(), matchCase, wholeWord);
}

bool CLocalRulesChecker::searchForAndSelectTask(CTaskArray const & array, CString const & text, bool forward,
                                                bool matchCase, bool wholeWord, bool & passedCurrent)
{
    CTaskID const & current = presentationData->getPrimarySelectedTaskID();
    passedCurrent = passedCurrent || current.isNULL();
    CTask const * found = nullptr;
    auto const endsWalk = [&](CTask const & task)
    {
        // Met again, it says that the search has come full circle.
        if (task.getID() == current) return std::exchange(passedCurrent, true);
        if (passedCurrent && isStringMatch(text, task.getName(), matchCase, wholeWord)) found = &task;
        return found != nullptr;
    };
    visitRows(array, forward, endsWalk);
    if (!found) return false;
    CTaskIDArray alone;
    alone.Add(found->getID());
    presentationData->setSelectedTaskID(alone);
    presentationData->setPrimarySelectedTaskID(found->getID());
    return true;
}

bool CLocalRulesChecker::findNext(CString const & text, bool forward, bool matchCase, bool wholeWord)
{
    if (!project || text.IsEmpty()) return false;
    bool passedCurrent = false;
    // From the current task to the end, and from the other end up to it.
    for (int round = 0; round < 2; ++round)
        if (searchForAndSelectTask(*tasks, text, forward, matchCase, wholeWord, passedCurrent)) return true;
    if (!doesCurrentPrimaryTaskMatch(text, matchCase, wholeWord)) warnUser(describeNotFound(text));
    return false;
}

// ---- replacing ------------------------------------------------------------------------------------

bool CLocalRulesChecker::replaceCurrent(CString const & text, CString const & replacement, bool forward, bool matchCase,
                                        bool wholeWord)
{
    if (!project || text.IsEmpty()) return false;
    if (!doesCurrentPrimaryTaskMatch(text, matchCase, wholeWord)) return findNext(text, forward, matchCase, wholeWord);
    if (text == replacement) return true;
    // What matched is there.
    CTask const & task = *getTask(presentationData->getPrimarySelectedTaskID());
    CString const name = replaceSubString(task.getName(), text, replacement, matchCase, wholeWord);
    return !(name == task.getName()) && changeTaskName(task.getID(), name);
}

bool CLocalRulesChecker::replaceAll(CString const & text, CString const & replacement, bool matchCase, bool wholeWord)
{
    if (!project || text.IsEmpty()) return false;
    if (text == replacement) return true;
    // The arguments may be names.
    CString const sought(text);
    if (replaceAll(*tasks, sought, CString(replacement), matchCase, wholeWord)) return true;
    warnUser(describeNotFound(sought));
    return false;
}

// As changeTaskName for each, but for the filter: its verdict on a task changes with that task's own name alone, so
// that once with the old names and once with the new ones deselects all that asking after every change would.
bool CLocalRulesChecker::replaceAll(CTaskArray const & array, CString const & text, CString const & replacement,
                                    bool matchCase, bool wholeWord)
{
    bool matched = false;
    bool renamed = false;
    auto const rename = [&](CTask const & task)
    {
        if (!isStringMatch(text, task.getName(), matchCase, wholeWord)) return false;
        matched = true;
        CString const name = replaceSubString(task.getName(), text, replacement, matchCase, wholeWord);
        CTask * const written = getTask(task.getID());
        if (!written || written->getName() == name || !orvane::accepts(orvane::limit::taskName, name)) return false;
        written->setName(name);
        if (!std::exchange(renamed, true)) deselectTasksThatAreExcludedByFilter();
        return false;
    };
    visitRows(array, true, rename);
    if (renamed) deselectTasksThatAreExcludedByFilter();
    return matched;
}
