#pragma once

#include <array>
#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <utility>
#include <vector>

// A schedule as other programs write it, between their files and the model: readers of files fill it, `importPlan`
// makes a project of it, `exportPlan` reads it off a project, and writers of files write it.
//
// Times are minutes of the local clock since 1970-01-01 00:00, durations are minutes of work unless they say
// otherwise. Numbers of the file ("UID") tie the parts together; -1 is none.
namespace orvane::app
{

using Minute = std::int64_t;
using OptionalMinute = std::optional<Minute>;

// Work from the first minute of a day to the one behind the last, 0 to 1440.
struct PlanBlock
{
    int from = 0;
    int to = 0;
    friend bool operator==(PlanBlock const &, PlanBlock const &) = default;
};
using PlanDay = std::vector<PlanBlock>;

struct PlanCalendar
{
    int uid = -1;
    std::string name;
    // A calendar of its own, or one that changes its base for a resource.
    bool isBase = true;
    int baseUID = -1;
    // Sunday first; a day that is not given is the base's, or has no work.
    std::array<std::optional<PlanDay>, 7> week;
    // By day number since 1970-01-01; they replace the whole day.
    std::map<std::int64_t, PlanDay> exceptions;
    // What the exceptions are called in the file, by day number, where they have a name.
    std::map<std::int64_t, std::string> exceptionNames;
    friend bool operator==(PlanCalendar const &, PlanCalendar const &) = default;
};

enum class PlanLinkType { finishToFinish, finishToStart, startToFinish, startToStart };
enum class PlanConstraint
{
    asSoonAsPossible,
    asLateAsPossible,
    mustStartOn,
    mustFinishOn,
    startNoEarlierThan,
    startNoLaterThan,
    finishNoEarlierThan,
    finishNoLaterThan,
};

struct PlanLink
{
    int predecessorUID = -1;
    PlanLinkType type = PlanLinkType::finishToStart;
    // In minutes of work, of the clock, or in percent of the predecessor's duration.
    enum class Lag { work, clock, percent };
    Lag lagIn = Lag::work;
    double lag = 0;
    friend bool operator==(PlanLink const &, PlanLink const &) = default;
};

struct PlanBaseline
{
    OptionalMinute start, finish;
    std::optional<Minute> duration;
    std::optional<double> cost;
    friend bool operator==(PlanBaseline const &, PlanBaseline const &) = default;
};

struct PlanCost
{
    std::string description;
    double amount = 0;
    friend bool operator==(PlanCost const &, PlanCost const &) = default;
};

struct PlanTask
{
    int uid = -1;
    // As users of the other program number its rows; and the line of the file where it begins, for messages.
    int id = 0;
    int line = 0;
    std::string name;
    std::string notes;
    std::string category;
    // From 1 for roots. A row without content keeps its place.
    int outlineLevel = 1;
    bool isBlank = false;
    bool isMilestone = false;
    bool isSummary = false;
    // Not moved by the other program's scheduling.
    bool isManual = false;
    bool isActive = true;
    std::optional<Minute> duration;
    // The duration counts hours of the clock.
    bool isElapsed = false;
    OptionalMinute start, finish;
    OptionalMinute actualStart, actualFinish;
    double percentComplete = 0;
    int calendarUID = -1;
    PlanConstraint constraint = PlanConstraint::asSoonAsPossible;
    OptionalMinute constraintDate, deadline;
    std::vector<PlanLink> links;
    std::optional<PlanBaseline> baseline;
    double fixedCost = 0;
    friend bool operator==(PlanTask const &, PlanTask const &) = default;
};

enum class PlanResourceKind { work, material, cost };

struct PlanResource
{
    int uid = -1;
    std::string name;
    PlanResourceKind kind = PlanResourceKind::work;
    int calendarUID = -1;
    // 1 is one unit, full time.
    double maxUnits = 1;
    // Money an hour (a unit of a material), for overtime, and for each use.
    double standardRate = 0, overtimeRate = 0, costPerUse = 0;
    std::string group, notes;
    friend bool operator==(PlanResource const &, PlanResource const &) = default;
};

struct PlanAssignment
{
    int taskUID = -1;
    int resourceUID = -1;
    double units = 1;
    // Of a cost resource, the money that it comes to on the task.
    double cost = 0;
    friend bool operator==(PlanAssignment const &, PlanAssignment const &) = default;
};

// What came in the file and has no place in the model, or came changed; `task` is empty for the whole schedule.
struct PlanLoss
{
    std::string task;
    std::string what;
    friend bool operator==(PlanLoss const &, PlanLoss const &) = default;
};

struct Plan
{
    std::string name;
    OptionalMinute start, finish, statusDate;
    int minutesPerDay = 480, minutesPerWeek = 2400;
    int calendarUID = -1;
    std::string currency;
    std::vector<PlanCalendar> calendars;
    std::vector<PlanTask> tasks;
    std::vector<PlanResource> resources;
    std::vector<PlanAssignment> assignments;
    // What the reader itself met and passed over.
    std::vector<PlanLoss> losses;
};

}  // namespace orvane::app
