#include "model/project.h"

#include <climits>
#include <utility>

#include <unistd.h>

#include "persistence/compressed_file.h"
#include "persistence/project_file.h"
#include "platform/file_tools.h"
#include "platform/io_error.h"
#include "platform/message.h"
#include "platform/path.h"
#include "platform/saturate.h"
#include "platform/string_table.h"

namespace
{

// A file of one part of a project.
template <class Part>
int savePart(Part & part, CString const & fileName)
{
    CFileException failure;
    bool const opened = orvane::storeProjectFile(fileName, failure, [&](CProjectArchive & archive) { part.Serialize(archive); });
    if (!opened) reportIOError(fileName, failure);
    return opened;
}

template <class Part>
int readPart(Part & part, CString const & fileName)
{
    CFileException failure;
    bool refused = false;
    bool const opened = orvane::loadProjectFile(fileName, failure, [&](CProjectArchive & archive) {
        part.Serialize(archive);
        refused = !archive.GetFile();
    });
    if (!opened) reportIOError(fileName, failure);
    return opened && !refused;
}

}  // namespace

// ---- the stream -------------------------------------------------------------------------------------

void CProject::Serialize(CProjectArchive & archive)
{
    // Files with another text here are read all the same.
    CString header = "Orvane Schedule Project";
    archive.exchange(header);
    archive.skipUntil<CUserID>(38);
    projectData.Serialize(archive);
    // Refused there, and not complete.
    if (!archive.GetFile()) archive.refuse();
    if (archive.fileVersion() >= 39) archive.exchange(presentationData);
    else presentationData.clear();
    if (archive.IsLoading()) postSerialize();
}

int CProject::saveToFile(CString const & fileName)
{
    return save(fileName, orvane::Packing::tight);
}

int CProject::saveState(CString const & fileName)
{
    return save(fileName, orvane::Packing::quick);
}

int CProject::save(CString const & fileName, orvane::Packing packing)
{
    if (std::exchange(saving, true)) return 0;
    CFileException failure;
    // What is thrown from here leaves the guard set: no further save is tried after one that broke off.
    auto const exchange = [this](CProjectArchive & archive) { Serialize(archive); };
    bool const opened = orvane::storeProjectFile(fileName, failure, exchange, packing);
    saving = false;
    if (!opened) reportIOError(fileName, failure);
    return opened;
}

int CProject::readFromFile(CString const & fileName, bool throwOnError)
{
    if (std::exchange(loading, true)) return 0;
    bool read = false;
    try
    {
        CFileException failure;
        read = orvane::loadProjectFile(fileName, failure, [this](CProjectArchive & archive) { Serialize(archive); });
    }
    catch (...)
    {
        // What was read stays; it belongs to this project.
        projectData.setProject(this);
        presentationData.setProject(this);
    }
    loading = false;
    if (!read && throwOnError) throw 0;
    return read;
}

int CProjectData::saveToFile(CString const & fileName)
{
    return savePart(*this, fileName);
}

int CProjectData::readFromFile(CString const & fileName)
{
    return readPart(*this, fileName);
}

int CPresentationData::saveToFile(CString const & fileName)
{
    return savePart(*this, fileName);
}

int CPresentationData::readFromFile(CString const & fileName)
{
    return readPart(*this, fileName);
}

// ---- the recovery file ------------------------------------------------------------------------------

void CProject::saveRecoveryFile()
{
    if (fullHistory || !projectData.scene.isEmpty()) return;
    SECCompressFile file;
    CFileException failure;
    if (!file.Open(recoveryFileName(), CFile::modeCreate | CFile::modeWrite | CFile::modeOwn, &failure))
        return reportIOError(recoveryFileName(), failure);
    try
    {
        CProjectArchive archive(&file, CArchive::store, true);
        Serialize(archive);
        archive.Close();
        file.Close();
    }
    catch (CFileException & failed)
    {
        // A convenience that fails does not stop the action that it precedes.
        reportIOError(recoveryFileName(), failed);
    }
}

CString const & CProject::recoveryFileName()
{
    static CString const name = getTempPath() + "OrvaneSchedule." + "prj";
    return name;
}

bool CProject::recoveryFileExists()
{
    return fileExists(recoveryFileName());
}

void CProject::removeRecoveryFile()
{
    if (recoveryFileExists()) unlink(orvane::nativePath(recoveryFileName()));
}

// ---- states -----------------------------------------------------------------------------------------

void CProject::setProjectNameDirectoryAndHistoryDirectory(CString const & name, CString const & folder, CString const & historyFolder)
{
    projectName = name;
    directory = folder;
    projectHistoryDirectory = historyFolder;
    undoRedoList.setProjectNameDirectoryAndHistoryDirectory(name, folder, historyFolder);
}

void CProject::setFullHistory(bool keep)
{
    fullHistory = keep;
    undoRedoList.setFullHistory(keep);
}

void CProject::pushState(CString const & name)
{
    if (!fullHistory) saveRecoveryFile();
    undoRedoList.storeState();
    undoRedoList.clearUndoStack();
    currentStateName = name;
}

void CProject::pullState(bool saveRecovery)
{
    if (!fullHistory && saveRecovery) saveRecoveryFile();
    int const index = projectData.stateIndex.getValue();
    if (index >= 1) undoRedoList.loadState(index);
}

bool CProject::undo(int count)
{
    int const index = projectData.stateIndex.getValue();
    if (index < 1 || count < 1 || count > index) return false;
    // So that redo can come back.
    if (!undoRedoList.hasState(index)) undoRedoList.storeState();
    if (!undoRedoList.loadState(index - count)) return false;
    if (getCurrentUser()) return true;
    warning(orvane::loadString(orvane::text::undoPastLogin));
    return redo(count);
}

bool CProject::redo(int count)
{
    int const index = projectData.stateIndex.getValue();
    return count >= 1 && index <= INT_MAX - count && undoRedoList.loadState(index + count);
}

bool CProject::canUndo() const
{
    return undoRedoList.hasState(orvane::saturate<int>(projectData.stateIndex.getValue() - std::int64_t{1}));
}

bool CProject::canRedo() const
{
    return undoRedoList.hasState(orvane::saturate<int>(projectData.stateIndex.getValue() + std::int64_t{1}));
}

void CProject::clearRedoAndUndoStack()
{
    clearRedoStack();
    clearUndoStack();
}

CString const & CProject::getUndoStateName() const
{
    static CString const none;
    return none;
}

CString const & CProject::getRedoStateName() const
{
    static CString const none;
    return none;
}
