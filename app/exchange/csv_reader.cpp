#include "app/exchange/csv_reader.h"

#include <algorithm>
#include <charconv>
#include <map>
#include <string_view>
#include <unordered_map>
#include <utility>

#include <csv.h>
#include <fmt/format.h>

#include "app/command.h"
#include "app/exchange/csv_values.h"

namespace orvane::app
{
namespace
{

// More than any schedule has, and less than any memory.
constexpr std::size_t mostCsvRows = 1'000'000;
constexpr int mostCsvColumns = 1'000;

// ---- texts ------------------------------------------------------------------------------------------

bool isUtf8(std::string_view text)
{
    for (std::size_t at = 0; at < text.size();)
    {
        auto const first = static_cast<unsigned char>(text[at]);
        std::size_t const length = first < 0x80   ? 1
                                   : first < 0xC2 ? 0
                                   : first < 0xE0 ? 2
                                   : first < 0xF0 ? 3
                                   : first < 0xF5 ? 4
                                                  : 0;
        if (length == 0 || at + length > text.size()) return false;
        for (std::size_t next = at + 1; next < at + length; ++next)
            if ((static_cast<unsigned char>(text[next]) & 0xC0) != 0x80) return false;
        at += length;
    }
    return true;
}

std::string fromLatin1(std::string_view text)
{
    std::string utf8;
    utf8.reserve(text.size() + text.size() / 8);
    for (char const c : text)
    {
        auto const byte = static_cast<unsigned char>(c);
        if (byte < 0x80) utf8 += c;
        else (utf8 += static_cast<char>(0xC0 | byte >> 6)) += static_cast<char>(0x80 | (byte & 0x3F));
    }
    return utf8;
}

// ---- columns ----------------------------------------------------------------------------------------

// clang-format off
enum class CsvColumn
{
    unknown, id, name, level, duration, start, finish, predecessors, resources, notes, percent, constraintType,
    constraintDate, milestone, actualStart, actualFinish, category, fixedCost, deadline, baselineStart, baselineFinish,
    baselineDuration, baselineCost, mode, active, summary,
};
// clang-format on

CsvColumn columnOf(std::string_view heading)
{
    using enum CsvColumn;
    // clang-format off
    static std::map<std::string, CsvColumn, std::less<>> const known = {
        {"id", id}, {"name", name}, {"taskname", name}, {"task", name}, {"outlinelevel", level}, {"level", level},
        {"duration", duration}, {"start", start}, {"startdate", start}, {"finish", finish}, {"finishdate", finish},
        {"end", finish}, {"enddate", finish}, {"predecessors", predecessors}, {"resourcenames", resources},
        {"resources", resources}, {"notes", notes}, {"percentcomplete", percent}, {"constrainttype", constraintType},
        {"constraint", constraintType}, {"constraintdate", constraintDate}, {"milestone", milestone},
        {"actualstart", actualStart}, {"actualfinish", actualFinish}, {"category", category}, {"fixedcost", fixedCost},
        {"deadline", deadline}, {"baselinestart", baselineStart}, {"baselinefinish", baselineFinish},
        {"baselineduration", baselineDuration}, {"baselinecost", baselineCost}, {"taskmode", mode}, {"active", active},
        {"summary", summary},
    };
    // clang-format on
    auto const found = known.find(plainWord(heading));
    return found == known.end() ? unknown : found->second;
}

bool readYesNo(std::string_view text)
{
    std::string const word = plainWord(text);
    for (char const * yes : {"yes", "y", "true", "1"})
        if (word == yes) return true;
    for (char const * no : {"no", "n", "false", "0"})
        if (word == no) return false;
    refuseCell(text, "is neither yes nor no");
}

PlanConstraint readConstraint(std::string_view text)
{
    using enum PlanConstraint;
    // clang-format off
    static std::map<std::string, PlanConstraint, std::less<>> const known = {
        {"assoonaspossible", asSoonAsPossible}, {"asap", asSoonAsPossible}, {"aslateaspossible", asLateAsPossible},
        {"alap", asLateAsPossible}, {"muststarton", mustStartOn}, {"mso", mustStartOn}, {"mustfinishon", mustFinishOn},
        {"mfo", mustFinishOn}, {"startnoearlierthan", startNoEarlierThan}, {"snet", startNoEarlierThan},
        {"startnolaterthan", startNoLaterThan}, {"snlt", startNoLaterThan},
        {"finishnoearlierthan", finishNoEarlierThan}, {"fnet", finishNoEarlierThan},
        {"finishnolaterthan", finishNoLaterThan}, {"fnlt", finishNoLaterThan},
    };
    // clang-format on
    auto const found = known.find(plainWord(text));
    if (found == known.end()) refuseCell(text, "is no constraint; one is written as Must Start On");
    return found->second;
}

bool readsMode(std::string_view text)
{
    return plainWord(text).starts_with("manual");
}

// ---- rows -------------------------------------------------------------------------------------------

// A row of the file without its empty cells.
struct CsvRow
{
    struct Cell
    {
        int column;
        std::string text;
    };
    int line = 0;
    std::vector<Cell> cells;
};

// The rows of a text, as the library hands them out cell by cell.
class CsvRows
{
public:
    CsvRows(std::string const & fileName, char separator) : fileName(fileName)
    {
        csv_init(&parser, CSV_STRICT | CSV_STRICT_FINI);
        csv_set_delim(&parser, static_cast<unsigned char>(separator));
        if (separator == '\t') csv_set_space_func(&parser, [](unsigned char c) { return int{c == ' '}; });
    }
    CsvRows(CsvRows const &) = delete;
    CsvRows & operator=(CsvRows const &) = delete;
    ~CsvRows() { csv_free(&parser); }

