#include "config/project_config.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <filesystem>
#include <mutex>
#include <optional>
#include <system_error>
#include <type_traits>
#include <variant>
#include <vector>

#include "platform/file_tools.h"
#include "platform/registered_name.h"
#include "platform/settings_store.h"

namespace orvane
{
namespace
{

// One lock for all settings. It is there before any code runs and after all has run, so settings may be
// used by the constructors and destructors of static objects.
constinit std::recursive_mutex configMutex;
static_assert(std::is_trivially_destructible_v<std::recursive_mutex>);

using Lock = std::lock_guard<std::recursive_mutex>;

// Where flags and the layout of toolbars are; all else is in "ProjectConfig".
constexpr char const * flagSection = "Config";

// A value that is made on first use, and that no destructor takes away at the end of the process.
template <class T>
class CLasting
{
public:
    T & operator*() { return made ? *made : *(made = new T()); }

private:
    T * made = nullptr;
};

// A setting: its row of the table, and its value once it is known.
template <class T>
struct CSetting
{
    using Default = std::conditional_t<std::is_same_v<T, CString>, char const *, T>;

    consteval CSetting(char const * name, Default fallback) : storedName(name), byDefault(fallback) {}
    consteval CSetting(char const *, Default fallback, char const * name) : CSetting(name, fallback) {}

    static constexpr char const * section = std::is_same_v<T, bool> ? flagSection : "ProjectConfig";
    char const * storedName;
    Default byDefault;
    CLasting<SettingValue<T>> value;
    std::int32_t invalid = 1;
};

constinit CLasting<CString> registryKey;

CString rootKey()
{
    Lock const lock(configMutex);
    return *registryKey;
}

// Both do without the store while there is no root.
std::optional<StoredValue> readStored(char const * section, char const * name)
{
    CString const root = rootKey();
    if (root.IsEmpty()) return std::nullopt;
    return settingsStore().read(root + '\\' + section, name);
}

void writeStored(char const * section, char const * name, StoredValue const & value)
{
    // A failure is silent: the process goes on with what it has in memory.
    if (CString const root = rootKey(); !root.IsEmpty()) settingsStore().write(root + '\\' + section, name, value);
}

StoredValue stored(int number)
{
    return static_cast<std::uint32_t>(number);
}

StoredValue stored(double number)
{
    auto const bytes = std::bit_cast<std::array<std::byte, sizeof number>>(number);
    return std::vector(bytes.begin(), bytes.end());
}

StoredValue stored(CString const & text)
{
    return text;
}

// Each takes a stored value for a setting of its type; of any other it takes none, and answers false.
bool take(StoredValue const & from, int & number)
{
    auto const * const held = std::get_if<std::uint32_t>(&from);
    if (held) number = static_cast<int>(*held);
    return held;
}

bool take(StoredValue const & from, double & number)
{
    auto const * const held = std::get_if<std::vector<std::byte>>(&from);
    if (!held || held->size() != sizeof number) return false;
    std::memcpy(&number, held->data(), sizeof number);
    return true;
}

bool take(StoredValue const & from, CString & text)
{
    constexpr int longest = 259;
    auto const * const held = std::get_if<CString>(&from);
    if (!held || held->GetLength() > longest) return false;
    // It ends at a zero byte, if it holds one.
    text = static_cast<char const *>(*held);
    return true;
}

// The stored value, or what `value` held before.
template <class Value>
Value readOr(Value value, char const * section, char const * name)
{
    if (auto const found = readStored(section, name)) take(*found, value);
    return value;
}

template <class T>
SettingValue<T> get(CSetting<T> & setting)
{
    Lock const lock(configMutex);
    SettingValue<T> & value = *setting.value;
    if (setting.invalid)
    {
        value = readOr<SettingValue<T>>(setting.byDefault, setting.section, setting.storedName);
        if constexpr (std::is_same_v<T, bool>) value = value != 0;
        setting.invalid = 0;
    }
    return value;
}

// Whom a change could be told; the settings that are flags are not announced.
void broadcastProjectConfigChanged() {}

template <class T>
void set(CSetting<T> & setting, SettingArgument<T> value)
{
    Lock const lock(configMutex);
    *setting.value = value;
    setting.invalid = 0;
    writeStored(setting.section, setting.storedName, stored(value));
    if constexpr (!std::is_same_v<T, bool>) broadcastProjectConfigChanged();
}

constexpr char const * currentVersion = "2.00";

// The keys below the root that hold settings: ours, and those of the desktop.
constexpr std::array keptSections{"Config", "ProjectConfig", "Settings", "Recent File List"};

bool isKept(CString const & section)
{
    return std::ranges::any_of(keptSections, [&](char const * kept) { return section.CompareNoCase(kept) == 0; });
}

}  // namespace
}  // namespace orvane

