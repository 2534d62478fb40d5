#pragma once

#include <unordered_map>

#include "platform/guid.h"
#include "values/identifiers.h"

class CTask;
class CTaskArray;

namespace orvane
{

// Every task of one forest by its identifier. The forest's arrays keep it right as tasks come and go, so
// that a lookup costs the same in any tree, at any moment of an action. It is built by the first lookup.
class CTaskIndex
{
public:
    explicit CTaskIndex(CTaskArray & roots) : roots(roots) {}
    CTaskIndex(CTaskIndex const &) = delete;
    CTaskIndex & operator=(CTaskIndex const &) = delete;

    // The task of that identifier; null when the forest holds none. Where several tasks carry the
    // identifier, the one that stands first in a level-first search.
    CTask * find(CTaskID const & id);
    // Whether no two tasks have the same identifier, and none a NULL one.
    bool hasUniqueIDs();

    // The forest's arrays say what happens to them.
    void subtreeEnters(CTask & task);
    void subtreeLeaves(CTask & task);
    void rename(CTask & task, _GUID const & from, _GUID const & to);

private:
    // One holder is known by its address; more than one are searched for in the tree.
    struct Holders
    {
        CTask * only = nullptr;
        int count = 0;
    };

    void build();
    void enter(CTask & task, _GUID const & id);
    void leave(CTask & task, _GUID const & id);

    CTaskArray & roots;
    std::unordered_map<_GUID, Holders> tasks;
    // Identifiers that stand twice or more.
    int doubled = 0;
    bool built = false;
};

}  // namespace orvane
