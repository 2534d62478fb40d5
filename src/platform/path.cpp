#include "platform/path.h"

#include <filesystem>
#include <system_error>

namespace orvane
{

CString nativePath(CString const & path)
{
    CString result = path;
    if constexpr (std::filesystem::path::preferred_separator != '\\')
        result.Replace('\\', static_cast<char>(std::filesystem::path::preferred_separator));
    return result;
}

}  // namespace orvane

CString getTempPath()
{
    std::error_code failure;
    std::filesystem::path const directory = std::filesystem::temp_directory_path(failure);
    CString path = failure ? CString("/tmp") : CString(directory.native());
    if (path.Right(1) != "/") path += '/';
    return path;
}

CString getExtension(CString const & path)
{
    int const point = path.ReverseFind('.');
    return point < 0 ? CString() : path.Mid(point);
}

void setExtension(CString & path, CString const & extension)
{
    path += '.';
    path += extension;
}

void removeExtension(CString & path)
{
    int const point = path.ReverseFind('.');
    if (point >= 0) path = path.Left(point);
}
