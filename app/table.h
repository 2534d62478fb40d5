#pragma once

#include <iosfwd>
#include <string>
#include <vector>

namespace orvane::app
{

// A table for people: columns as wide as their widest cell, headings in bold on a terminal.
class Table
{
public:
    enum class Align { left, right };
    struct Column
    {
        std::string title;
        Align align = Align::left;
        // The widest that cells may be; longer ones end in "…".
        int most = 60;
    };

    explicit Table(std::vector<Column> columns) : columns(std::move(columns)) {}

    // Cells are texts as they stand in the project; missing ones are empty.
    void add(std::vector<std::string> cells);
    std::size_t size() const { return rows.size(); }
    void print(std::ostream & out) const;

private:
    std::vector<Column> columns;
    std::vector<std::vector<std::string>> rows;
};

// Whether the standard output shows colours: it is a terminal, and NO_COLOR is not set.
bool outputHasColors();

}  // namespace orvane::app
