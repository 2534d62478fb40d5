#include "platform/settings_store.h"

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <mutex>
#include <string>
#include <string_view>
#include <system_error>
#include <utility>

#include <sqlite3.h>
#include <unistd.h>

namespace orvane
{
namespace
{

// Stands in the header of every file that is ours: "Orvn".
constexpr int applicationID = 0x4F72766E;
// For how long another process may keep us waiting.
constexpr int patienceMilliseconds = 5000;
// A longer value in a file is no setting.
constexpr int longestBytes = 1 << 20;

// A value's type is that of its cell. ASCII case makes no difference in paths and names.
constexpr char const * makeTable =
    "CREATE TABLE setting (key TEXT NOT NULL COLLATE NOCASE, name TEXT NOT NULL COLLATE NOCASE, value NOT NULL,"
    " PRIMARY KEY (key, name)) WITHOUT ROWID";

// The paths below a key are those between its own followed by "\" and by the next character.
constexpr char const * belowKey = "key > ?1 || '\\' AND key < ?1 || ']'";
constexpr char const * selectSubkeys =
    "SELECT DISTINCT substr(below, 1, instr(below || '\\', '\\') - 1) COLLATE NOCASE AS name"
    " FROM (SELECT substr(key, length(?1) + 2) AS below FROM setting WHERE ";

class CStatement
{
public:
    CStatement(sqlite3 * database, std::string const & sql)
    {
        sqlite3_prepare_v2(database, sql.c_str(), -1, &statement, nullptr);
    }
    ~CStatement() { sqlite3_finalize(statement); }
    CStatement(CStatement const &) = delete;
    CStatement & operator=(CStatement const &) = delete;

    // What is bound must outlive the statement.
    void bind(int index, CString const & text)
    {
        sqlite3_bind_text64(statement, index, text.view().data(), text.view().size(), SQLITE_STATIC, SQLITE_UTF8);
    }
    void bind(int index, std::uint32_t number) { sqlite3_bind_int64(statement, index, number); }
    void bind(int index, std::vector<std::byte> const & bytes)
    {
        // A null address would bind no bytes as no value.
        sqlite3_bind_blob64(statement, index, bytes.empty() ? "" : static_cast<void const *>(bytes.data()),
                            bytes.size(), SQLITE_STATIC);
    }

    // Whether there is a next row. False also on failure.
    bool next() { return sqlite3_step(statement) == SQLITE_ROW; }
    // Whether it ran to its end.
    bool run() { return sqlite3_step(statement) == SQLITE_DONE; }

    int number() const { return sqlite3_column_int(statement, 0); }
    CString text() const
    {
        auto const * const bytes = sqlite3_column_text(statement, 0);
        return CString(reinterpret_cast<char const *>(bytes), sqlite3_column_bytes(statement, 0));
    }
    std::optional<StoredValue> value() const
    {
        switch (sqlite3_column_type(statement, 0))
        {
            case SQLITE_INTEGER: return integer(sqlite3_column_int64(statement, 0));
            case SQLITE_TEXT: return text();
            case SQLITE_BLOB: return bytes();
            default: return std::nullopt;
        }
    }

private:
    static std::optional<StoredValue> integer(std::int64_t number)
    {
        if (!std::in_range<std::uint32_t>(number)) return std::nullopt;
        return static_cast<std::uint32_t>(number);
    }
    std::vector<std::byte> bytes() const
    {
        auto const * const first = static_cast<std::byte const *>(sqlite3_column_blob(statement, 0));
        if (!first) return {};
        return std::vector(first, first + sqlite3_column_bytes(statement, 0));
    }

    sqlite3_stmt * statement = nullptr;
};

int queryNumber(sqlite3 * database, char const * sql)
{
    CStatement statement(database, sql);
    return statement.next() ? statement.number() : -1;
}

bool execute(sqlite3 * database, std::string const & sql)
{
    return sqlite3_exec(database, sql.c_str(), nullptr, nullptr, nullptr) == SQLITE_OK;
}

bool isOurs(sqlite3 * database)
{
    return queryNumber(database, "PRAGMA application_id") == applicationID;
}

// Makes an empty file ours, unless another process has done so just now. What is left half done is undone
// when the connection closes.
bool adopt(sqlite3 * database)
{
    if (!execute(database, "BEGIN IMMEDIATE")) return false;
    bool const empty = queryNumber(database, "PRAGMA application_id") == 0 &&
                       queryNumber(database, "SELECT count(*) FROM sqlite_schema") == 0;
    bool const ready = empty ? execute(database, makeTable) &&
                                   execute(database, "PRAGMA application_id = " + std::to_string(applicationID))
                             : isOurs(database);
    return ready && execute(database, "COMMIT");
}

// A path in its one form: without empty levels.
CString normalised(CString const & key)
{
    CString path;
    for (std::string_view rest = key.view(); !rest.empty();)
    {
        std::string_view const level = rest.substr(0, rest.find('\\'));
        rest.remove_prefix(std::min(level.size() + 1, rest.size()));
        if (level.empty()) continue;
        if (!path.IsEmpty()) path += '\\';
        path += CString(level);
    }
    return path;
}

struct CloseDatabase
{
    void operator()(sqlite3 * database) const { sqlite3_close_v2(database); }
};
using Database = std::unique_ptr<sqlite3, CloseDatabase>;

class CSettingsFile final : public ISettingsStore
{
public:
    explicit CSettingsFile(std::filesystem::path path) : path(std::move(path)) {}