    // Line by line, so that each row knows where it begins.
    std::vector<CsvRow> read(std::string_view text)
    {
        while (!text.empty())
        {
            ++line;
            if (row.cells.empty() && parser.pstate == 0) row.line = line;
            std::size_t length = std::min(text.find_first_of("\r\n"), text.size());
            length += text.substr(length).starts_with("\r\n") ? 2 : length < text.size();
            if (csv_parse(&parser, text.data(), length, &onCell, &onRow, this) != length)
                refuse(row.line, csv_error(&parser) == CSV_EPARSE
                                     ? "a quotation mark stands inside a cell, or the cell goes on behind it"
                                     : "a cell is too long");
            if (tooMuch) refuse(line, tooMuch);
            text.remove_prefix(length);
        }
        if (csv_fini(&parser, &onCell, &onRow, this) != 0)
            refuse(row.line, "a quotation mark is opened and not closed");
        return std::move(rows);
    }

private:
    [[noreturn]] void refuse(int where, char const * what) const
    {
        throw Refusal(fmt::format("{}: line {}: {}", fileName, where, what));
    }
    static void onCell(void * cell, std::size_t length, void * self)
    {
        auto & me = *static_cast<CsvRows *>(self);
        std::string_view const text = withoutBlanks({static_cast<char const *>(cell), length});
        if (me.column >= mostCsvColumns) me.tooMuch = "there are too many columns";
        else if (!text.empty() || me.rows.empty()) me.row.cells.push_back({me.column, std::string(text)});
        ++me.column;
    }
    static void onRow(int, void * self)
    {
        auto & me = *static_cast<CsvRows *>(self);
        if (me.rows.size() >= mostCsvRows) me.tooMuch = "there are too many rows";
        else me.rows.push_back(std::move(me.row));
        // Where the next row begins is known when its line is met.
        me.row = {me.line + 1, {}};
        me.column = 0;
    }

    csv_parser parser;
    std::string const & fileName;
    std::vector<CsvRow> rows;
    CsvRow row;
    int line = 0;
    int column = 0;
    char const * tooMuch = nullptr;
};

// The sign that stands most often in the first line outside of quotation marks.
char separatorOf(std::string_view text)
{
    std::size_t counts[3] = {0, 0, 0};
    constexpr std::string_view separators = ",;\t";
    bool isQuoted = false;
    for (char const c : text.substr(0, std::min(text.find_first_of("\r\n"), text.size())))
    {
        if (c == '"') isQuoted = !isQuoted;
        std::size_t const which = separators.find(c);
        if (!isQuoted && which != separators.npos) ++counts[which];
    }
    return separators[static_cast<std::size_t>(std::max_element(counts, counts + 3) - counts)];
}

// ---- the plan ---------------------------------------------------------------------------------------

constexpr int startOfWork = 9 * 60, endOfWork = 17 * 60;

class CsvPlanReader
{
public:
    CsvPlanReader(std::string const & fileName, DateOrder order) : fileName(fileName), dates(order) {}

