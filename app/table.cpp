#include "app/table.h"

#include <algorithm>
#include <cstdlib>
#include <ostream>
#include <utility>

#include <unistd.h>

#include "app/printable.h"

namespace orvane::app
{

void Table::add(std::vector<std::string> cells)
{
    cells.resize(columns.size());
    for (std::size_t each = 0; each < cells.size(); ++each)
        cells[each] = fitted(printable(cells[each]), columns[each].most);
    rows.push_back(std::move(cells));
}

void Table::print(std::ostream & out) const
{
    std::vector<int> widths;
    std::vector<std::string> titles;
    for (std::size_t each = 0; each < columns.size(); ++each)
    {
        titles.push_back(columns[each].title);
        int widest = app::columns(titles.back());
        for (auto const & row : rows) widest = std::max(widest, app::columns(row[each]));
        widths.push_back(widest);
    }
    auto const line = [&](std::vector<std::string> const & cells)
    {
        std::string text;
        std::size_t filled = 0;
        for (std::size_t each = 0; each < cells.size(); ++each)
        {
            if (each > 0) text += "  ";
            std::string const blanks(static_cast<std::size_t>(widths[each] - app::columns(cells[each])), ' ');
            text += columns[each].align == Align::right ? blanks + cells[each] : cells[each] + blanks;
            if (!cells[each].empty()) filled = text.find_last_not_of(' ') + 1;
        }
        // No blanks at the end of a line.
        return text.substr(0, filled);
    };
    bool const bold = outputHasColors();
    out << (bold ? "\033[1m" : "") << line(titles) << (bold ? "\033[0m" : "") << '\n';
    for (auto const & row : rows) out << line(row) << '\n';
}

bool outputHasColors()
{
    char const * const none = std::getenv("NO_COLOR");
    return isatty(STDOUT_FILENO) && !(none && *none);
}

}  // namespace orvane::app
