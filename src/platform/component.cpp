#include "platform/component.h"

#include <cstdint>
#include <filesystem>
#include <memory>
#include <system_error>

#include <dlfcn.h>

#include "platform/message.h"
#include "platform/path.h"

namespace
{

using Register = std::int32_t (*)();
using Library = std::unique_ptr<void, int (*)(void *)>;

}  // namespace

bool registerOCX(CString const & file, bool showErrors)
{
    std::filesystem::path const given(orvane::nativePath(file).view());
    std::error_code ignored;
    std::filesystem::path const directory =
        given.has_parent_path() ? given.parent_path() : std::filesystem::current_path(ignored);

    Library const library(dlopen((directory / given.filename()).c_str(), RTLD_NOW | RTLD_LOCAL), dlclose);
    if (!library)
    {
        if (showErrors) warning("Cannot load %s in %s", given.filename().c_str(), directory.c_str());
        return false;
    }
    auto const registerServer = reinterpret_cast<Register>(dlsym(library.get(), "DllRegisterServer"));
    if (!registerServer)
    {
        if (showErrors) warning("Cannot find dllRegisterServer");
        return false;
    }
    return registerServer() >= 0;
}
