#pragma once

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "model/project.h"
#include "rules/local_rules_checker.h"

namespace CLI
{
class App;
}

namespace orvane::app
{

class HistoryFolder;

// Who acts. The password comes from the environment's ORVANE_PASSWORD, or is asked for at the terminal, and never from
// the arguments.
struct Login
{
    std::string user = "Administrator";
};
// The option --user.
void addLoginOption(CLI::App & command, Login & login);

// One project file in the hands of the program: it reads through const accessors, and changes by actions alone.
//
// The states before each action are kept beside the file, in the folder of its name with ".history" behind, so that a
// later run can undo. One program at a time changes a project.
class Session
{
public:
    enum class Purpose
    {
        reading,   // nothing is changed, nothing written
        changing,  // actions keep their states
        trying,    // actions run as if, and neither they nor their states are kept
    };

    // Reads the file and logs in; refuses when one of them fails.
    Session(std::string const & path, Purpose purpose, Login const & login = {});
    // A new project that will stand in the file; an existing one is refused unless it may be replaced.
    static Session createNew(std::string const & path, bool replace, Purpose purpose);
    Session(Session &&) noexcept;
    ~Session();

    CProject const & project() const;
    std::string const & path() const { return file; }

    // One user action of that name: keeps the state before it, then runs `body` with the rules. What the body answers
    // is handed back; the project stays as the body left it also when it answers false.
    bool act(std::string const & name, std::function<bool(CLocalRulesChecker &)> const & body,
             CRulesCheckerContext const & context = CRulesCheckerContext::OriginatingClient);
    // Goes back to the state before the last action, which counts as not done.
    void takeBack();
    // Go through the states kept; refuse when there are not so many.
    void undo(int count);
    void redo(int count);

    // Writes the project file, unless the session only tries.
    void save();

    // What the rules told the user since the last call.
    std::vector<std::string> takeMessages();

    // The actions that led to the present state and, behind, those that could be done again.
    struct Step
    {
        int state;  // the number of the state before it
        std::string action;
        std::string time;
        std::string user;
    };
    std::vector<Step> steps() const;
    int state() const { return project().getCurrentStateIndex().getValue(); }

private:
    struct Parts;
    explicit Session(std::string path, std::unique_ptr<Parts> parts);
    void load();
    void keepHistoryIn(std::unique_ptr<HistoryFolder> folder);

    std::string file;
    std::unique_ptr<Parts> parts;
};

}  // namespace orvane::app
