// Tables of tasks out of hostile bytes: whatever is accepted is a plan, and as a table again it is the same plan.

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>

#include "app/command.h"
#include "app/exchange/csv_reader.h"
#include "app/exchange/csv_writer.h"
#include "app/exchange/plan_check.h"

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const * data, std::size_t size)
{
    using namespace orvane::app;
    if (size == 0) return 0;
    Plan plan;
    try
    {
        // The first byte says how dates are meant.
        plan = readCsv(std::string(reinterpret_cast<char const *>(data) + 1, size - 1), "table",
                       static_cast<DateOrder>(data[0] % 3));
        checkPlan(plan, "table");
    }
    catch (Refusal const &)
    {
        return 0;
    }
    // From here on nothing may be refused.
    std::string const text = writeCsv(plan);
    Plan const again = readCsv(text, "table", DateOrder::found);
    if (again.tasks.size() != plan.tasks.size() || again.assignments.size() != plan.assignments.size() ||
        writeCsv(again) != text)
        std::abort();
    return 0;
}