unsigned const CProjectConfig::m_changedMessage = RegisterWindowMessage("PROJECTCONFIG_CHANGED");

#define ORVANE_DEFINE_SETTING(type, name, ...)                                                                         \
    namespace orvane                                                                                                   \
    {                                                                                                                  \
    namespace                                                                                                          \
    {                                                                                                                  \
    constinit CSetting<type> m_##name(#name, __VA_ARGS__);                                                             \
    }                                                                                                                  \
    }                                                                                                                  \
    orvane::SettingValue<type> CProjectConfig::get##name()                                                             \
    {                                                                                                                  \
        return orvane::get(orvane::m_##name);                                                                          \
    }                                                                                                                  \
    void CProjectConfig::set##name(orvane::SettingArgument<type> value)                                                \
    {                                                                                                                  \
        orvane::set(orvane::m_##name, value);                                                                          \
    }

ORVANE_SETTINGS(ORVANE_DEFINE_SETTING)
#undef ORVANE_DEFINE_SETTING

void CProjectConfig::setRegistryKey(CString const & key)
{
    orvane::Lock const lock(orvane::configMutex);
    *orvane::registryKey = key;
}

void CProjectConfig::initialize()
{
    if (getOrvaneScheduleVersion() != orvane::currentVersion) resetToolbarFolders();
    setOrvaneScheduleVersion(orvane::currentVersion);

    // Where a directory cannot be made or told, whoever needs it will find out.
    std::error_code ignored;
    if (CString const directory = getSystemDirectory(); !directory.IsEmpty()) makeDirectory(directory);
    else if (auto const current = std::filesystem::current_path(ignored); !current.empty())
        setSystemDirectory(CString(current.native()) + '\\');
}

void CProjectConfig::reset()
{
    orvane::Lock const lock(orvane::configMutex);
    if (CString const root = orvane::rootKey(); !root.IsEmpty()) orvane::settingsStore().removeKey(root);
}

void CProjectConfig::resetToolbarFolders()
{
    orvane::Lock const lock(orvane::configMutex);
    CString const root = orvane::rootKey();
    if (root.IsEmpty()) return;

    orvane::ISettingsStore & store = orvane::settingsStore();
    std::vector<CString> const sections = store.subkeys(root);
    for (auto section = sections.rbegin(); section != sections.rend(); ++section)
        if (!orvane::isKept(*section) && !store.removeKey(root + '\\' + *section)) return;
    if (std::ranges::none_of(sections, orvane::isKept)) store.removeKey(root);
}

void CProjectConfig::disableChangeNotification(int disable)
{
    m_disableChangeNotification = disable;
}

CString CProjectConfig::getToolbarLayoutRegistryName()
{
    return "ProjectToolbarLayoutStyle";
}

CString CProjectConfig::getToolbarLayoutStyleName(int n)
{
    CString name;
    name.Format("%s %d", static_cast<char const *>(getToolbarLayoutRegistryName()), n);
    return name;
}

CString CProjectConfig::getDefaultToolbarLayoutStyle()
{
    return getToolbarLayoutStyleName(1);
}

CString CProjectConfig::getToolbarLayoutStyle()
{
    return orvane::readOr(getDefaultToolbarLayoutStyle(), orvane::flagSection, getToolbarLayoutRegistryName());
}

void CProjectConfig::setToolbarLayoutStyle(int n)
{
    orvane::writeStored(orvane::flagSection, getToolbarLayoutRegistryName(), getToolbarLayoutStyleName(n));
}
