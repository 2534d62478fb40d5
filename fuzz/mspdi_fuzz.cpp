// A schedule in Microsoft Project's XML out of hostile bytes: reading ends in a plan or in a refusal of one line. What
// was read is written, and what was written is read without complaint and written the same again.

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>

#include "app/command.h"
#include "app/exchange/mspdi_reader.h"
#include "app/exchange/mspdi_writer.h"

using namespace orvane::app;

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const * data, std::size_t size)
{
    Plan plan;
    try
    {
        plan = readMspdi(std::string(reinterpret_cast<char const *>(data), size), "fuzz");
    }
    catch (Refusal const &)
    {
        return 0;
    }
    std::string const document = writeMspdi(plan);
    if (writeMspdi(readMspdi(document, "again")) != document) std::abort();
    return 0;
}
