#include "persistence/project_file.h"

#include "persistence/compressed_file.h"
#include "persistence/read_ahead.h"
#include "persistence/replaced_file.h"

namespace orvane
{

bool storeProjectFile(CString const & fileName, CFileException & failure, Exchange const & exchange, Packing packing)
{
    CReplacedFile target(fileName);
    SECCompressFile file;
    if (packing == Packing::quick) file.setQuick();
    if (!target.open(file, &failure)) return false;
    CProjectArchive archive(&file, CArchive::store, true);
    exchange(archive);
    archive.Close();
    file.Close();
    target.commit();
    return true;
}

bool loadProjectFile(CString const & fileName, CFileException & failure, Exchange const & exchange)
{
    SECCompressFile file;
    if (!file.Open(fileName, CFile::modeRead, &failure)) return false;
    {
        CReadAhead ahead(file);
        CProjectArchive archive(&ahead, CArchive::load, true);
        exchange(archive);
        archive.Close();
    }
    file.Close();
    return true;
}

}  // namespace orvane
