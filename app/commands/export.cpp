#include "app/commands/commands.h"

#include <algorithm>
#include <iostream>
#include <memory>
#include <string_view>

#include <CLI/CLI.hpp>
#include <fmt/ostream.h>

#include "app/command.h"
#include "app/exchange/csv_writer.h"
#include "app/exchange/export_plan.h"
#include "app/exchange/mspdi_writer.h"
#include "app/failure.h"
#include "app/printable.h"
#include "app/session.h"

namespace orvane::app
{
namespace
{

struct ExportOptions
{
    std::string project, output;
    bool asMspdi = false;
    bool isCompressed = false;
    Login login;
};

// Writing derives figures anew: it is done on a copy.
void writeProjectDocument(Session & session, ExportOptions const & options)
{
    CProject const & project = session.project();
    CProject copy(*std::unique_ptr<CProjectData>(project.getCopyOfProjectData()));
    copy.setPresentationData(std::unique_ptr<CPresentationData>(project.getCopyOfPresentationData()).get());
    copy.setProjectNameDirectoryAndHistoryDirectory(project.getProjectName(), project.getDirectory(),
                                                    project.getProjectHistoryDirectory());
    copy.postSerialize();
    copy.xmlSerialize(true, options.output.c_str(), options.isCompressed);
    // A file that cannot be opened is only told of.
    for (std::string const & message : session.takeMessages())
        throw Refusal(fmt::format("{}: {}", options.output, message));
}

void tellExportLosses(std::vector<PlanLoss> const & losses)
{
    for (PlanLoss const & loss : losses)
    {
        std::string const who = loss.task.empty() ? "" : printable(loss.task) + ": ";
        fmt::print(std::cerr, "orvane: not in the file: {}{}\n", who, printable(loss.what));
    }
}

void writePlan(Session const & session, ExportOptions const & options)
{
    Plan const plan = exportPlan(session.project());
    writeText(options.output, options.asMspdi ? writeMspdi(plan) : writeCsv(plan));
    tellExportLosses(plan.losses);
    if (!options.asMspdi) tellExportLosses(lossesOfCsv(plan));
}

bool endsWith(std::string const & path, std::string_view ending)
{
    return path.size() >= ending.size() &&
           std::equal(ending.begin(), ending.end(), path.end() - static_cast<std::ptrdiff_t>(ending.size()),
                      [](char a, char b) { return a == (b >= 'A' && b <= 'Z' ? b - 'A' + 'a' : b); });
}

int exportFile(ExportOptions const & options)
{
    bool const isTable = endsWith(options.output, ".csv");
    if (!isTable && !options.asMspdi && !endsWith(options.output, ".xml"))
        throw Refusal(options.output + ": the name ends neither in .xml nor in .csv, so what to write is not known");
    if (isTable && options.asMspdi) throw Refusal(options.output + ": a table is no MSPDI document; leave --mspdi out");
    Session session(options.project, Session::Purpose::reading, options.login);
    if (isTable || options.asMspdi) writePlan(session, options);
    else writeProjectDocument(session, options);
    return ending::done;
}

}  // namespace

void addExport(CLI::App & program)
{
    auto const options = std::make_shared<ExportOptions>();
    CLI::App & command = addCommand(program, "export", "writes a project for other programs, as XML, MSPDI or CSV",
                                    "  orvane export bridge.prj -o bridge.xml\n"
                                    "  orvane export bridge.prj --mspdi -o schedule.xml\n"
                                    "  orvane export bridge.prj -o tasks.csv");
    addProject(command, options->project);
    command
        .add_option("-o,--output", options->output,
                    "the file to write: .xml for the document of the project, .csv for a table of its tasks")
        ->required()
        ->type_name("FILE");
    command.add_flag("--mspdi", options->asMspdi, "writes MSPDI, the XML interchange of schedules");
    command.add_flag("--compressed", options->isCompressed, "writes the document of the project compressed");
    addLoginOption(command, options->login);
    onRun(command, [options] { return exportFile(*options); });
}

}  // namespace orvane::app
