#pragma once

#include <random>
#include <vector>

#include "model/project.h"
#include "tests/support/plan_builder.h"

// What links mean, link by link and road by road: slow, and so plain that it can judge the library.
namespace orvane::test
{

// Plans may hold circles, as files can; roads then differ by what was measured before. A judge that remembers
// asks each task once; one that does not follows every road.
enum class Memory { none, ofTasks };

struct PlainChain
{
    CTask const * end = nullptr;
    CProjectDuration length{0};
    std::vector<CLink const *> links;
};

PlainChain plainCriticalPath(CProject const & project, Memory memory);
bool plainIsInCircularChain(CProject const & project, CTask const & task);
bool plainIsUpstream(CProject const & project, CTask const & task, CTaskID const & sought, Memory memory);
std::vector<CLink const *> plainDownstreamLinks(CProject const & project, CTaskID const & upstream);
// The first task, depth first, that holds the link.
CTask const * plainHolder(CProject const & project, CLinkID const & link);

// Up to `count` tasks under summaries and blank rows, planned, begun, finished and without length, with few
// different durations so that chains tie.
std::vector<TaskDraft> randomTasks(std::mt19937 & random, int count);
// Gives every task up to three links of all types, from any task or, without circles, from those before it in
// some order; now and then from a task that does not exist.
void linkAtRandom(Plan & plan, std::mt19937 & random, bool withCircles);
CLinkArray randomLinks(std::mt19937 & random, std::vector<CTask const *> const & upstream);

std::vector<CTask const *> everyTask(CProject const & project);

}  // namespace orvane::test
