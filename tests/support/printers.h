#pragma once

#include <concepts>
#include <ostream>
#include <string>

#include "model/project.h"

// Values as short texts: in digests, and in what a failing test prints.

namespace orvane
{

// As "01-05 09:00", with the year in front unless it is 2004, the year of the tests; "?" when not valid.
std::string text(CProjectTime const & time);
// In working days of eight hours: "5d", "1d4h", "30m", "0"; "?" when not valid.
std::string text(CProjectDuration const & duration);

// A schedule as text. One line a task, indented by depth, in the order of the rows:
//     dig: 01-05 09:00 > 01-09 17:00 5d, after survey FS, after plan SS+2h
// Behind the working duration stand a status other than Hold, "key date", "constrained", "buffer",
// "template", stored risk, and the links with their lag in clock time. A blank row is "-".
std::string digest(CTaskArray const & tasks, CProject const * project = nullptr);
std::string digest(CProject const & project);

}  // namespace orvane

inline void PrintTo(CProjectTime const & time, std::ostream * out)
{
    *out << orvane::text(time);
}
inline void PrintTo(CProjectDuration const & duration, std::ostream * out)
{
    *out << orvane::text(duration);
}
inline void PrintTo(CString const & text, std::ostream * out)
{
    *out << '"' << text.view() << '"';
}
inline void PrintTo(CProjectString const & text, std::ostream * out)
{
    *out << '"' << text.view() << (text.isValid() ? "\"" : "\" (not valid)");
}
template <std::derived_from<CIDBase> ID>
void PrintTo(ID const & id, std::ostream * out)
{
    *out << id.tagName().view() << ' ' << (id.isNULL() ? std::string_view("NULL") : id.toString().view());
}
