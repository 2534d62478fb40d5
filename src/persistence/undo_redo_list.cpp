#include "persistence/undo_redo_list.h"

#include <algorithm>
#include <cerrno>
#include <climits>
#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <string>
#include <vector>

#include <unistd.h>

#include "config/project_config.h"
#include "model/project.h"
#include "platform/path.h"
#include "platform/saturate.h"

namespace
{

// How far states may lie from the present one.
std::int64_t keptStates()
{
    return std::max(CProjectConfig::getMaximumNumberUndoRedoStates(), 0);
}

std::vector<std::string> sortedStateNames(std::filesystem::path const & folder)
{
    std::vector<std::string> names;
    std::error_code error;
    for (std::filesystem::directory_iterator each(folder, error), end; !error && each != end; each.increment(error))
        if (std::string name = each->path().filename().string(); name.ends_with(".prj")) names.push_back(std::move(name));
    std::ranges::sort(names);
    return names;
}

// The number at the beginning of a name; the one given when there is none.
int leadingNumber(std::string const & name, int otherwise)
{
    char * end = nullptr;
    long long const number = std::strtoll(name.c_str(), &end, 10);
    return end == name.c_str() ? otherwise : orvane::saturate<int>(number);
}

}  // namespace

void CProjectUndoRedoList::setProjectNameDirectoryAndHistoryDirectory(CString const & name, CString const & folder,
                                                                      CString const & historyFolder)
{
    projectName = name;
    directory = folder;
    historyDirectory = historyFolder;
}

CString CProjectUndoRedoList::stateFileName(int index) const
{
    CString number;
    number.Format("%10d", index);
    number.Replace(' ', '0');
    return historyDirectory + "\\" + number + ".prj";
}

bool CProjectUndoRedoList::hasState(int index) const
{
    return !isInert() && access(orvane::nativePath(stateFileName(index)), R_OK) == 0;
}

bool CProjectUndoRedoList::storeState() const
{
    return !isInert() && project->saveState(stateFileName(project->getCurrentStateIndex().getValue())) != 0;
}

bool CProjectUndoRedoList::loadState(int index) const
{
    return hasState(index) && project->readFromFile(stateFileName(index), false) != 0;
}

bool CProjectUndoRedoList::removeState(int index) const
{
    return unlink(orvane::nativePath(stateFileName(index))) == 0;
}

std::optional<CProjectUndoRedoList::Range> CProjectUndoRedoList::findRange() const
{
    if (!fullHistory || historyDirectory.IsEmpty()) return std::nullopt;
    std::vector<std::string> const names = sortedStateNames(orvane::nativePath(historyDirectory).view());
    if (names.empty()) return std::nullopt;
    Range range{1'000'000'000, -1'000'000'000};
    // A name without a number counts with the number of the one before.
    int number = 0;
    for (std::string const & name : names)
    {
        number = leadingNumber(name, number);
        range = {std::min(range.lowest, number), std::max(range.highest, number)};
    }
    return range;
}

void CProjectUndoRedoList::clearUndoStack() const
{
    std::optional<Range> const range = findRange();
    std::int64_t const limit = project->getCurrentStateIndex().getValue() - keptStates();
    if (!range) return;
    for (std::int64_t each = range->lowest; each < limit; ++each)
        if (!removeState(static_cast<int>(each))) return;
}

void CProjectUndoRedoList::clearRedoStack() const
{
    std::optional<Range> const range = findRange();
    std::int64_t const limit = project->getCurrentStateIndex().getValue() + keptStates();
    if (!range) return;
    for (std::int64_t each = range->highest; each > limit; --each)
        if (!removeState(static_cast<int>(each))) return;
}
