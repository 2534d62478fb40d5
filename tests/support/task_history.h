#pragma once

#include <functional>
#include <random>
#include <string>
#include <vector>

#include "model/task_array.h"

namespace orvane
{

// Random edits of a forest of tasks, below the rules: rows come, go, move, are copied over each other with
// their subtrees, are renamed, renumbered (also to an identifier that another has), rescheduled, begun. The
// same seed gives the same edits.
class TaskHistory
{
public:
    TaskHistory(unsigned seed, CTaskArray & roots, CProject * project) : random(seed), roots(roots), project(project) {}

    // One edit; what it was.
    std::string step();

    // Every task, each before those below it, and every array, the roots first.
    std::vector<CTask *> tasks() const;
    std::vector<CTaskArray *> arrays() const;
    // Identifiers that tasks have or once had.
    std::vector<CTaskID> const & metIDs() const { return met; }
    int below(int limit) { return std::uniform_int_distribution<int>(0, limit - 1)(random); }

private:
    struct Edit;
    CTask * anyTask();
    CTaskArray & anyArray();
    CProjectTime anyTime();

    std::mt19937 random;
    CTaskArray & roots;
    CProject * project;
    std::vector<CTaskID> met;
};

// Calls visit(task, parent) for each task of the forest, before those below it.
void forEachTask(CTaskArray const & tasks, std::function<void(CTask const &, CTask const *)> const & visit,
                 CTask const * parent = nullptr);

}  // namespace orvane
