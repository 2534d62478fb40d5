#pragma once

#include <iosfwd>
#include <string>
#include <vector>

#include "app/dump/json_text.h"
#include "app/table.h"

#include <nlohmann/json.hpp>

namespace orvane::app
{

// Rows that are told in two ways: as a table for people, and as JSON, one object each, for programs.
class Listing
{
public:
    struct Column
    {
        // The name in JSON; empty for what only people see.
        std::string name;
        // The heading of the table; empty for what only programs see.
        std::string title;
        Table::Align align = Table::Align::left;
    };
    // What a row has in one column.
    struct Cell
    {
        Cell(Json value) : value(std::move(value)) {}
        Cell(Json value, std::string text) : value(std::move(value)), text(std::move(text)), hasText(true) {}

        Json value;
        // What people read, where it is another.
        std::string text;
        bool hasText = false;
    };

    explicit Listing(std::vector<Column> columns) : columns(std::move(columns)) {}

    void add(std::vector<Cell> cells) { rows.push_back(std::move(cells)); }
    bool isEmpty() const { return rows.empty(); }
    Json json() const;
    void print(std::ostream & out) const;

private:
    std::vector<Column> columns;
    std::vector<std::vector<Cell>> rows;
};

}  // namespace orvane::app
