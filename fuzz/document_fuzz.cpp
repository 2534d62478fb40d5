// A project's document out of hostile bytes: whatever elements stand in which, the content and the state of the views
// read them to the end, can be used and are written.

#include <cstddef>
#include <cstdint>

#include "fuzz/memory_path.h"
#include "model/project.h"
#include "rules/local_rules_checker.h"

namespace
{

template <class Part>
void readAndWrite(std::uint8_t const * bytes, std::size_t size, Part & part)
{
    CMemoryPath const file(bytes, size);
    CProjectXMLArchive().parse(file.path(), &part);
    CString document;
    CProjectXMLArchive writer;
    writer.openForWrite(&document, "", 0, "Root", "", "fuzz");
    writer.out(">");
    part.xmlSerialize(writer);
    writer.close();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const * bytes, std::size_t size)
{
    CProject project(nullptr, false);
    CProjectData data;
    readAndWrite(bytes, size, data);
    CPresentationData views;
    readAndWrite(bytes, size, views);
    project.setProjectData(&data);
    project.setPresentationData(&views);
    // Derives everything at its end.
    CLocalRulesChecker const action(&project, CRulesCheckerContext(CRulesCheckerContext::OriginatingClient));
    return 0;
}
