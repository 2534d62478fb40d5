#include "app/planning/rows.h"

#include <algorithm>
#include <charconv>

#include <fmt/format.h>

#include "app/command.h"
#include "app/text_values.h"

namespace orvane::app
{

Rows::Rows(CProject const & project, std::string const & file) : project(project), file(file)
{
    add(project.getAllTasks(), none, true);
}

void Rows::refuse(std::string const & what) const
{
    throw Refusal(fmt::format("{}: {}", file, what));
}

void Rows::add(CTaskArray const & tasks, int parent, bool counts)
{
    for (CTask const & task : tasks)
    {
        int const row = size();
        bool const taskCounts = counts && task.isValid();
        rows.push_back({&task, parent, none, taskCounts});
        places.emplace(&task, row);
        if (task.getSubTasks()) add(*task.getSubTasks(), row, taskCounts);
        rows[static_cast<std::size_t>(row)].end = size();
    }
}

int Rows::find(CTaskID const & id) const
{
    CTask const * const task = project.getTask(id);
    return task ? of(*task) : none;
}

int Rows::of(CTask const & task) const
{
    auto const found = places.find(&task);
    return found == places.end() ? none : found->second;
}

CTask const & Rows::choose(std::string const & text) const
{
    if (text.size() > 1 && text[0] == '#' && text.find_first_not_of("0123456789", 1) == text.npos)
        return chooseByNumber(text);
    if (CTaskID id; readID(text, id))
        if (int const row = find(id); row != none) return *rows[static_cast<std::size_t>(row)].task;
    return chooseByName(text);
}

CTask const & Rows::chooseByNumber(std::string const & text) const
{
    int number = 0;
    std::from_chars(text.data() + 1, text.data() + text.size(), number);
    if (number < 1 || number > size()) refuse(fmt::format("there is no row {}; the plan has {}", text, size()));
    return *rows[static_cast<std::size_t>(number) - 1].task;
}

CTask const & Rows::chooseByName(std::string const & name) const
{
    constexpr std::size_t mostShown = 8;
    std::vector<int> found;
    for (int row = 0; row < size(); ++row)
        if ((*this)[row].task->getName().view() == name) found.push_back(row);
    if (found.empty()) refuse(fmt::format("no task has the name \"{}\"", name));
    if (found.size() == 1) return *(*this)[found[0]].task;
    std::string candidates;
    for (std::size_t each = 0; each < std::min(found.size(), mostShown); ++each)
    {
        int const parent = (*this)[found[each]].parent;
        candidates += fmt::format("{}#{}", each ? ", " : "", found[each] + 1);
        if (parent != none) candidates += fmt::format(" in {}", quoted(*(*this)[parent].task));
    }
    if (found.size() > mostShown) candidates += fmt::format(" and {} more", found.size() - mostShown);
    refuse(fmt::format("{} tasks have the name \"{}\": {}", found.size(), name, candidates));
}

std::string quoted(CTask const & task)
{
    return fmt::format("\"{}\"", task.getName().view());
}

}  // namespace orvane::app
