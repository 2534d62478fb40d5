#include "app/commands/commands.h"

#include <filesystem>
#include <fstream>
#include <iostream>
#include <memory>
#include <optional>

#include <CLI/CLI.hpp>
#include <fmt/ostream.h>

#include "app/apply/action.h"
#include "app/command.h"

namespace orvane::app
{
namespace
{

struct ApplyOptions
{
    std::string project;
    std::string actions;
    Login login;
    bool dryRun = false;
    bool stopOnRefusal = false;
};

// The lines of a file, one at a time: files may be longer than memory, lines may not.
class Lines
{
public:
    // "-" is the standard input.
    explicit Lines(std::string const & path) : path(path)
    {
        if (path == "-") return;
        std::error_code ignored;
        if (std::filesystem::is_directory(path, ignored)) throw Refusal(path + ": is a directory");
        file.open(path, std::ios::binary);
        if (!file) throw Refusal(path + ": cannot be read");
    }

    // Passes over empty lines. False at the end.
    bool next(std::string & line)
    {
        while (readLine(line))
            if (line.find_first_not_of(" \t\r") != line.npos) return true;
        return false;
    }
    std::string where() const { return fmt::format("{}: line {}", path == "-" ? "standard input" : path, number); }

private:
    bool readLine(std::string & line)
    {
        constexpr std::size_t most = std::size_t{16} << 20;
        std::streambuf & bytes = path == "-" ? *std::cin.rdbuf() : *file.rdbuf();
        constexpr int end = std::streambuf::traits_type::eof();
        line.clear();
        int byte = bytes.sbumpc();
        if (byte == end) return false;
        for (++number; byte != end && byte != '\n'; byte = bytes.sbumpc())
        {
            if (line.size() == most) throw Refusal(where() + ": is longer than 16 MiB");
            line += static_cast<char>(byte);
        }
        return true;
    }

    std::string path;
    std::ifstream file;
    int number = 0;
};

Action readNumberedAction(std::string const & line, Lines const & lines, CProject const & project)
{
    try
    {
        return readAction(line, project);
    }
    catch (Refusal const & refusal)
    {
        throw Refusal(fmt::format("{}: {}", lines.where(), refusal.what()));
    }
}

// None at the end. What was done before a line that is wrong stays done.
std::optional<Action> nextAction(Lines & lines, Session & session)
{
    try
    {
        std::string line;
        if (!lines.next(line)) return std::nullopt;
        return readNumberedAction(line, lines, session.project());
    }
    catch (Refusal const &)
    {
        session.save();
        throw;
    }
}

// How many rules were refused, and whether the last action was taken back for it.
ActionAnswer runLines(Session & session, Lines & lines, bool stopOnRefusal)
{
    Names names(session.project());
    ActionAnswer total;
    while (!total.isTakenBack)
    {
        std::optional<Action> const action = nextAction(lines, session);
        if (!action) break;
        ActionAnswer const answer = runAction(session, *action, names, stopOnRefusal);
        fmt::print(std::cout, "{}\n", jsonText(answer.json));
        total.refused += answer.refused;
        total.isTakenBack = answer.isTakenBack;
    }
    return total;
}

int runApply(ApplyOptions const & options)
{
    Lines lines(options.actions);
    auto const purpose = options.dryRun ? Session::Purpose::trying : Session::Purpose::changing;
    Session session(options.project, purpose, options.login);
    ActionAnswer const total = runLines(session, lines, options.stopOnRefusal);
    session.save();
    if (total.isTakenBack) throw Refusal(lines.where() + ": the action was refused and taken back");
    if (total.refused > 0)
        throw Refusal(fmt::format("{} {} refused", total.refused, total.refused == 1 ? "rule was" : "rules were"));
    return ending::done;
}

}  // namespace

void addApply(CLI::App & program)
{
    auto const options = std::make_shared<ApplyOptions>();
    CLI::App & command = addCommand(program, "apply",
                                    "Runs user actions, one JSON object to a line, and answers each with a line of JSON.",
                                    "  orvane apply bridge.prj actions.jsonl\n"
                                    "  orvane apply bridge.prj actions.jsonl --dry-run | jq .results\n"
                                    "  echo '{\"action\": \"Name it\", \"rules\": [{\"rule\": \"changeTaskName\", \"args\": "
                                    "[\"@Dig\", \"Dig deep\"]}]}' | orvane apply bridge.prj -\n"
                                    "A refused rule is reported and the rest goes on, and is saved, unless --stop-on-refusal is\n"
                                    "given; the run ends with 1 all the same.\n"
                                    "A line that is no action ends the run with 1; what was done before it is saved.");
    addProject(command, options->project);
    command.add_option("ACTIONS", options->actions, "the actions; - is the standard input")->required();
    command.add_flag("--dry-run", options->dryRun, "answer the same and save nothing");
    command.add_flag("--stop-on-refusal", options->stopOnRefusal,
                     "end with 1 at the first refused rule, with its action taken back");
    addLoginOption(command, options->login);
    onRun(command, [options] { return runApply(*options); });
}

}  // namespace orvane::app
