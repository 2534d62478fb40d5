#include "app/dump/listing.h"

#include <fmt/format.h>

namespace orvane::app
{
namespace
{

// Null and false are nothing to look at.
std::string peopleText(Json const & value)
{
    switch (value.type())
    {
        case Json::value_t::null: return {};
        case Json::value_t::boolean: return value.get<bool>() ? "yes" : "";
        case Json::value_t::string: return value.get<std::string>();
        case Json::value_t::number_float: return fmt::format("{:.2f}", value.get<double>());
        default: return value.dump();
    }
}

}  // namespace

Json Listing::json() const
{
    Json list = Json::array();
    for (auto const & row : rows)
    {
        Json & object = list.emplace_back(Json::object());
        for (std::size_t each = 0; each < columns.size(); ++each)
            if (!columns[each].name.empty()) object[columns[each].name] = row[each].value;
    }
    return list;
}

void Listing::print(std::ostream & out) const
{
    std::vector<Table::Column> shown;
    for (Column const & column : columns)
        if (!column.title.empty()) shown.push_back({column.title, column.align});
    Table table(shown);
    for (auto const & row : rows)
    {
        std::vector<std::string> texts;
        for (std::size_t each = 0; each < columns.size(); ++each)
            if (!columns[each].title.empty())
                texts.push_back(row[each].hasText ? row[each].text : peopleText(row[each].value));
        table.add(std::move(texts));
    }
    table.print(out);
}

}  // namespace orvane::app
