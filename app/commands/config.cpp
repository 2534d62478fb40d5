#include "app/commands/commands.h"

#include <charconv>
#include <cmath>
#include <iostream>

#include <CLI/CLI.hpp>
#include <fmt/ostream.h>
#include <nlohmann/json.hpp>

#include "app/command.h"
#include "app/dump/json_text.h"
#include "app/stored_settings.h"
#include "app/table.h"
#include "config/project_config.h"
#include "platform/settings_store.h"

namespace orvane::app
{
namespace
{

// ---- values -----------------------------------------------------------------------------------------

// A kind of setting: how its values are written, read and stored. Reading tells whether the text is such a value.
template <class T>
struct SettingKind;

template <>
struct SettingKind<bool>
{
    static constexpr char const * name = "true or false";
    static Json json(int value) { return value != 0; }
    static bool read(std::string const & text, int & value)
    {
        value = text == "true";
        return text == "true" || text == "false";
    }
    static StoredValue stored(int value) { return static_cast<std::uint32_t>(value); }
};

template <class T>
bool readWholly(std::string const & text, T & value)
{
    auto const [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
    return error == std::errc() && end == text.data() + text.size();
}

template <>
struct SettingKind<int>
{
    static constexpr char const * name = "a whole number";
    static Json json(int value) { return value; }
    static bool read(std::string const & text, int & value) { return readWholly(text, value); }
    static StoredValue stored(int value) { return static_cast<std::uint32_t>(value); }
};

template <>
struct SettingKind<double>
{
    static constexpr char const * name = "a number";
    static Json json(double value) { return value; }
    static bool read(std::string const & text, double & value)
    {
        return readWholly(text, value) && std::isfinite(value);
    }
    static StoredValue stored(double value)
    {
        auto const * const bytes = reinterpret_cast<std::byte const *>(&value);
        return std::vector<std::byte>(bytes, bytes + sizeof value);
    }
};

template <>
struct SettingKind<CString>
{
    static constexpr char const * name = "a text of at most 259 bytes";
    static Json json(CString const & value) { return value.view(); }
    static bool read(std::string const & text, CString & value)
    {
        constexpr std::size_t longest = 259;
        value = text.c_str();
        return text.size() <= longest;
    }
    static StoredValue stored(CString const & value) { return value; }
};

// As it stands in a table, and as `set` takes it.
std::string plainText(Json const & value)
{
    return value.is_string() ? value.get<std::string>() : value.dump();
}

// ---- the table of settings --------------------------------------------------------------------------

struct Setting
{
    std::string name;
    char const * kind;
    Json byDefault;
    std::function<Json()> get;
    // False when the text is no value of that kind.
    std::function<bool(std::string const &)> set;
    std::function<void()> reset;
};

void refuseToKeep()
{
    throw Refusal(fmt::format("{}: the setting cannot be kept there", userSettingsFile().string()));
}

template <class T>
Setting settingOf(char const * name, SettingValue<T> (*get)(), void (*set)(SettingArgument<T>),
                  SettingValue<T> const & byDefault, char const * storedName)
{
    char const * const section = std::is_same_v<T, bool> ? "Config" : "ProjectConfig";
    CString const place = CString(storedSettingsKey) + '\\' + section;
    auto const keep = [=](SettingValue<T> const & value)
    {
        set(value);
        // The configuration goes on with a value that cannot be stored; a user would believe that it was.
        if (settingsStore().read(place, storedName) != SettingKind<T>::stored(value)) refuseToKeep();
    };
    auto const read = [keep](std::string const & text)
    {
        SettingValue<T> value{};
        if (!SettingKind<T>::read(text, value)) return false;
        keep(value);
        return true;
    };
    return {name,
            SettingKind<T>::name,
            SettingKind<T>::json(byDefault),
            [get] { return SettingKind<T>::json(get()); },
            read,
            [keep, byDefault] { keep(byDefault); }};
}

// What stands behind the default of a row, or the name of the setting.
constexpr char const * storedNameOr(char const * name)
{
    return name;
}
constexpr char const * storedNameOr(char const *, char const * stored)
{
    return stored;
}

// One row of the table of settings.
#define ORVANE_LIST_SETTING(type, name, byDefault, ...)                                                                \
    settings.push_back(settingOf<type>(#name, &CProjectConfig::get##name, &CProjectConfig::set##name, byDefault,       \
                                       storedNameOr(#name __VA_OPT__(, ) __VA_ARGS__)));

std::vector<Setting> const & allSettings()
{
    static std::vector<Setting> const all = []
    {
        std::vector<Setting> settings;
        ORVANE_SETTINGS(ORVANE_LIST_SETTING)
        std::ranges::sort(settings, {}, &Setting::name);
        return settings;
    }();
    return all;
}
#undef ORVANE_LIST_SETTING

Setting const & settingNamed(std::string const & name)
{
    auto const & settings = allSettings();
    auto const found = std::ranges::find(settings, name, &Setting::name);
    if (found == settings.end())
        throw Refusal(fmt::format("no setting is called \"{}\"; orvane config list names them all", name));
    return *found;
}

// ---- the commands -----------------------------------------------------------------------------------

struct ConfigOptions
{
    std::string name;
    std::string value;
    bool asJson = false;
    bool all = false;
};

int listSettings(ConfigOptions const & options)
{
    if (options.asJson)
    {
        Json settings = Json::array();
        for (Setting const & each : allSettings())
            settings.push_back(
                {{"name", each.name}, {"value", each.get()}, {"default", each.byDefault}, {"kind", each.kind}});
        printJson(std::cout, settings);
        return ending::done;
    }
    Table table({{"Name"}, {"Value"}, {"Default"}, {"Kind"}});
    for (Setting const & each : allSettings())
        table.add({each.name, plainText(each.get()), plainText(each.byDefault), each.kind});
    table.print(std::cout);
    return ending::done;
}

int getSetting(ConfigOptions const & options)
{
    fmt::print(std::cout, "{}\n", plainText(settingNamed(options.name).get()));
    return ending::done;
}

int setSetting(ConfigOptions const & options)
{
    Setting const & setting = settingNamed(options.name);
    if (!setting.set(options.value))
        throw Refusal(fmt::format("{}: \"{}\" is not {}", setting.name, options.value, setting.kind));
    return ending::done;
}

int resetSettings(ConfigOptions const & options)
{
    if (!options.all) settingNamed(options.name).reset();
    else if (!settingsStore().removeKey(storedSettingsKey)) refuseToKeep();
    return ending::done;
}

}  // namespace

void addConfig(CLI::App & program)
{
    auto const options = std::make_shared<ConfigOptions>();
    CLI::App & config = addCommand(program, "config", "shows and changes the user's settings",
                                   "  orvane config list\n  orvane config get MaximumNumberUndoRedoStates\n"
                                   "  orvane config set GlobalCurrencyUnit EUR\n  orvane config reset --all");
    config.require_subcommand(1);
    using Action = int (*)(ConfigOptions const &);
    auto const add = [&](char const * name, char const * summary, char const * example, Action action) -> auto &
    {
        CLI::App & command = addCommand(config, name, summary, std::string("  orvane config ") + example);
        onRun(command, [options, action] { return action(*options); });
        return command;
    };
    addJson(add("list", "lists all settings", "list --json", listSettings), options->asJson);
    auto const addName = [&](CLI::App & command)
    { return command.add_option("NAME", options->name, "the setting, as list has it")->required(); };
    addName(add("get", "prints the value of a setting", "get ShowCriticalPath", getSetting));
    CLI::App & setting = add("set", "changes a setting", "set ShowCriticalPath true", setSetting);
    addName(setting);
    setting.add_option("VALUE", options->value, "the value of the setting's kind")->required();
    CLI::App & resetting =
        add("reset", "puts a setting, or all, back to the default", "reset ShowCriticalPath", resetSettings);
    addName(resetting)->required(false);
    resetting.add_flag("--all", options->all, "all that is stored, layouts of toolbars included")->excludes("NAME");
    resetting.require_option(1);
}

}  // namespace orvane::app
