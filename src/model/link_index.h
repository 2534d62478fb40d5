#pragma once

#include <unordered_map>
#include <vector>

#include "platform/guid.h"
#include "values/identifiers.h"

class CTask;
class CTaskArray;

namespace orvane
{

// The links of one forest by their own identifiers and by their upstream tasks. Links are stored on their
// downstream tasks only: without it, finding what hangs off a task means reading every task. It is built by
// the first lookup; from then on the index of tasks tells it which tasks come and go with their links.
class CLinkIndex
{
public:
    explicit CLinkIndex(CTaskArray const & roots) : roots(roots) {}
    CLinkIndex(CLinkIndex const &) = delete;
    CLinkIndex & operator=(CLinkIndex const &) = delete;

    // The task that holds the link, the first in the order of the tree; null when there is none.
    CTask const * findHolder(CLinkID const & id);
    // The tasks that hold a link from that task, in the order of the tree.
    std::vector<CTask const *> findDownstream(CTaskID const & upstream);
    bool hasDownstream(CTaskID const & upstream);

    bool isBuilt() const { return built; }
    // All links of one task.
    void enter(CTask const & task);
    void leave(CTask const & task);

private:
    // One holder is known by its address; of more than one, now or before, the tree knows the first.
    struct Holders
    {
        CTask const * only = nullptr;
        int count = 0;
    };

    void build();
    void build(CTaskArray const & tasks);
    std::vector<int> placeOf(CTask const & task) const;

    CTaskArray const & roots;
    std::unordered_map<_GUID, Holders> holders;
    // By upstream task: who holds links from it, each once, by address.
    std::unordered_map<_GUID, std::vector<CTask const *>> downstream;
    bool built = false;
};

}  // namespace orvane
