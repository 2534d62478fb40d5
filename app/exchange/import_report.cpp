#include "app/exchange/import_report.h"

#include <sstream>

#include <fmt/format.h>
#include <nlohmann/json.hpp>

#include "app/printable.h"
#include "app/table.h"

namespace orvane::app
{
namespace
{

std::string counted(std::size_t count, char const * one, char const * more)
{
    return fmt::format("{} {}", count, count == 1 ? one : more);
}

std::string elapsedText(Minute minutes)
{
    Minute const size = minutes < 0 ? -minutes : minutes;
    std::string const clock = fmt::format("{:02}:{:02}", size % 1440 / 60, size % 60);
    return fmt::format("{}{}{}", minutes < 0 ? '-' : '+', size >= 1440 ? fmt::format("{}d ", size / 1440) : "", clock);
}

std::string lossesText(std::vector<PlanLoss> const & losses)
{
    if (losses.empty()) return "Everything in the file came along.\n";
    std::string text = "What the project cannot hold:\n";
    for (PlanLoss const & loss : losses)
        text += loss.task.empty() ? fmt::format("  {}\n", printable(loss.what))
                                  : fmt::format("  {}: {}\n", printable(loss.task), printable(loss.what));
    return text;
}

std::string differencesText(std::vector<DateDifference> const & differences)
{
    if (differences.empty()) return "All dates are as recorded.\n";
    Table table({{"Task", Table::Align::left, 40},
                 {"Date"},
                 {"Recorded"},
                 {"Computed"},
                 {"By", Table::Align::right},
                 {"Reason", Table::Align::left, 100}});
    for (DateDifference const & each : differences)
        table.add({each.task, each.field, each.recorded, each.computed, elapsedText(each.minutes), each.reason});
    std::ostringstream text;
    text << "Dates that differ:\n";
    table.print(text);
    return text.str();
}

}  // namespace

nlohmann::ordered_json toJson(ImportReport const & report)
{
    using Json = nlohmann::ordered_json;
    Json losses = Json::array(), differences = Json::array();
    for (PlanLoss const & loss : report.losses) losses.push_back({{"task", loss.task}, {"what", loss.what}});
    for (DateDifference const & each : report.differences)
        differences.push_back({{"task", each.task},
                               {"field", each.field},
                               {"recorded", each.recorded},
                               {"computed", each.computed},
                               {"minutes", each.minutes},
                               {"reason", each.reason}});
    return {{"tasks", report.tasks},
            {"links", report.links},
            {"datesAgreeing", report.datesAgreeing},
            {"losses", losses},
            {"differences", differences}};
}

std::string toText(ImportReport const & report)
{
    return fmt::format("{}, {}; {} as recorded, {}\n\n{}\n{}", counted(report.tasks, "task", "tasks"),
                       counted(report.links, "link", "links"), counted(report.datesAgreeing, "date", "dates"),
                       counted(report.differences.size(), "differs", "differ"), lossesText(report.losses),
                       differencesText(report.differences));
}

}  // namespace orvane::app
