#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "app/exchange/mspdi_calendar.h"
#include "app/exchange/plan.h"

// Which elements a document of the interchange may have, and what becomes of each.
namespace orvane::app
{

// The element that others stand in.
enum class MspdiContext : std::uint8_t
{
    document,
    project,
    attributeDefinitions,
    attributeDefinition,
    calendars,
    calendar,
    weekDays,
    weekDay,
    exceptions,
    exception,
    period,
    workingTimes,
    workingTime,
    workWeeks,
    workWeek,
    workWeekPeriod,
    tasks,
    task,
    link,
    baseline,
    customField,
    resources,
    resource,
    rates,
    rate,
    assignments,
    assignment,
    byPeriod,
    // Whose children are counted as lost, each.
    counted,
    // Nothing inside matters.
    skipped,
    leaf,
};

// What the elements leave behind: the plan so far, and the parts being read.
struct MspdiDraft
{
    Plan plan;
    std::string documentName, title, currencySymbol;

    struct Definition
    {
        int field = 0;
        std::string alias;
    } definition;
    // The custom field of tasks that holds their category.
    int categoryField = 0;
    struct CustomField
    {
        int field = 0;
        std::string value;
    } customField;

    std::vector<MspdiCalendar> calendars;
    MspdiCalendar calendar;
    MspdiWorkWeek workWeek;
    bool inWorkWeek = false;
    MspdiException day;
    struct Times
    {
        std::optional<int> from, to;
    } times;

    PlanTask task;
    struct TaskExtras
    {
        int type = 0;
        int durationFormat = 0;
        double percentWorkComplete = -1;
        std::string wbs, outlineNumber;
    } taskExtras;
    struct Link
    {
        PlanLink link;
        int lagFormat = 0;
        bool isCrossProject = false;
    } link;
    struct Baseline
    {
        PlanBaseline baseline;
        int number = 0;
    } baseline;

    PlanResource resource;
    struct ResourceExtras
    {
        int id = -1;
        int type = 1;
        bool isCost = false;
        bool isBlank = false;
    } resourceExtras;

    PlanAssignment assignment;
    struct ByPeriod
    {
        int type = 0;
        std::string value;
    } byPeriod;
    // Of the assignment: work was met, and then a period without.
    bool hasWorked = false, hasPaused = false;

    // What the part being read loses, and how often.
    std::vector<std::pair<char const *, int>> partLosses;
    // What is counted over the whole schedule.
    std::map<std::string_view, int> wholeLosses;

    void lose(char const * what) { partLosses.emplace_back(what, 1); }
};

// A value that an element cannot have; says so behind the element and its text.
struct MspdiFault
{
    char const * what;
};

struct MspdiElement
{
    MspdiContext in;
    std::string_view name;
    // `leaf` for one that holds text.
    MspdiContext opens = MspdiContext::leaf;
    // Reads the text. Throws MspdiFault.
    void (*take)(MspdiDraft & draft, std::string_view text) = nullptr;
    // What is lost when the text is another than `usual`, and than nothing: with each part, or counted over the whole.
    char const * loses = nullptr;
    std::string_view usual = {};
    bool isLostInAll = false;
};

// Null for an element that is not known there.
MspdiElement const * findMspdiElement(MspdiContext in, char16_t const * name);

// Whether nothing is lost with an element of that text.
bool saysTheUsual(MspdiElement const & element, std::string_view text);

}  // namespace orvane::app
