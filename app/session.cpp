#include "app/session.h"

#include <algorithm>
#include <cerrno>
#include <charconv>
#include <climits>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <iostream>
#include <utility>

#include <CLI/CLI.hpp>
#include <fcntl.h>
#include <fmt/format.h>
#include <nlohmann/json.hpp>
#include <sys/file.h>
#include <termios.h>
#include <unistd.h>

#include "app/command.h"
#include "app/command_host.h"
#include "app/failure.h"
#include "app/text_values.h"
#include "persistence/project_file.h"
#include "platform/archive.h"
#include "platform/file.h"

namespace orvane::app
{

namespace fs = std::filesystem;

// ---- the states beside the file ---------------------------------------------------------------------

class Descriptor
{
public:
    explicit Descriptor(int number) : number(number) {}
    Descriptor(Descriptor const &) = delete;
    Descriptor & operator=(Descriptor const &) = delete;
    ~Descriptor()
    {
        if (number >= 0) close(number);
    }
    operator int() const { return number; }

private:
    int number;
};

// The folder of the states kept: one numbered file each, and the names of the actions.
class HistoryFolder
{
public:
    // Beside the file. To be changed it is made when missing, and locked for this program.
    HistoryFolder(std::string const & projectFile, bool isToChange)
        : folder(projectFile + ".history"), lock(isToChange ? makeAndOpen(folder) : -1)
    {
        if (isToChange && flock(lock, LOCK_EX | LOCK_NB) != 0)
            throw Refusal(projectFile + ": another program is changing the project");
        readSteps();
    }
    // One that goes with the session.
    HistoryFolder() : folder(makeTemporary()), isTemporary(true), lock(-1) {}
    HistoryFolder(HistoryFolder const &) = delete;
    HistoryFolder & operator=(HistoryFolder const &) = delete;
    ~HistoryFolder()
    {
        std::error_code ignored;
        if (isTemporary) fs::remove_all(folder, ignored);
    }

    std::string const & path() const { return folder; }
    std::string stateFile(int state) const { return fmt::format("{}/{:010}.prj", folder, state); }
    // The states from that number on belong to actions that will never be done again.
    void forgetFrom(int state)
    {
        std::erase_if(steps, [state](Session::Step const & step) { return step.state >= state; });
        std::vector<fs::path> gone;
        std::error_code error;
        for (fs::directory_iterator each(folder, error), end; !error && each != end; each.increment(error))
            if (numberOf(each->path()) >= state) gone.push_back(each->path());
        for (fs::path const & each : gone) fs::remove(each, error);
    }
    // In place of its own states those of the other folder.
    void takeOver(HistoryFolder const & other)
    {
        forgetFrom(0);
        for (fs::directory_entry const & each : fs::directory_iterator(other.folder))
            if (numberOf(each.path()) >= 0) fs::copy_file(each.path(), fs::path(folder) / each.path().filename());
        steps = other.steps;
    }
    bool has(int state) const { return access(stateFile(state).c_str(), R_OK) == 0; }

    void writeSteps() const
    {
        std::string text;
        for (Session::Step const & step : steps)
        {
            nlohmann::ordered_json const line = {
                {"state", step.state}, {"action", step.action}, {"time", step.time}, {"user", step.user}};
            text += line.dump(-1, ' ', false, nlohmann::json::error_handler_t::replace) + '\n';
        }
        writeText(stepFile(), text);
    }

    std::vector<Session::Step> steps;

private:
    static int makeAndOpen(std::string const & folder)
    {
        std::error_code error;
        fs::create_directory(folder, error);
        if (error) throw Refusal(fmt::format("{}: {}", folder, error.message()));
        int const opened = open((folder + "/lock").c_str(), O_RDWR | O_CREAT | O_CLOEXEC | O_NOFOLLOW, 0600);
        if (opened < 0) throw Refusal(fmt::format("{}: {}", folder, std::strerror(errno)));
        return opened;
    }
    static std::string makeTemporary()
    {
        std::string name = (fs::temp_directory_path() / "orvane-XXXXXX").string();
        if (!mkdtemp(name.data())) throw Refusal(fmt::format("{}: {}", name, std::strerror(errno)));
        return name;
    }

