#pragma once

namespace orvane
{

// What stands directly below a task, a risk or a resource; null for a leaf.
template <class Item>
auto const * itemsBelow(Item const & item)
{
    if constexpr (requires { item.getSubTasks(); }) return item.getSubTasks();
    else if constexpr (requires { item.getSubRisks(); }) return item.getSubRisks();
    else return item.getSubResources();
}

// Calls `visit` with each item of the array and everything below it, parents first.
template <class Items, class Visit>
void visitItems(Items const & items, Visit const & visit)
{
    for (auto const & item : items)
    {
        visit(item);
        if (auto const * const below = itemsBelow(item)) visitItems(*below, visit);
    }
}

}  // namespace orvane
