#pragma once

#include <string>

#include "app/exchange/plan.h"

namespace orvane::app
{

// Which of the numbers of a date such as 03/04/2027 comes first.
enum class DateOrder
{
    // As dates of the file that have only one reading say; a file without any such date is refused.
    found,
    dayFirst,
    monthFirst,
};

// Reads a table of tasks as spreadsheets write it: one task a row, columns by the names in the first row, of which Name
// alone is needed. Separators are commas, semicolons or tabs. A day of work counts as 8 hours, a week as 5 days and a
// month as 20; a date without a time is the start of work, 09:00, or as a finish its end, 17:00.
//
// Refuses with the file and the line what is no such table, and values that cannot be. Columns that a plan has no place
// for are among its losses.
Plan readCsv(std::string const & text, std::string const & fileName, DateOrder order);

}  // namespace orvane::app