    // Of the state that is kept in the file; -1 for another file.
    static int numberOf(fs::path const & path)
    {
        std::string const stem = path.stem().string();
        int number = -1;
        auto const [end, error] = std::from_chars(stem.data(), stem.data() + stem.size(), number);
        return path.extension() == ".prj" && error == std::errc() && end == stem.data() + stem.size() ? number : -1;
    }
    std::string stepFile() const { return folder + "/actions.jsonl"; }

    // Names are a convenience: lines that cannot be read are passed over.
    void readSteps()
    {
        if (!fs::exists(stepFile())) return;
        std::string const text = readText(stepFile());
        for (std::size_t at = 0; at < text.size();)
        {
            std::size_t const end = std::min(text.find('\n', at), text.size());
            auto const line = nlohmann::json::parse(text.begin() + static_cast<std::ptrdiff_t>(at),
                                                    text.begin() + static_cast<std::ptrdiff_t>(end), nullptr, false);
            at = end + 1;
            if (!line.is_object() || !line.contains("state") || !line["state"].is_number_integer()) continue;
            auto const word = [&](char const * name)
            { return line.contains(name) && line[name].is_string() ? line[name].get<std::string>() : std::string(); };
            steps.push_back({line["state"].get<int>(), word("action"), word("time"), word("user")});
        }
    }

    std::string folder;
    bool isTemporary = false;
    Descriptor lock;
};

// ---- who acts ---------------------------------------------------------------------------------------

namespace
{

std::string askForPassword(std::string const & user)
{
    if (char const * const given = std::getenv("ORVANE_PASSWORD")) return given;
    if (!isatty(STDIN_FILENO)) return {};
    std::cerr << fmt::format("Password of {}: ", user) << std::flush;
    termios before = {};
    tcgetattr(STDIN_FILENO, &before);
    termios silent = before;
    silent.c_lflag &= ~static_cast<tcflag_t>(ECHO);
    tcsetattr(STDIN_FILENO, TCSAFLUSH, &silent);
    std::string password;
    std::getline(std::cin, password);
    tcsetattr(STDIN_FILENO, TCSAFLUSH, &before);
    std::cerr << '\n';
    return password;
}

void logIn(CProject & project, Login const & login, std::string const & file)
{
    // A new project's administrator has no password.
    if (project.login(login.user.c_str(), "")) return;
    if (!project.login(login.user.c_str(), askForPassword(login.user).c_str()))
        throw Refusal(fmt::format("{}: user \"{}\" and the password do not fit", file, login.user));
}

void readProject(CProject & project, std::string const & path)
{
    CFileException failure;
    try
    {
        auto const read = [&](CProjectArchive & archive) { project.Serialize(archive); };
        if (!loadProjectFile(path.c_str(), failure, read)) throw failure;
    }
    catch (CArchiveException const & damaged)
    {
        throw Refusal(describe(damaged, path));
    }
}

// A state that cannot be read would leave the project half replaced.
void proveState(HistoryFolder const & history, int state)
{
    CProject aside(nullptr, false);
    readProject(aside, history.stateFile(state));
}

void refuseUnlessFile(std::string const & path)
{
    std::error_code error;
    fs::file_status const status = fs::status(path, error);
    if (status.type() == fs::file_type::not_found) throw Refusal(path + ": no such file");
    if (error) throw Refusal(fmt::format("{}: {}", path, error.message()));
    if (fs::is_directory(status)) throw Refusal(path + ": is a directory");
}

}  // namespace

void addLoginOption(CLI::App & command, Login & login)
{
    command.add_option("--user", login.user, "who acts; the password comes from ORVANE_PASSWORD or is asked for")
        ->type_name("LOGIN")
        ->capture_default_str();
}

// ---- the session ------------------------------------------------------------------------------------

struct Session::Parts
{
    explicit Parts(Purpose purpose) : purpose(purpose) {}

