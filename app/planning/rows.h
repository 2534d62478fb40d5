#pragma once

#include <string>
#include <unordered_map>
#include <vector>

#include "model/project.h"

namespace orvane::app
{

// The rows of a plan from top to bottom, blank ones among them, as they stand while the project does not change.
class Rows
{
public:
    static constexpr int none = -1;

    struct Row
    {
        CTask const * task;
        int parent;
        // The row behind everything below the task.
        int end;
        // Takes part in the schedule: neither blank nor below a blank row.
        bool counts;
    };

    // Refusals name the file of the project.
    explicit Rows(CProject const & project, std::string const & file = "the plan");
    [[noreturn]] void refuse(std::string const & what) const;

    int size() const { return static_cast<int>(rows.size()); }
    Row const & operator[](int row) const { return rows[static_cast<std::size_t>(row)]; }
    // Where the project finds the identifier; none for a task that is gone.
    int find(CTaskID const & id) const;
    int of(CTask const & task) const;
    // The number that people count by, from 1.
    int numberOf(CTask const & task) const { return of(task) + 1; }

    // The task that a user names: "#12" for the row of that number, 32 hexadecimal digits, or its exact name. Refuses
    // what names no task, or several.
    CTask const & choose(std::string const & text) const;

private:
    void add(CTaskArray const & tasks, int parent, bool counts);
    CTask const & chooseByNumber(std::string const & text) const;
    CTask const & chooseByName(std::string const & name) const;

    CProject const & project;
    std::string file;
    std::vector<Row> rows;
    std::unordered_map<CTask const *, int> places;
};

// Names of tasks are text of anyone's; this is how a message has them.
std::string quoted(CTask const & task);

}  // namespace orvane::app
