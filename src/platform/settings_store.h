#pragma once

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <memory>
#include <optional>
#include <variant>
#include <vector>

#include "platform/string.h"

namespace orvane
{

// A value as it is stored: a number of 32 bits, a text, or bytes.
using StoredValue = std::variant<std::uint32_t, CString, std::vector<std::byte>>;

// Where settings outlast the process: typed values under names, in keys that lie in keys. A path of keys
// separates its levels by "\"; empty levels count for nothing. The case of ASCII letters in paths and
// names makes no difference. A key is there while it or a key below it holds a value.
//
// What cannot be done is not done at all. All members may be called from any thread, and the same store
// may be in use by other processes.
class ISettingsStore
{
public:
    virtual ~ISettingsStore() = default;

    // None when the value is missing, cannot be read or is of no type above.
    virtual std::optional<StoredValue> read(CString const & key, CString const & name) = 0;
    // Makes the keys that are missing, and puts the value in the place of any other of its name. False
    // on failure, and for the empty path.
    virtual bool write(CString const & key, CString const & name, StoredValue const & value) = 0;
    // The names of the keys directly below a key, in alphabetical order.
    virtual std::vector<CString> subkeys(CString const & key) = 0;
    // Removes a key with everything in it and below it. True when that was done, whether or not there was
    // such a key; false on failure, and for the empty path.
    virtual bool removeKey(CString const & key) = 0;
};

// A store in a file of its own, which is made, with its directory, by the first value written. What is at
// the path and is no such file, or is damaged, counts as empty, cannot be written and stays as it is.
std::unique_ptr<ISettingsStore> makeSettingsFile(std::filesystem::path const & path);

// Where the user's settings are: orvane/settings.db below $XDG_CONFIG_HOME or, where that is no absolute
// path, below ~/.config. Empty when there is no home either; a store there holds nothing.
std::filesystem::path userSettingsFile();

// The store in use: the one given last, at first the user's file.
ISettingsStore & settingsStore();

// Puts a store in the place of the present one and gives that back; null stands for the user's file. The
// store stays the caller's, and must live until it is replaced. Not while another thread uses settings.
ISettingsStore * setSettingsStore(ISettingsStore * store);

}  // namespace orvane
