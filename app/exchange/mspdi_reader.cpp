#include "app/exchange/mspdi_reader.h"

#include <algorithm>
#include <cstddef>
#include <unordered_map>
#include <utility>

#include <fmt/format.h>
#include <xercesc/sax/Locator.hpp>

#include "app/command.h"
#include "app/exchange/mspdi_elements.h"
#include "app/exchange/mspdi_values.h"
#include "app/xml_parser.h"
#include "platform/utf8_impl.h"

namespace orvane::app
{
namespace
{

using Context = MspdiContext;
using Characters = std::u16string_view;

constexpr std::size_t mostDepth = 100;
constexpr std::size_t mostText = std::size_t{4} << 20;
constexpr std::size_t mostParserMemory = std::size_t{64} << 20;

// Formats of durations and lags in time of the clock, as the format numbers them; estimated ones are 32 higher.
bool isElapsedFormat(int format)
{
    int const plain = format > 32 ? format - 32 : format;
    return plain >= 4 && plain <= 12 && plain % 2 == 0;
}

std::string named(char const * kind, std::string const & name, int uid)
{
    return name.empty() ? fmt::format("{} {}", kind, uid) : fmt::format("{} \"{}\"", kind, name);
}

std::string withCount(std::string_view what, int count)
{
    return count > 1 ? fmt::format("{} ({})", what, count) : std::string(what);
}

// Losses of one part, each once, with how often it was met.
std::vector<std::pair<std::string_view, int>> merged(std::vector<std::pair<char const *, int>> const & losses)
{
    std::vector<std::pair<std::string_view, int>> merged;
    for (auto const & [what, count] : losses)
    {
        auto const found = std::ranges::find(merged, what, [](auto const & each) { return each.first; });
        if (found == merged.end()) merged.emplace_back(what, count);
        else found->second += count;
    }
    return merged;
}

class DocumentReader : public XmlHandler
{
public:
    explicit DocumentReader(std::string const & fileName) : fileName(fileName) {}

    void parse(std::string_view text);
    // The plan, checked, once the document is at its end.
    Plan finish();

private:
    void setDocumentLocator(xercesc::Locator const * const given) override { locator = given; }
    void startElement(XMLCh const * uri, XMLCh const * name, XMLCh const * qualifiedName,
                      xercesc::Attributes const & attributes) override;
    void endElement(XMLCh const * uri, XMLCh const * name, XMLCh const * qualifiedName) override;
    void characters(XMLCh const * text, XMLSize_t length) override
    {
        if (!takesText) return;
        if (content.size() + length > mostText) refuse(line(), subject() + "a text is too long");
        content.append(text, length);
    }
    xercesc::InputSource * resolveEntity(XMLCh const *, XMLCh const *) override { refuseDeclaration(); }
    void startDTD(XMLCh const *, XMLCh const *, XMLCh const *) override { refuseDeclaration(); }

    [[noreturn]] void refuse(int line, std::string const & what) const
    {
        throw Refusal(fmt::format("{}: line {}: {}", fileName, line, what));
    }
    [[noreturn]] void refuseDeclaration() const
    {
        refuse(line(), "the document has a document type declaration, which is not read");
    }
    void checkRoot(Characters uri, Characters name) const;

    int line() const { return locator ? static_cast<int>(locator->getLineNumber()) : 1; }
    // The part being read, as messages begin with it.
    std::string subject() const;

    void takeText(MspdiElement const & element);
    void begin(Context context);
    void end(Context context);
    void endDefinition();
    void endTimes();
    void endDay();
    void endException();
    void endCalendar();
    void endLink();
    void endBaseline();
    void endCustomField();
    void endTask();
    void interpretTask();
    void endResource();
    void endPeriod();
    void endAssignment();

    void nameThePlan();
    void finishCalendars();
    void finishTasks();
    void finishTask(PlanTask & task);
    void finishAssignments();
    bool isAssignable(PlanAssignment const & assignment, int line);
    void finishLosses();
    // -1 for a calendar that is none; refuses one that is not there.
    int knownCalendar(int uid, int line, std::string const & subject) const;
    void checkBases() const;

