#pragma once

#include <cstdint>
#include <unordered_map>

#include "model/link_index.h"
#include "platform/guid.h"
#include "values/identifiers.h"

class CTask;
class CTaskArray;

namespace orvane
{

// What a walk over a whole forest may have kept: numbers that change when the rows do (a task comes, goes,
// moves or takes another identifier), and when the links of any task do. No two forests ever share them.
struct CForestState
{
    std::uint64_t rows = 0;
    std::uint64_t links = 0;
};

// Every task of one forest by its identifier. The forest's arrays keep it right as tasks come and go, so
// that a lookup costs the same in any tree, at any moment of an action. It is built by the first lookup.
class CTaskIndex
{
public:
    explicit CTaskIndex(CTaskArray & roots);
    CTaskIndex(CTaskIndex const &) = delete;
    CTaskIndex & operator=(CTaskIndex const &) = delete;

    // The task of that identifier; null when the forest holds none. Where several tasks carry the
    // identifier, the one that stands first in a level-first search.
    CTask * find(CTaskID const & id);
    // Whether no two tasks have the same identifier, and none a NULL one.
    bool hasUniqueIDs();
    CLinkIndex & getLinks() { return links; }
    CForestState const & getState() const { return state; }

    // The forest's arrays say what happens to them.
    void subtreeEnters(CTask & task);
    void subtreeLeaves(CTask & task);
    void rename(CTask & task, _GUID const & from, _GUID const & to);
    void tasksMove() { state.rows = freshStamp(); }
    // Before and after a change of a task's links.
    void linksLeave(CTask const & task);
    void linksEnter(CTask const & task);

private:
    // One holder is known by its address; more than one are searched for in the tree.
    struct Holders
    {
        CTask * only = nullptr;
        int count = 0;
    };

    static std::uint64_t freshStamp();
    bool isBuilt() const { return built || links.isBuilt(); }
    void build();
    void enter(CTask & task, _GUID const & id);
    void leave(CTask & task, _GUID const & id);

    CTaskArray & roots;
    CLinkIndex links;
    CForestState state;
    std::unordered_map<_GUID, Holders> tasks;
    // Identifiers that stand twice or more.
    int doubled = 0;
    bool built = false;
};

}  // namespace orvane