    Plan read(std::string_view text)
    {
        std::vector<CsvRow> const rows = CsvRows(fileName, separatorOf(text)).read(text);
        if (rows.empty()) throw Refusal(fileName + ": the file is empty");
        readHeadings(rows[0]);
        for (CsvRow const & row : rows) learnDates(row);
        plan.tasks.reserve(rows.size());
        for (std::size_t each = 1; each < rows.size(); ++each) readRow(rows[each]);
        for (PendingLink const & pending : pendingLinks) connect(pending);
        for (auto const & [column, count] : unknownCells)
            plan.losses.push_back(
                {"", fmt::format("the column \"{}\" ({} {})", headings[column], count, count == 1 ? "cell" : "cells")});
        return std::move(plan);
    }

private:
    void readHeadings(CsvRow const & row)
    {
        for (CsvRow::Cell const & cell : row.cells)
        {
            headings.push_back(cell.text);
            CsvColumn const column = columnOf(cell.text);
            // The first of two columns of the same name counts.
            bool const isNew = std::find(columns.begin(), columns.end(), column) == columns.end();
            columns.push_back(isNew ? column : CsvColumn::unknown);
        }
        // What lies beyond.
        headings.emplace_back();
        hasIDs = std::find(columns.begin(), columns.end(), CsvColumn::id) != columns.end();
        if (std::find(columns.begin(), columns.end(), CsvColumn::name) == columns.end())
            throw Refusal(fileName + ": line 1: there is no column \"Name\"; the first line names the columns");
    }

    CsvColumn columnAt(int column) const
    {
        return static_cast<std::size_t>(column) < columns.size() ? columns[static_cast<std::size_t>(column)]
                                                                 : CsvColumn::unknown;
    }

    void learnDates(CsvRow const & row)
    {
        using enum CsvColumn;
        for (CsvRow::Cell const & cell : row.cells)
            for (CsvColumn const date :
                 {start, finish, constraintDate, actualStart, actualFinish, deadline, baselineStart, baselineFinish})
                if (columnAt(cell.column) == date) dates.learnFrom(cell.text);
    }

    [[noreturn]] void refuse(PlanTask const & task, std::string const & what) const
    {
        std::string const who = task.name.empty() ? "" : fmt::format("task \"{}\": ", task.name);
        throw Refusal(fmt::format("{}: line {}: {}{}", fileName, task.line, who, what));
    }

    void readRow(CsvRow const & row)
    {
        PlanTask & task = plan.tasks.emplace_back();
        task.uid = static_cast<int>(plan.tasks.size());
        task.id = task.uid;
        task.line = row.line;
        task.outlineLevel = lastLevel == 0 ? 1 : lastLevel;
        bool hasContent = false;
        for (CsvRow::Cell const & cell : row.cells)
            if (columnAt(cell.column) == CsvColumn::name) task.name = cell.text;
        try
        {
            for (CsvRow::Cell const & cell : row.cells)
            {
                CsvColumn const column = columnAt(cell.column);
                readCell(task, column, cell);
                hasContent |= column != CsvColumn::id && column != CsvColumn::level && column != CsvColumn::unknown;
            }
        }
        catch (Refusal const & wrong)
        {
            refuse(task, wrong.what());
        }
        task.isBlank = !hasContent;
        finish(task);
    }

    void finish(PlanTask & task)
    {
        if (!numbers.emplace(task.id, task.uid).second) refuse(task, fmt::format("the ID {} stands twice", task.id));
        // A row above all others is the schedule itself.
        if (task.outlineLevel == 0 && plan.tasks.size() == 1 && !task.isBlank)
        {
            plan.name = task.name;
            numbers.clear();
            pendingLinks.clear();
            plan.assignments.clear();
            plan.resources.clear();
            resources.clear();
            plan.tasks.pop_back();
            return;
        }
        // A row without content is nobody's parent.
        if (task.isBlank)
        {
            task.outlineLevel = std::max(task.outlineLevel, 1);
            return;
        }
        if (task.outlineLevel < 1) refuse(task, "the outline level is less than 1");
        if (task.outlineLevel > lastLevel + 1)
            refuse(task, lastLevel == 0 ? fmt::format("the first task is of outline level {}", task.outlineLevel)
                                        : fmt::format("outline level {} follows level {}: there is no parent",
                                                      task.outlineLevel, lastLevel));
        lastLevel = task.outlineLevel;
        task.isMilestone = task.isMilestone || task.duration == 0;
    }

