// The stream of a project file, of any version, out of hostile bytes: it loads, or it throws. What loads is
// stored, and what was stored loads again to the same bytes.

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <memory>
#include <vector>

#include "model/project.h"
#include "platform/file.h"
#include "platform/host.h"

namespace
{

// Refusals show a message; nobody reads it here.
class SilentHost : public orvane::IHost
{
public:
    int messageBox(CString const &, CString const &, unsigned) override { return orvane::answer::no; }
};

std::vector<unsigned char> store(CProject & project)
{
    CMemFile file;
    CProjectArchive archive(&file, CArchive::store, true);
    project.Serialize(archive);
    archive.Close();
    std::vector<unsigned char> bytes(static_cast<std::size_t>(file.GetLength()));
    file.Seek(0, CFile::begin);
    file.Read(bytes.data(), static_cast<unsigned int>(bytes.size()));
    return bytes;
}

std::unique_ptr<CProject> load(std::vector<unsigned char> bytes)
{
    auto project = std::make_unique<CProject>(nullptr, false);
    CMemFile file;
    file.Attach(bytes.data(), bytes.size());
    try
    {
        CProjectArchive archive(&file, CArchive::load, true);
        // A stream of a few megabytes shows all that a longer one would, sooner.
        archive.setBudget(1 << 22);
        project->Serialize(archive);
    }
    catch (CArchiveException const &)
    {
        project.reset();
    }
    file.Detach();
    return project;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const * data, std::size_t size)
{
    static SilentHost silent;
    orvane::setHost(&silent);
    std::unique_ptr<CProject> const project = load({data, data + size});
    if (!project) return 0;
    std::unique_ptr<CProject> const again = load(store(*project));
    if (!again) std::abort();
    std::unique_ptr<CProject> const third = load(store(*again));
    if (!third || store(*third) != store(*again)) std::abort();
    return 0;
}
