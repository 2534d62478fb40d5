#include "config/project_constants.h"

#include <algorithm>
#include <iterator>

namespace
{

struct StatusColor
{
    CTaskStatus::TASK_STATUS status;
    unsigned long color;
};
constexpr StatusColor statusColors[] = {
    {CTaskStatus::Hold, 0x0000FF},     {CTaskStatus::Approved, 0x007FFF}, {CTaskStatus::Ready, 0x00FFFF},
    {CTaskStatus::Go, 0x00FF00},       {CTaskStatus::TBA, 0x507B8F},      {CTaskStatus::Started, 0x7F7F7F},
    {CTaskStatus::Finished, 0xFF0000},
};
constexpr unsigned long white = 0xFFFFFF;

}  // namespace

// By comparison: the number of a status that is none would read as the first.
unsigned long CProjectConstants::getColor(CTaskStatus const & status)
{
    auto const row = std::find_if(std::begin(statusColors), std::end(statusColors),
                                  [&](StatusColor const & each) { return status == each.status; });
    return row == std::end(statusColors) ? white : row->color;
}