    std::string fileName;
    xercesc::Locator const * locator = nullptr;
    MspdiDraft draft;
    std::vector<MspdiElement const *> open;
    // Elements inside one whose content does not matter.
    std::size_t depthSkipped = 0;
    bool takesText = false;
    bool hasTasks = false;
    std::u16string content;

    // Where the part being read begins.
    int beginsAt = 0;
    // The row that stands for the schedule itself.
    std::optional<PlanTask> summary;
    // By number; some programs keep a resource that stands for work without one.
    std::unordered_map<int, std::size_t> taskIndices, calendarIndices;
    std::unordered_map<int, std::optional<PlanResourceKind>> resourceKinds;
    // Where resources and assignments of the plan begin, since it does not hold that itself.
    std::vector<int> resourceLines, assignmentLines;
    // By number of the task, also of one that comes behind its assignments.
    std::unordered_map<int, std::vector<std::pair<char const *, int>>> taskLosses;
};

void DocumentReader::parse(std::string_view text)
{
    auto const read = [&text](char * bytes, std::size_t most)
    {
        std::size_t const count = text.copy(bytes, most);
        text.remove_prefix(count);
        return count;
    };
    try
    {
        parseXml(read, *this, mostParserMemory);
    }
    catch (XmlFault const & fault)
    {
        std::string const what = "the XML is not well-formed: " + fault.what;
        if (fault.line == 0) throw Refusal(fileName + ": " + what);
        refuse(static_cast<int>(fault.line), what);
    }
    catch (XmlTooLarge const &)
    {
        throw Refusal(fileName + ": needs more memory than any schedule");
    }
}

void DocumentReader::checkRoot(Characters uri, Characters name) const
{
    constexpr Characters expected = u"http://schemas.microsoft.com/project";
    if (name != u"Project" || !(uri.empty() || uri.starts_with(expected)))
        refuse(line(),
               fmt::format("the root element \"{}\" is none of a schedule in Microsoft Project's XML", utf8(name)));
}

void DocumentReader::startElement(XMLCh const * uri, XMLCh const * name, XMLCh const *, xercesc::Attributes const &)
{
    if (open.size() + depthSkipped >= mostDepth) refuse(line(), "the elements stand too deep in each other");
    Context const in = open.empty() ? Context::document : open.back()->opens;
    if (in == Context::document && depthSkipped == 0) checkRoot(uri, name);
    if (in == Context::counted && depthSkipped == 0) ++draft.wholeLosses["views, filters, tables and their like"];
    bool const mayMatter = depthSkipped == 0 && in < Context::counted;
    MspdiElement const * const element = mayMatter ? findMspdiElement(in, name) : nullptr;
    takesText = false;
    if (!element)
    {
        ++depthSkipped;
        if (mayMatter) ++draft.wholeLosses["elements that no schedule is known to have"];
        return;
    }
    open.push_back(element);
    if (element->opens == Context::leaf) takesText = element->take || element->loses;
    else if (element->loses) draft.lose(element->loses);
    content.clear();
    begin(element->opens);
}

void DocumentReader::endElement(XMLCh const *, XMLCh const *, XMLCh const *)
{
    if (depthSkipped > 0)
    {
        --depthSkipped;
        return;
    }
    MspdiElement const & element = *open.back();
    if (takesText) takeText(element);
    takesText = false;
    open.pop_back();
    end(element.opens);
}

void DocumentReader::takeText(MspdiElement const & element)
{
    std::string const text = utf8(content);
    try
    {
        if (element.take) element.take(draft, text);
        else if (saysTheUsual(element, trimmed(text))) return;
        else if (element.isLostInAll) ++draft.wholeLosses[element.loses];
        else draft.lose(element.loses);
    }
    catch (MspdiFault const & fault)
    {
        refuse(line(), fmt::format("{}{} \"{}\" {}", subject(), element.name, text, fault.what));
    }
}

std::string DocumentReader::subject() const
{
    for (MspdiElement const * each : open) switch (each->opens)
        {
            case Context::calendar:
                return named("calendar", draft.calendar.calendar.name, draft.calendar.calendar.uid) + ": ";
            case Context::task: return named("task", draft.task.name, draft.task.uid) + ": ";
            case Context::resource: return named("resource", draft.resource.name, draft.resource.uid) + ": ";
            case Context::assignment: return fmt::format("the assignment to task {}: ", draft.assignment.taskUID);
            default: break;
        }
    return {};
}

void DocumentReader::begin(Context context)
{
    switch (context)
    {
        case Context::attributeDefinition: draft.definition = {}; break;
        case Context::calendar: draft.calendar = {}; break;
        case Context::weekDay:
        case Context::exception: draft.day = {}; break;
        case Context::workingTime: draft.times = {}; break;
        case Context::workWeek:
            draft.workWeek = {};
            draft.inWorkWeek = true;
            break;
        case Context::task:
            draft.task = {};
            draft.taskExtras = {};
            // So that a row without one is known.
            draft.task.outlineLevel = -1;
            break;
        case Context::link: draft.link = {}; break;
        case Context::baseline: draft.baseline = {}; break;
        case Context::customField: draft.customField = {}; break;
        case Context::resource:
            draft.resource = {};
            draft.resourceExtras = {};
            break;
        case Context::assignment:
            draft.assignment = {};
            draft.hasWorked = draft.hasPaused = false;
            break;
        case Context::byPeriod: draft.byPeriod = {}; return;
        case Context::tasks: hasTasks = true; return;
        default: return;
    }
    if (context == Context::calendar || context == Context::task || context == Context::resource ||
        context == Context::assignment)
        beginsAt = line();
}

void DocumentReader::end(Context context)
{
    switch (context)
    {
        case Context::attributeDefinition: return endDefinition();
        case Context::workingTime: return endTimes();
        case Context::weekDay: return endDay();
        case Context::exception: return endException();
        case Context::workWeek:
            draft.inWorkWeek = false;
            draft.calendar.workWeeks.push_back(std::move(draft.workWeek));
            return;
        case Context::calendar: return endCalendar();
        case Context::link: return endLink();
        case Context::baseline: return endBaseline();
        case Context::customField: return endCustomField();
        case Context::task: return endTask();
        case Context::rate: return draft.lose("rates");
        case Context::resource: return endResource();
        case Context::byPeriod: return endPeriod();
        case Context::assignment: return endAssignment();
        default: return;
    }
}

void DocumentReader::endDefinition()
{
    // The upper half of the number tells whose field it is.
    constexpr int fieldsOfTasks = 0x0B40;
    bool const isCategory = draft.definition.alias == "Category" && draft.definition.field >> 16 == fieldsOfTasks;
    if (isCategory) draft.categoryField = draft.definition.field;
}

void DocumentReader::endTimes()
{
    auto const [from, to] = draft.times;
    if (!from || !to) return;
    // Midnight behind the last minute.
    int const end = *to == 0 ? minutesOfDay : *to;
    if (*from < end) draft.day.times.push_back({*from, end});
    else draft.lose("working times that end before they begin");
}

void DocumentReader::endDay()
{
    if (draft.day.dayType > 0)
    {
        auto & week = draft.inWorkWeek ? draft.workWeek.week : draft.calendar.calendar.week;
        week[static_cast<std::size_t>(draft.day.dayType - 1)] = dayOf(draft.day);
        return;
    }
    draft.calendar.oldExceptions.push_back(std::move(draft.day));
}

void DocumentReader::endException()
{
    draft.calendar.exceptions.push_back(std::move(draft.day));
}

void DocumentReader::endCalendar()
{
    PlanCalendar const & calendar = draft.calendar.calendar;
    std::string const who = named("calendar", calendar.name, calendar.uid);
    if (calendar.uid < 0) refuse(beginsAt, who + ": has no UID");
    if (!calendarIndices.try_emplace(calendar.uid, draft.calendars.size()).second)
        refuse(beginsAt, fmt::format("{}: the UID {} stands twice", who, calendar.uid));
    draft.calendar.line = beginsAt;
    for (auto const & [what, count] : merged(std::exchange(draft.partLosses, {})))
        draft.plan.losses.push_back({"", fmt::format("{}: {}", who, withCount(what, count))});
    draft.calendars.push_back(std::move(draft.calendar));
}

void DocumentReader::endLink()
{
    PlanLink & link = draft.link.link;
    if (draft.link.isCrossProject) return draft.lose("a link to another project");
    constexpr int percent = 19, elapsedPercent = 20, estimated = 32;
    int const format = draft.link.lagFormat > estimated ? draft.link.lagFormat - estimated : draft.link.lagFormat;
    if (format == percent || format == elapsedPercent)
    {
        link.lagIn = PlanLink::Lag::percent;
        if (format == elapsedPercent) draft.lose("that a lag in percent counts time of the clock");
    }
    else
    {
        link.lagIn = isElapsedFormat(draft.link.lagFormat) ? PlanLink::Lag::clock : PlanLink::Lag::work;
        link.lag /= 10;
    }
    draft.task.links.push_back(link);
}

void DocumentReader::endBaseline()
{
    if (draft.baseline.number != 0) draft.lose("further baselines");
    else draft.task.baseline = draft.baseline.baseline;
}

void DocumentReader::endCustomField()
{
    if (draft.customField.field == draft.categoryField && draft.categoryField != 0)
        draft.task.category = std::move(draft.customField.value);
    else draft.lose("custom fields");
}

void DocumentReader::endTask()
{
    PlanTask & task = draft.task;
    std::string const who = named("task", task.name, task.uid);
    if (task.uid < 0) refuse(beginsAt, who + ": has no UID");
    task.line = beginsAt;
    bool const isSummary = task.uid == 0 && (task.outlineLevel == 0 || (task.outlineLevel < 0 && task.id == 0));
    if (isSummary ? summary.has_value() : !taskIndices.try_emplace(task.uid, draft.plan.tasks.size()).second)
        refuse(beginsAt, fmt::format("{}: the UID {} stands twice", who, task.uid));
    if (task.outlineLevel < 0) task.outlineLevel = 1;
    if (task.isBlank)
    {
        draft.partLosses.clear();
        PlanTask & row = draft.plan.tasks.emplace_back();
        row.uid = task.uid;
        row.id = task.id;
        row.line = task.line;
        row.isBlank = true;
        return;
    }
    interpretTask();
    if (!draft.partLosses.empty()) taskLosses[task.uid] = std::exchange(draft.partLosses, {});
    if (!isSummary) draft.plan.tasks.push_back(std::move(task));
    else summary = std::move(task);
}

// What several elements say together.
void DocumentReader::interpretTask()
{
    PlanTask & task = draft.task;
    MspdiDraft::TaskExtras const & extras = draft.taskExtras;
    task.isElapsed = isElapsedFormat(extras.durationFormat);
    if (task.constraint <= PlanConstraint::asLateAsPossible) task.constraintDate.reset();
    if (!extras.outlineNumber.empty() && !extras.wbs.empty() && extras.wbs != extras.outlineNumber)
        draft.lose("the WBS code");
    if (task.isSummary) return;
    if (extras.type != 0) ++draft.wholeLosses["whether tasks keep their duration or their work"];
    if (extras.percentWorkComplete >= 0 && extras.percentWorkComplete != task.percentComplete)
        draft.lose("the percent of work complete");
}

void DocumentReader::endResource()
{
    PlanResource & resource = draft.resource;
    std::string const who = named("resource", resource.name, resource.uid);
    if (resource.uid < 0) refuse(beginsAt, who + ": has no UID");
    bool const isNobody = draft.resourceExtras.isBlank || (resource.uid == 0 && resource.name.empty());
    auto const losses = merged(std::exchange(draft.partLosses, {}));
    constexpr int material = 0, cost = 2;
    if (draft.resourceExtras.isCost || draft.resourceExtras.type == cost) resource.kind = PlanResourceKind::cost;
    else if (draft.resourceExtras.type == material) resource.kind = PlanResourceKind::material;
    if (!resourceKinds.try_emplace(resource.uid, isNobody ? std::nullopt : std::optional(resource.kind)).second)
        refuse(beginsAt, fmt::format("{}: the UID {} stands twice", who, resource.uid));
    if (isNobody) return;
    for (auto const & [what, count] : losses)
        // The first rate is the one that a plan holds.
        if (what != "rates" || count > 1)
            draft.plan.losses.push_back({"", fmt::format("{}: {}", who, withCount(what, count))});
    resourceLines.push_back(beginsAt);
    draft.plan.resources.push_back(std::move(resource));
}

void DocumentReader::endPeriod()
{
    constexpr int remainingWork = 1, actualWork = 2;
    auto const & [type, value] = draft.byPeriod;
    if (value.empty()) return;
    bool const isZero = trimmed(value).find_first_not_of("0.PTHMS") == std::string_view::npos;
    if (type == remainingWork)
    {
        // Work, a period in which there could be some, and work again.
        if (!isZero && draft.hasPaused) draft.lose("a split");
        draft.hasPaused = isZero && draft.hasWorked;
        draft.hasWorked = draft.hasWorked || !isZero;
    }
    else if (!isZero) draft.lose(type == actualWork ? "actual work by period" : "figures by period");
}

void DocumentReader::endAssignment()
{
    for (auto const & loss : draft.partLosses) taskLosses[draft.assignment.taskUID].push_back(loss);
    draft.partLosses.clear();
    assignmentLines.push_back(beginsAt);
    draft.plan.assignments.push_back(draft.assignment);
}

Plan DocumentReader::finish()
{
    if (!hasTasks) refuse(1, "the document has no list of tasks, as a schedule in Microsoft Project's XML has");
    nameThePlan();
    finishCalendars();
    finishTasks();
    finishAssignments();
    finishLosses();
    return std::move(draft.plan);
}

void DocumentReader::nameThePlan()
{
    Plan & plan = draft.plan;
    for (std::string * each : {summary ? &summary->name : &draft.title, &draft.title, &draft.documentName})
        if (plan.name.empty()) plan.name = *each;
    if (plan.currency.empty()) plan.currency = draft.currencySymbol;
    if (!summary) return;
    bool const hasOwn = !summary->notes.empty() || summary->fixedCost != 0 || !summary->links.empty();
    if (hasOwn) plan.losses.push_back({"", "notes, fixed costs and links of the schedule as a whole"});
}

int DocumentReader::knownCalendar(int uid, int line, std::string const & subject) const
{
    // Programs write 0 or less for none.
    if (calendarIndices.contains(uid)) return uid;
    if (uid > 0) refuse(line, fmt::format("{}: there is no calendar {}", subject, uid));
    return -1;
}

void DocumentReader::finishCalendars()
{
    Plan & plan = draft.plan;
    plan.calendarUID = knownCalendar(plan.calendarUID, 1, "the schedule");
    for (MspdiCalendar & each : draft.calendars)
        each.calendar.baseUID =
            knownCalendar(each.calendar.baseUID, each.line, named("calendar", each.calendar.name, each.calendar.uid));
    checkBases();
    std::int64_t first = INT64_MAX, last = INT64_MIN;
    auto const widen = [&](OptionalMinute const & time)
    {
        if (time) first = std::min(first, dayOf(*time)), last = std::max(last, dayOf(*time));
    };
    widen(plan.start);
    widen(plan.finish);
    for (PlanTask const & task : plan.tasks) widen(task.start), widen(task.finish);
    MspdiCalendarDays days(first == INT64_MAX ? 0 : first, first == INT64_MAX ? 0 : last);
    for (MspdiCalendar & each : draft.calendars)
    {
        if (!days.expand(each))
            refuse(each.line, named("calendar", each.calendar.name, each.calendar.uid) + ": too many exceptions");
        plan.calendars.push_back(std::move(each.calendar));
    }
    if (days.cut() > 0) draft.wholeLosses["days of exceptions more than ten years from the schedule"] = days.cut();
    if (days.unknown() > 0) draft.wholeLosses["exceptions of calendars that recur by unknown rules"] = days.unknown();
}

void DocumentReader::checkBases() const
{
    // Each calendar is walked over once, by the first chain of bases that comes to it.
    std::vector<int> seenBy(draft.calendars.size(), -1);
    for (std::size_t start = 0; start < draft.calendars.size(); ++start)
    {
        int const mark = static_cast<int>(start);
        std::size_t at = start;
        while (seenBy[at] < 0)
        {
            seenBy[at] = mark;
            int const base = draft.calendars[at].calendar.baseUID;
            if (base < 0) break;
            at = calendarIndices.at(base);
            if (seenBy[at] != mark) continue;
            MspdiCalendar const & each = draft.calendars[at];
            refuse(each.line, named("calendar", each.calendar.name, each.calendar.uid) + ": is a base of itself");
        }
    }
}

void DocumentReader::finishTasks()
{
    std::vector<PlanTask> & tasks = draft.plan.tasks;
    // Some programs count levels from 0.
    bool const fromZero = std::ranges::any_of(tasks, [](PlanTask const & task) { return task.outlineLevel == 0; });
    for (PlanTask & task : tasks)
    {
        task.outlineLevel += fromZero && !task.isBlank;
        finishTask(task);
    }
    for (std::size_t each = 0; each < resourceLines.size(); ++each)
    {
        PlanResource & resource = draft.plan.resources[each];
        resource.calendarUID =
            knownCalendar(resource.calendarUID, resourceLines[each], named("resource", resource.name, resource.uid));
    }
}

void DocumentReader::finishTask(PlanTask & task)
{
    std::string const who = named("task", task.name, task.uid);
    task.calendarUID = knownCalendar(task.calendarUID, task.line, who);
    auto const leadsNowhere = [&](PlanLink const & link)
    {
        auto const found = taskIndices.find(link.predecessorUID);
        bool const isSummary = summary && link.predecessorUID == 0;
        if (found == taskIndices.end() && !isSummary)
            refuse(task.line, fmt::format("{}: there is no task {} to link to", who, link.predecessorUID));
        bool const isRow = found != taskIndices.end() && !draft.plan.tasks[found->second].isBlank;
        if (!isRow) taskLosses[task.uid].emplace_back("a link to no task", 1);
        return !isRow;
    };
    std::erase_if(task.links, leadsNowhere);
}

void DocumentReader::finishAssignments()
{
    std::size_t at = 0;
    std::erase_if(draft.plan.assignments,
                  [&](PlanAssignment const & each) { return !isAssignable(each, assignmentLines[at++]); });
    // Of others, costs follow from their rates.
    for (PlanAssignment & each : draft.plan.assignments)
        if (resourceKinds.at(each.resourceUID) != PlanResourceKind::cost) each.cost = 0;
}

bool DocumentReader::isAssignable(PlanAssignment const & assignment, int line)
{
    auto const task = taskIndices.find(assignment.taskUID);
    bool const isWhole = summary && assignment.taskUID == 0;
    if (task == taskIndices.end() && !isWhole)
        refuse(line, fmt::format("an assignment: there is no task {}", assignment.taskUID));
    if (assignment.resourceUID < 0) return false;
    auto const resource = resourceKinds.find(assignment.resourceUID);
    if (resource == resourceKinds.end())
        refuse(line, fmt::format("the assignment to {}: there is no resource {}",
                                 isWhole ? "the schedule"
                                         : named("task", draft.plan.tasks[task->second].name, assignment.taskUID),
                                 assignment.resourceUID));
    if (!resource->second) return false;
    bool const isRow = task != taskIndices.end() && !draft.plan.tasks[task->second].isBlank;
    if (!isRow) ++draft.wholeLosses["assignments to no task or to the whole schedule"];
    return isRow;
}

void DocumentReader::finishLosses()
{
    std::vector<PlanLoss> & losses = draft.plan.losses;
    for (auto const & [what, count] : merged(draft.partLosses)) draft.wholeLosses[what] += count;
    for (auto const & [what, count] : draft.wholeLosses) losses.push_back({"", withCount(what, count)});
    auto const tell = [&](int uid, std::string const & task)
    {
        auto const found = taskLosses.find(uid);
        if (found == taskLosses.end()) return;
        for (auto const & [what, count] : merged(found->second)) losses.push_back({task, withCount(what, count)});
    };
    if (summary && !taskIndices.contains(0)) tell(0, "");
    for (PlanTask const & task : draft.plan.tasks)
        if (!task.isBlank) tell(task.uid, task.name.empty() ? named("task", "", task.uid) : task.name);
}

}  // namespace

Plan readMspdi(std::string const & text, std::string const & fileName)
{
    DocumentReader reader(fileName);
    reader.parse(text);
    return reader.finish();
}

}  // namespace orvane::app