    std::optional<StoredValue> read(CString const & key, CString const & name) override
    {
        std::lock_guard const lock(mutex);
        if (!open(Access::read)) return std::nullopt;
        CString const place = normalised(key);
        CStatement statement(database.get(), "SELECT value FROM setting WHERE key = ?1 AND name = ?2");
        statement.bind(1, place);
        statement.bind(2, name);
        return statement.next() ? statement.value() : std::nullopt;
    }

    bool write(CString const & key, CString const & name, StoredValue const & value) override
    {
        std::lock_guard const lock(mutex);
        CString const place = normalised(key);
        if (place.IsEmpty() || !open(Access::write)) return false;
        CStatement statement(database.get(), "REPLACE INTO setting (key, name, value) VALUES (?1, ?2, ?3)");
        statement.bind(1, place);
        statement.bind(2, name);
        std::visit([&](auto const & held) { statement.bind(3, held); }, value);
        return statement.run();
    }

    std::vector<CString> subkeys(CString const & key) override
    {
        std::lock_guard const lock(mutex);
        std::vector<CString> names;
        CString const place = normalised(key);
        if (place.IsEmpty() || !open(Access::read)) return names;
        CStatement statement(database.get(), selectSubkeys + std::string(belowKey) + ") ORDER BY name");
        statement.bind(1, place);
        while (statement.next()) names.push_back(statement.text());
        return names;
    }

    bool removeKey(CString const & key) override
    {
        std::lock_guard const lock(mutex);
        CString const place = normalised(key);
        if (place.IsEmpty() || !open(Access::read)) return false;
        CStatement statement(database.get(), std::string("DELETE FROM setting WHERE key = ?1 OR ") + belowKey);
        statement.bind(1, place);
        return statement.run();
    }

private:
    enum class Access
    {
        read,
        write
    };

    // Whether the file is open and ours. Only to write is it made.
    bool open(Access access)
    {
        // A connection must not be used, nor closed, on the other side of a fork.
        if (database && owner != ::getpid()) static_cast<void>(database.release());
        if (database) return true;
        if (path.empty()) return false;

        Database candidate = connect(access);
        if (!candidate) return false;
        if (!isOurs(candidate.get()) && !(access == Access::write && adopt(candidate.get()))) return false;
        database = std::move(candidate);
        owner = ::getpid();
        return true;
    }

    Database connect(Access access) const
    {
        if (isCutOff()) return nullptr;
        if (access == Access::write) makeDirectory();
        int const creating = access == Access::write ? SQLITE_OPEN_CREATE : 0;
        int const flags = SQLITE_OPEN_READWRITE | SQLITE_OPEN_NOMUTEX | creating;
        sqlite3 * handle = nullptr;
        int const result = sqlite3_open_v2(path.c_str(), &handle, flags, nullptr);
        Database opened(handle);
        if (result != SQLITE_OK) return nullptr;
        sqlite3_busy_timeout(handle, patienceMilliseconds);
        sqlite3_limit(handle, SQLITE_LIMIT_LENGTH, longestBytes);
        return opened;
    }

    // Databases consist of whole blocks. The database engine would take a part of one for all of it.
    bool isCutOff() const
    {
        constexpr std::uintmax_t block = 512;
        std::error_code error;
        std::uintmax_t const size = std::filesystem::file_size(path, error);
        return !error && size % block != 0;
    }

    // Nobody but the user may look into a directory that is made for settings.
    void makeDirectory() const
    {
        std::error_code ignored;
        std::filesystem::path const directory = path.parent_path();
        if (std::filesystem::create_directories(directory, ignored))
            std::filesystem::permissions(directory, std::filesystem::perms::owner_all, ignored);
    }

    std::filesystem::path const path;
    std::mutex mutex;
    Database database;
    pid_t owner = 0;
};

std::filesystem::path environmentPath(char const * variable)
{
    char const * const text = std::getenv(variable);
    return text ? text : "";
}

ISettingsStore * storeInstead = nullptr;

}  // namespace

std::unique_ptr<ISettingsStore> makeSettingsFile(std::filesystem::path const & path)
{
    return std::make_unique<CSettingsFile>(path);
}

std::filesystem::path userSettingsFile()
{
    std::filesystem::path base = environmentPath("XDG_CONFIG_HOME");
    if (!base.is_absolute())
    {
        base = environmentPath("HOME");
        if (!base.is_absolute()) return {};
        base /= ".config";
    }
    return base / "orvane" / "settings.db";
}

ISettingsStore & settingsStore()
{
    // Never destroyed, since destructors of static objects may still use settings.
    static ISettingsStore & file = *makeSettingsFile(userSettingsFile()).release();
    return storeInstead ? *storeInstead : file;
}

ISettingsStore * setSettingsStore(ISettingsStore * store)
{
    return std::exchange(storeInstead, store);
}

}  // namespace orvane