    void readCell(PlanTask & task, CsvColumn column, CsvRow::Cell const & cell)
    {
        std::string_view const text = cell.text;
        auto const start = [&] { return dates.read(text, startOfWork); };
        auto const end = [&] { return dates.read(text, endOfWork); };
        auto const baseline = [&]() -> PlanBaseline &
        { return task.baseline ? *task.baseline : task.baseline.emplace(); };
        switch (column)
        {
            case CsvColumn::unknown:
                ++unknownCells[std::min(static_cast<std::size_t>(cell.column), headings.size() - 1)];
                break;
            case CsvColumn::id: task.id = readWhole(text); break;
            case CsvColumn::name: break;
            case CsvColumn::level: task.outlineLevel = readWhole(text); break;
            case CsvColumn::duration:
            {
                CsvDuration const duration = readCsvDuration(text);
                task.duration = static_cast<Minute>(duration.minutes);
                task.isElapsed = duration.isElapsed;
                break;
            }
            case CsvColumn::start: task.start = start(); break;
            case CsvColumn::finish: task.finish = end(); break;
            case CsvColumn::predecessors:
                for (CsvLink const & link : readLinks(text)) pendingLinks.push_back({plan.tasks.size() - 1, link});
                break;
            case CsvColumn::resources: readAssignments(task, text); break;
            case CsvColumn::notes: task.notes = text; break;
            case CsvColumn::percent:
                task.percentComplete = readCsvNumber(text, "is no percentage");
                if (task.percentComplete < 0 || task.percentComplete > 100)
                    refuseCell(text, "is no percentage from 0 to 100");
                break;
            case CsvColumn::constraintType: task.constraint = readConstraint(text); break;
            case CsvColumn::constraintDate: task.constraintDate = start(); break;
            case CsvColumn::milestone: task.isMilestone = readYesNo(text); break;
            case CsvColumn::actualStart: task.actualStart = start(); break;
            case CsvColumn::actualFinish: task.actualFinish = end(); break;
            case CsvColumn::category: task.category = text; break;
            case CsvColumn::fixedCost: task.fixedCost = readCsvMoney(text); break;
            case CsvColumn::deadline: task.deadline = end(); break;
            case CsvColumn::baselineStart: baseline().start = start(); break;
            case CsvColumn::baselineFinish: baseline().finish = end(); break;
            case CsvColumn::baselineDuration:
                baseline().duration = static_cast<Minute>(readCsvDuration(text).minutes);
                break;
            case CsvColumn::baselineCost: baseline().cost = readCsvMoney(text); break;
            case CsvColumn::mode: task.isManual = readsMode(text); break;
            case CsvColumn::active: task.isActive = readYesNo(text); break;
            // Those that have tasks below are.
            case CsvColumn::summary: break;
        }
    }

    static int readWhole(std::string_view text)
    {
        int number = 0;
        auto const [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
        if (error != std::errc() || end != text.data() + text.size() || number < 0)
            refuseCell(text, "is no whole number");
        return number;
    }

    void readAssignments(PlanTask const & task, std::string_view text)
    {
        for (std::string_view const part : splitAt(text, text.find(';') != text.npos ? ';' : ','))
        {
            CsvAssignment const read = readAssignment(part);
            auto const [known, isNew] =
                resources.try_emplace(std::string(read.name), static_cast<int>(plan.resources.size()) + 1);
            if (isNew)
            {
                PlanResource & resource = plan.resources.emplace_back();
                resource.uid = known->second;
                resource.name = read.name;
                if (read.isMaterial) resource.kind = PlanResourceKind::material;
            }
            plan.assignments.push_back({task.uid, known->second, read.units});
        }
    }

    struct PendingLink
    {
        std::size_t task;
        CsvLink link;
    };
    // Predecessors may stand further down.
    void connect(PendingLink const & pending)
    {
        PlanTask & task = plan.tasks[pending.task];
        auto const predecessor = numbers.find(pending.link.id);
        if (predecessor == numbers.end())
            refuse(task, hasIDs ? fmt::format("there is no task with the ID {} that it follows", pending.link.id)
                                : fmt::format("there is no row {} that it follows", pending.link.id));
        task.links.push_back(pending.link.link);
        task.links.back().predecessorUID = predecessor->second;
    }

    std::string const & fileName;
    CsvDates dates;
    Plan plan;
    std::vector<std::string> headings;
    std::vector<CsvColumn> columns;
    bool hasIDs = false;
    int lastLevel = 0;
    std::unordered_map<int, int> numbers;
    std::unordered_map<std::string, int> resources;
    std::vector<PendingLink> pendingLinks;
    std::map<std::size_t, int> unknownCells;
};

}  // namespace

Plan readCsv(std::string const & text, std::string const & fileName, DateOrder order)
{
    std::string_view content = text;
    if (content.starts_with("\xFF\xFE") || content.starts_with("\xFE\xFF"))
        throw Refusal(fileName + ": the text is UTF-16; save it as UTF-8");
    if (content.find('\0') != content.npos) throw Refusal(fileName + ": is no text");
    if (content.starts_with("\xEF\xBB\xBF")) content.remove_prefix(3);
    CsvPlanReader reader(fileName, order);
    if (isUtf8(content)) return reader.read(content);
    Plan plan = reader.read(fromLatin1(content));
    plan.losses.push_back({"", "the text is no UTF-8 and was read as Latin-1: letters with accents may be wrong"});
    return plan;
}

}  // namespace orvane::app
