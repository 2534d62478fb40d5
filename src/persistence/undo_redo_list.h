#pragma once

#include <optional>

#include "platform/object.h"
#include "platform/string.h"

class CProject;

// One kept state, as a class that is known at run time: states are files, and none stands in memory.
class CUndoRedoState : public CDynamic<CUndoRedoState>
{
};

// The states of a project that were kept, each a whole project file in the history directory that bears the
// number of the state: "0000000042.prj". Nothing of them stands in memory, so that they outlive the program.
//
// Without full history, or without a name and a directory, the list is inert: it holds no state and keeps none.
class CProjectUndoRedoList : public CDynamic<CProjectUndoRedoList>
{
public:
    // The project is not owned, and outlives the list.
    explicit CProjectUndoRedoList(CProject * project) : project(project) {}
    CProjectUndoRedoList(CProjectUndoRedoList const &) = delete;
    CProjectUndoRedoList & operator=(CProjectUndoRedoList const &) = delete;

    // The history directory must exist; the library creates none.
    void setProjectNameDirectoryAndHistoryDirectory(CString const & name, CString const & folder, CString const & historyFolder);
    void setFullHistory(bool keep) { fullHistory = keep; }

    bool hasState(int index) const;
    // Keeps the project as it is now under its state index, in place of what was kept under it.
    bool storeState() const;
    // Puts the kept state in the place of the project's content, which takes over the index with it. False when
    // there is none, or when reading it failed, possibly midway.
    bool loadState(int index) const;

    // Remove states more than the maximum number below, or above, the project's index. They stop at the first
    // number under which nothing is kept.
    void clearUndoStack() const;
    void clearRedoStack() const;

private:
    struct Range
    {
        int lowest;
        int highest;
    };

    bool isInert() const { return !fullHistory || directory.IsEmpty() || projectName.IsEmpty(); }
    CString stateFileName(int index) const;
    // The lowest and the highest number in the history directory; none without any state.
    std::optional<Range> findRange() const;
    bool removeState(int index) const;

    CString directory;
    CString projectName;
    CString historyDirectory;
    bool fullHistory = false;
    CProject * project;
};
