#pragma once

#include <functional>
#include <stdexcept>
#include <string>

namespace CLI
{
class App;
}

namespace orvane::app
{

// How the program ends.
namespace ending
{
constexpr int done = 0, refused = 1, wrongUsage = 2;
}

// The user asked for something that cannot be. The text is one line that says what and where; the program shows it and
// ends with 1.
class Refusal : public std::runtime_error
{
public:
    using std::runtime_error::runtime_error;
};

// A command of the program: one line on what it does, and examples, one to a line, for its help.
CLI::App & addCommand(CLI::App & program, std::string const & name, std::string const & summary,
                      std::string const & examples);
// Its argument PROJECT, the path of a project file, and its flag --json.
void addProject(CLI::App & command, std::string & path);
void addJson(CLI::App & command, bool & asJson);
// What the command does once its arguments are known: answers with the program's ending.
void onRun(CLI::App & command, std::function<int()> action);

// Runs the program with the arguments behind its name; results go to std::cout, messages to std::cerr.
int run(int count, char const * const * arguments);

}  // namespace orvane::app
