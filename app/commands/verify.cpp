#include "app/commands/commands.h"

#include <iostream>

#include <CLI/CLI.hpp>
#include <fmt/ostream.h>
#include <nlohmann/json.hpp>

#include "app/command.h"
#include "app/dump/json_text.h"
#include "app/verify/file_check.h"

namespace orvane::app
{
namespace
{

struct VerifyOptions
{
    std::string path;
    bool asJson = false;
};

Json checkJsonOf(VerifyOptions const & options, FileCheck const & check)
{
    Json counts = Json::object();
    for (auto const & [name, count] : check.counts) counts[name] = count;
    auto const textOrNull = [](std::string const & text) { return text.empty() ? Json() : Json(text); };
    return {{"file", options.path},
            {"kind", check.kind},
            {"version", textOrNull(check.version)},
            {"compressed", check.isCompressed},
            {"fileSize", check.fileSize},
            {"contentSize", check.contentSize},
            {"counts", counts},
            {"whole", check.fault.empty()},
            {"fault", textOrNull(check.fault)}};
}

void printCheck(std::string const & kind, FileCheck const & check)
{
    fmt::print(std::cout, "{}, whole\n{} bytes", kind, check.fileSize);
    if (check.isCompressed) fmt::print(std::cout, ", {} unpacked", check.contentSize);
    fmt::print(std::cout, "\n");
    for (auto const & [name, count] : check.counts) fmt::print(std::cout, "{}: {}\n", name, count);
}

int verifyFile(VerifyOptions const & options)
{
    FileCheck const check = checkFile(options.path);
    std::string const kind =
        check.version.empty() ? check.kind : fmt::format("{}, version {}", check.kind, check.version);
    if (options.asJson) printJson(std::cout, checkJsonOf(options, check));
    if (!check.fault.empty()) throw Refusal(fmt::format("{}: not whole: {}: {}", options.path, kind, check.fault));
    if (!options.asJson) printCheck(kind, check);
    return ending::done;
}

}  // namespace

void addVerify(CLI::App & program)
{
    auto const options = std::make_shared<VerifyOptions>();
    CLI::App & command = addCommand(program, "verify", "tells what a file is, its version, and whether it is whole",
                                    "  orvane verify bridge.prj\n  orvane verify plan.xml --json");
    command.add_option("FILE", options->path, "any file")->required();
    addJson(command, options->asJson);
    onRun(command, [options] { return verifyFile(*options); });
}

}  // namespace orvane::app