    Purpose purpose;
    CommandHost host;
    std::unique_ptr<HistoryFolder> history;
    CProject project{nullptr, false};
    bool isNew = false;
};

Session::Session(std::string path, std::unique_ptr<Parts> made) : file(std::move(path)), parts(std::move(made))
{
    // A new project's states come to stand beside it with the project itself.
    bool const isElsewhere = parts->purpose == Purpose::trying || parts->isNew;
    keepHistoryIn(isElsewhere ? std::make_unique<HistoryFolder>()
                              : std::make_unique<HistoryFolder>(file, parts->purpose == Purpose::changing));
}

void Session::keepHistoryIn(std::unique_ptr<HistoryFolder> folder)
{
    parts->history = std::move(folder);
    parts->project.setProjectNameDirectoryAndHistoryDirectory(fs::path(file).stem().c_str(),
                                                              fs::absolute(file).parent_path().c_str(),
                                                              parts->history->path().c_str());
}

Session::Session(std::string const & path, Purpose purpose, Login const & login)
    : Session(path, (refuseUnlessFile(path), std::make_unique<Parts>(purpose)))
{
    load();
    logIn(parts->project, login, file);
}

Session Session::createNew(std::string const & path, bool replace, Purpose purpose)
{
    if (fs::is_directory(path)) throw Refusal(path + ": is a directory");
    if (!replace && fs::exists(path)) throw Refusal(path + ": exists already; --force replaces it");
    auto parts = std::make_unique<Parts>(purpose);
    parts->isNew = true;
    Session session(path, std::move(parts));
    session.parts->project.setCurrentStateIndex(CProjectStateIndex(1));
    session.parts->project.setFullHistory(true);
    return session;
}

Session::Session(Session &&) noexcept = default;
Session::~Session() = default;

CProject const & Session::project() const
{
    return parts->project;
}

void Session::load()
{
    readProject(parts->project, file);
    // Before the first state there would be nothing to go back to.
    if (state() < 1) parts->project.setCurrentStateIndex(CProjectStateIndex(1));
    parts->project.setFullHistory(parts->purpose != Purpose::reading);
}

bool Session::act(std::string const & name, std::function<bool(CLocalRulesChecker &)> const & body,
                  CRulesCheckerContext const & context)
{
    CProject & project = parts->project;
    HistoryFolder & history = *parts->history;
    int const before = state();
    history.forgetFrom(before);
    project.pushState(name.c_str());
    if (!history.has(before))
        throw Refusal(fmt::format("{}: the state before the action cannot be kept", history.path()));
    CUser const * const user = project.getCurrentUser();
    history.steps.push_back(
        {before, name, isoTime(CProjectTime::GetTickCount()), user ? std::string(user->getLogin().view()) : ""});
    bool done = false;
    {
        CLocalRulesChecker rules(&project, context);
        done = body(rules);
    }
    project.setCurrentStateIndex(CProjectStateIndex(before + 1));
    return done;
}

void Session::takeBack()
{
    CProject & project = parts->project;
    int const before = state() - 1;
    proveState(*parts->history, before);
    project.setCurrentStateIndex(CProjectStateIndex(before));
    project.pullState(false);
    parts->history->forgetFrom(before);
}

void Session::undo(int count)
{
    if (count < 1 || count >= state() || !parts->history->has(state() - count))
        throw Refusal(fmt::format("{}: there are not so many actions to undo", file));
    proveState(*parts->history, state() - count);
    CLocalRulesChecker rules(&parts->project, CRulesCheckerContext(CRulesCheckerContext::OriginatingClient));
    rules.undo(count);
}

void Session::redo(int count)
{
    if (count < 1 || count > INT_MAX - state() || !parts->history->has(state() + count))
        throw Refusal(fmt::format("{}: there are not so many actions to do again", file));
    proveState(*parts->history, state() + count);
    CLocalRulesChecker rules(&parts->project, CRulesCheckerContext(CRulesCheckerContext::OriginatingClient));
    rules.redo(count);
}

void Session::save()
{
    if (parts->purpose != Purpose::changing) return;
    CFileException failure;
    CProject & project = parts->project;
    auto const write = [&](CProjectArchive & archive) { project.Serialize(archive); };
    // Before anything is replaced: whether there can be a history, and nobody else is at work on it.
    auto beside = parts->isNew ? std::make_unique<HistoryFolder>(file, true) : nullptr;
    if (!storeProjectFile(file.c_str(), failure, write)) throw failure;
    if (beside)
    {
        beside->takeOver(*parts->history);
        keepHistoryIn(std::move(beside));
        parts->isNew = false;
    }
    parts->history->writeSteps();
}

std::vector<std::string> Session::takeMessages()
{
    return std::exchange(parts->host.messages, {});
}

std::vector<Session::Step> Session::steps() const
{
    return parts->history->steps;
}

}  // namespace orvane::app
