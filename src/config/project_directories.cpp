#include "config/project_directories.h"

#include "config/project_config.h"
#include "platform/file_tools.h"
#include "platform/path.h"

namespace
{

CString madeDirectory(char const * below)
{
    CString path = CProjectConfig::getSystemDirectory();
    bool const needsSeparator = !path.IsEmpty() && orvane::nativePath(path).Right(1) != orvane::nativePath("\\");
    if (needsSeparator) path += '\\';
    path += below;
    makeDirectory(path);
    return path;
}

}  // namespace

CString getClientDirectory()
{
    return madeDirectory("System\\Client\\");
}

CString getServerDirectory()
{
    return madeDirectory("System\\Server\\");
}
