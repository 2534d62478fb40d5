#include "app/commands/commands.h"

#include <iostream>
#include <map>
#include <string_view>

#include <CLI/CLI.hpp>
#include <fmt/ostream.h>
#include <nlohmann/json.hpp>

#include "app/command.h"
#include "app/dump/json_text.h"
#include "app/exchange/csv_reader.h"
#include "app/exchange/import_plan.h"
#include "app/exchange/mspdi_reader.h"
#include "app/failure.h"
#include "app/progress.h"
#include "app/session.h"
#include "app/text_values.h"

namespace orvane::app
{
namespace
{

enum class InputFormat
{
    byContent,
    mspdi,
    csv
};

struct ImportCommandOptions
{
    std::string input, project, start;
    InputFormat format = InputFormat::byContent;
    DateOrder dateOrder = DateOrder::found;
    bool keepsPercent = false;
    bool replaces = false;
    bool asJson = false;
};

// A document begins with an angle bracket, and a table does not.
InputFormat inputFormatOf(std::string const & text, std::string const & file)
{
    std::string_view rest = text;
    if (rest.starts_with("\x1F\x8B")) throw Refusal(file + ": is compressed, and no schedule in XML or CSV");
    if (rest.starts_with("\xEF\xBB\xBF")) rest.remove_prefix(3);
    std::size_t const first = rest.find_first_not_of(" \t\r\n");
    if (first == rest.npos) throw Refusal(file + ": the file is empty");
    bool const isWide = rest.starts_with("\xFF\xFE<") || rest.starts_with(std::string_view("\xFE\xFF\0<", 4));
    return rest[first] == '<' || isWide ? InputFormat::mspdi : InputFormat::csv;
}

Plan readPlan(ImportCommandOptions const & options)
{
    std::string const text = readText(options.input);
    InputFormat const format =
        options.format == InputFormat::byContent ? inputFormatOf(text, options.input) : options.format;
    return format == InputFormat::mspdi ? readMspdi(text, options.input)
                                        : readCsv(text, options.input, options.dateOrder);
}

int importFile(ImportCommandOptions const & options)
{
    Progress progress("Importing");
    ImportOptions how;
    how.keepsPercent = options.keepsPercent;
    if (!options.start.empty()) how.start = readTime(options.start).getLocalMinutes();
    // Whatever is wrong with the file is found before anything is written.
    Plan plan = readPlan(options);
    PlanOutline const outline = checkPlan(plan, options.input);
    progress.show(0.3);
    Session session = Session::createNew(options.project, options.replaces, Session::Purpose::changing);
    ImportReport const report =
        importPlan(plan, outline, session, how, [&](double share) { progress.show(0.3 + 0.5 * share); });
    session.save();
    if (options.asJson) printJson(std::cout, toJson(report));
    else std::cout << toText(report);
    return ending::done;
}

}  // namespace

void addImport(CLI::App & program)
{
    auto const options = std::make_shared<ImportCommandOptions>();
    CLI::App & command = addCommand(program, "import", "makes a project of a schedule that another program wrote",
                                    "  orvane import bridge.xml -o bridge.prj\n"
                                    "  orvane import tasks.csv -o bridge.prj --date-order day-first\n"
                                    "  orvane import bridge.xml -o bridge.prj --force --json");
    command
        .add_option("INPUT", options->input,
                    "the schedule: MSPDI (XML interchange of schedules) or CSV; - is the standard input")
        ->required();
    command.add_option("-o,--output", options->project, "the project file to make")->required()->type_name("PROJECT");
    command.add_flag("--force", options->replaces, "replaces the project file if there is one");
    command.add_flag("--json", options->asJson, "reports as JSON");
    std::map<std::string, InputFormat> const formats = {{"mspdi", InputFormat::mspdi}, {"csv", InputFormat::csv}};
    command.add_option("--format", options->format, "what the schedule is, instead of by its content: mspdi or csv")
        ->transform(CLI::CheckedTransformer(formats, CLI::ignore_case))
        ->type_name("FORMAT");
    std::map<std::string, DateOrder> const orders = {{"day-first", DateOrder::dayFirst},
                                                     {"month-first", DateOrder::monthFirst}};
    command
        .add_option("--date-order", options->dateOrder,
                    "how dates such as 03/04/2027 in CSV are meant: day-first or month-first")
        ->transform(CLI::CheckedTransformer(orders, CLI::ignore_case))
        ->type_name("ORDER");
    command
        .add_option("--start", options->start, "where tasks stand that have no date, if none of the schedule has one")
        ->type_name("TIME");
    command.add_flag("--keep-percent", options->keepsPercent,
                     "gives begun tasks a report of delay or advance, by which they are as far as recorded; their "
                     "finish moves by it");
    onRun(command, [options] { return importFile(*options); });
}

}  // namespace orvane::app
