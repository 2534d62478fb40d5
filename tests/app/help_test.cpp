// The man page and the completion tell what the program's own help does.

#include <gtest/gtest.h>

#include <fstream>
#include <iterator>
#include <regex>
#include <set>

#include "tests/support/command_run.h"

namespace orvane::test
{
namespace
{

std::string contentOf(char const * path)
{
    std::ifstream file(std::string(ORVANE_SOURCE_DIR) + path);
    return {std::istreambuf_iterator<char>(file), {}};
}

std::set<std::string> matches(std::string const & text, char const * pattern)
{
    std::regex const expression(pattern);
    std::set<std::string> found;
    for (std::sregex_iterator each(text.begin(), text.end(), expression), end; each != end; ++each)
        found.insert((*each)[1]);
    return found;
}

// The names behind the heading of the help.
std::set<std::string> commandsOf(std::string const & help)
{
    std::size_t const list = help.find("Subcommands:\n");
    if (list == help.npos) return {};
    return matches(help.substr(list, help.find("\n\n", list) - list), "\n  ([a-z-]+)");
}

// The long options of a command and of those below it. Some take a project before their own names.
std::set<std::string> optionsOf(std::vector<std::string> arguments)
{
    arguments.push_back("--help");
    std::string const help = ran(arguments).out;
    arguments.pop_back();
    std::set<std::string> options = matches(help, "\n  (?:-[a-z],)?(--[a-z-]+)");
    for (std::string const & below : commandsOf(help))
    {
        std::vector<std::string> further = arguments;
        if (help.find("\n  PROJECT ") != help.npos) further.push_back("x.prj");
        further.push_back(below);
        options.merge(optionsOf(further));
    }
    options.erase("--help");
    return options;
}

TEST(Help, StandsInTheManPageAndInTheCompletion)
{
    std::string const page = contentOf("/docs/orvane.1"), completion = contentOf("/tools/orvane-completion.bash");
    std::set<std::string> const commands = commandsOf(ran({"--help"}).out);
    EXPECT_GE(commands.size(), 5);
    for (std::string const & command : commands)
    {
        std::smatch section, words;
        std::regex const inPage("\n\\.B[IR] \"" + command + "[ \"](?:.|\n)*?(?=\n\\.(?:TP|SH))");
        EXPECT_TRUE(std::regex_search(page, section, inPage)) << command << " is missing in the man page";
        std::regex const inCompletion("\\[" + command + "\\]=\"([^\"]*)\"");
        EXPECT_TRUE(std::regex_search(completion, words, inCompletion)) << command << " is missing in the completion";
        std::set<std::string> const options = optionsOf({command});
        EXPECT_EQ(matches(words[1], "(--[a-z-]+)"), options) << command;
        for (std::string const & option : options)
        {
            std::string const escaped = std::regex_replace(option, std::regex("-"), "\\-");
            EXPECT_NE(section[0].str().find(escaped), std::string::npos) << command << ' ' << option;
        }
    }
}

}  // namespace
}  // namespace orvane::test
