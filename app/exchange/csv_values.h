#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "app/exchange/csv_reader.h"
#include "app/exchange/plan.h"

// What stands in the cells of a table of tasks. Each reading throws Refusal, with the text of the cell, for what is no
// such value.
namespace orvane::app
{

// Without blanks, tabs and ends of lines around it.
std::string_view withoutBlanks(std::string_view text);
// What of a name tells it from others: letters and digits in lower case. "% Complete" is "percentcomplete".
std::string plainWord(std::string_view text);
// The parts between separators, trimmed, without empty ones.
std::vector<std::string_view> splitAt(std::string_view text, char separator);
// Says that the text is not what it should be.
[[noreturn]] void refuseCell(std::string_view text, std::string_view what);

// With a decimal point or comma and a sign; a percent sign may follow. `what` says what it is not, if it is none.
double readCsvNumber(std::string_view text, char const * what);
// Money comes with signs of currencies and with separators of thousands, of either kind.
double readCsvMoney(std::string_view text);

struct CsvDuration
{
    double minutes = 0;
    bool isElapsed = false;
};

// "5 days", "5d", "1,5w", "5 edays" of the clock, "5" days, "3 days?" of an estimate. Not negative.
CsvDuration readCsvDuration(std::string_view text);

// How the dates of one file are read.
class CsvDates
{
public:
    explicit CsvDates(DateOrder order) : order(order) {}

    // Learns from a date that has only one reading.
    void learnFrom(std::string_view text);
    // A date without a time is at the minute `without` of its day.
    Minute read(std::string_view text, int without) const;

private:
    DateOrder order;
};

// A link as it is written; the predecessor by its identifier.
struct CsvLink
{
    int id = 0;
    PlanLink link;
};

// "12FS+2d;15SS", separated by semicolons or commas.
std::vector<CsvLink> readLinks(std::string_view text);

// "Crew", "Crew[50%]", "Sand[5 m3]".
struct CsvAssignment
{
    std::string_view name;
    double units = 1;
    bool isMaterial = false;
};

// Without an amount in brackets behind the name it is one unit.
CsvAssignment readAssignment(std::string_view text);

}  // namespace orvane::app
