#include "app/dump/dump_writer.h"

#include <ostream>

#include "app/apply/solids.h"
#include "app/dump/figures.h"
#include "app/json/records.h"

namespace orvane::app
{
namespace
{

// What a calendar that is not in use holds is not stored, and comes anew with each reading: it is no news.
Json withoutUnusedCalendars(Json json)
{
    if (json.is_object() && json.contains("calendarWeek") && json["inUse"] == false)
        for (char const * const each : {"normalDayInUse", "calendarDayTypes", "calendarWeek", "calendarDayExceptions"})
            json.erase(each);
    if (json.is_structured())
        for (Json & each : json) each = withoutUnusedCalendars(std::move(each));
    return json;
}

class DumpWriter
{
public:
    DumpWriter(std::ostream & out, CProject const & project)
        : out(out), project(project), calendar(project.getProjectCalendar()), costs(project)
    {
    }

    void write()
    {
        out << "{\n\"form\": 1";
        member("project", projectJson());
        member("calendar", toJson(calendar));
        list("companies", project.getAllCompanies());
        list("users", project.getAllUsers());
        list("roles", project.getAllRoles());
        member("taskCategories", categoriesJson());
        list("risks", project.getAllRisks());
        list("filters", project.getAllFilters());
        member("views", viewsJson());
        writeScene();
        std::string text;
        appendCosts(text, costs.ofPlan());
        out << ",\n\"costs\": " << text;
        member("criticalPath", criticalPathJson());
        out << ",\n\"tasks\": ";
        writeTasks(project.getAllTasks());
        out << "\n}\n";
    }

private:
    void member(char const * name, Json const & value) { out << ",\n\"" << name << "\": " << jsonText(value); }
    // One element a line.
    template <class Range, class Write>
    void lines(Range const & range, Write const & write)
    {
        char const * before = "[\n";
        for (auto const & each : range)
        {
            out << before;
            write(each);
            before = ",\n";
        }
        out << (before[0] == '[' ? "[]" : "\n]");
    }
    template <class Array>
    void list(char const * name, Array const & array)
    {
        out << ",\n\"" << name << "\": ";
        lines(array, [&](auto const & each) { out << jsonText(withoutUnusedCalendars(toJson(each))); });
    }

    Json projectJson() const
    {
        return {{"id", leafJson(project.getProjectID())},
                {"name", leafJson(project.getProjectName())},
                {"state", project.getCurrentStateIndex().getValue()},
                {"start", leafJson(project.getProjectStart())},
                {"end", leafJson(project.getProjectEnd())},
                {"adminUserID", project.getAdminUser() ? leafJson(project.getAdminUser()->getID()) : Json()},
                {"adminRoleID", project.getAdminRole() ? leafJson(project.getAdminRole()->getID()) : Json()},
                {"tasks", project.getTotalNumberOfTasks()}};
    }

    Json categoriesJson() const
    {
        Json json = Json::array();
        for (CTaskCategory const & category : project.getTaskCategories())
            json.push_back({{"id", leafJson(category.getID())}, {"name", leafJson(category.getName())}});
        return json;
    }

    Json viewsJson() const
    {
        CPresentationData const & views = project.getPresentationData();
        CGanttPresentation const & gantt = views.getGanttPresentation();
        return {{"primarySelectedTaskID", leafJson(views.getPrimarySelectedTaskID())},
                {"selectedTaskID", toJson(views.getSelectedTaskID())},
                {"selectedCompanyID", leafJson(views.getSelectedCompanyID())},
                {"selectedResourceID", leafJson(views.getSelectedResourceID())},
                {"selectedRiskID", leafJson(views.getSelectedRiskID())},
                {"selectedFilterID", leafJson(views.getSelectedFilterID())},
                {"selectedUserID", leafJson(views.getSelectedUserID())},
                {"selectedRoleID", leafJson(views.getSelectedRoleID())},
                {"selectedTaskReportID", leafJson(views.getSelectedTaskReportID())},
                {"primarySelectedSceneEntityID", leafJson(views.getPrimarySelectedSceneEntityID())},
                {"selectedSceneEntityID", toJson(views.getSelectedSceneEntityID())},
                {"displayMode3D", views.get3DPresentation().get3DDisplayMode().getEquivalentValue()},
                {"ganttZoom", leafJson(gantt.getZoom())},
                {"ganttFocussedTime", leafJson(gantt.getFocussedTime())},
                {"ganttViewStartTime", leafJson(gantt.getViewStartTime())}};
    }

    // ---- the site ---------------------------------------------------------------------------------------

    Json entityJson(CEntity & entity) const
    {
        Json json = solidJson(entity);
        json["visible"] = entity.getVisible();
        json["defaultMaterial"] = toJson(entity.getDefaultMaterial());
        if (CEntityList const * const below = entity.getList())
        {
            Json & children = json["children"] = Json::array();
            for (auto const & child : below->entities()) children.push_back(entityJson(*child));
        }
        return json;
    }

    void writeScene()
    {
        CScene const & scene = project.getScene();
        CObArray entities;
        scene.getAllEntities(entities, CEntity::GetThisClass(), false);
        out << ",\n\"scene\": {\"backgroundColor\": " << jsonText(leafJson(scene.getBackgroundColor()))
            << ", \"headLight\": " << (scene.getHeadLight() ? "true" : "false") << ", \"entities\": ";
        lines(entities, [&](CObject * each) { out << jsonText(entityJson(static_cast<CEntity &>(*each))); });
        out << '}';
    }

    // ---- the plan ---------------------------------------------------------------------------------------

    Json criticalPathJson() const
    {
        CriticalChain const chain(project);
        Json tasks = Json::array(), links = Json::array();
        for (CTask const * const task : chain.tasks) tasks.push_back(leafJson(task->getID()));
        for (CLink const * const link : chain.links) links.push_back(leafJson(link->getID()));
        return {{"durationMinutes", chain.duration.GetTotalMinutes()},
                {"durationDays", workingDays(chain.duration, calendar)},
                {"taskIDs", tasks},
                {"linkIDs", links}};
    }

    void appendComputed(std::string & text, CTask const & task, int row) const
    {
        ObjectText object(text);
        object.add("row", row);
        object.add("summary", task.isSummaryTask());
        // A blank row has no schedule.
        if (task.isValid()) addFigures(object, text, task);
        object.end();
    }

    void addFigures(ObjectText & object, std::string & text, CTask const & task) const
    {
        CProjectDuration const duration = task.getDuration();
        auto const add = [&](char const * name, auto const & value) { object.add(name, value); };
        add("critical", project.isInCriticalPath(task.getID()));
        add("includedByFilter", task.isIncludedByFilter());
        add("start", task.getStartTime());
        add("end", task.getEndTime());
        add("plannedEnd", task.getPlannedEndTime());
        add("estimatedFinish", task.getEstimatedFinishTime());
        add("endExcludingRisk", task.getEndExcludingRisk());
        add("endOfUnmitigatedRisk", task.getEndOfUnmitigatedRisk());
        add("endOfStoredRisk", task.getEndOfStoredRisk());
        add("endOfBufferedRisk", task.getEndOfBufferedRisk());
        add("endOfMitigatedRisk", task.getEndOfMitigatedRisk());
        add("durationMinutes", duration.GetTotalMinutes());
        add("durationDays", workingDays(duration, calendar));
        add("storedRiskMinutes", task.getStoredRiskDuration().GetTotalMinutes());
        add("riskMinutes", task.getTotalRiskDuration().GetTotalMinutes());
        add("percentComplete", task.getPercentComplete());
        object.begin("costs");
        appendCosts(text, costs.of(task));
        if (task.isBaselineSet())
        {
            add("costVariance", task.getTotalCostVariance());
            add("scheduleVarianceMinutes", task.getScheduleVariance());
        }
    }

    void writeTasks(CTaskArray const & tasks)
    {
        lines(tasks,
              [&](CTask const & task)
              {
                  // What stands below is written into the object.
                  line.clear();
                  RecordForm<CTask>::append(line, task, "subTasks");
                  line.pop_back();
                  line += ",\"computed\":";
                  appendComputed(line, task, ++row);
                  out << line << ",\"subTasks\":";
                  if (task.getSubTasks()) writeTasks(*task.getSubTasks());
                  else out << "[]";
                  out << '}';
              });
    }

    std::ostream & out;
    CProject const & project;
    CCalendar const & calendar;
    PlanCosts const costs;
    int row = 0;
    std::string line;
};

}  // namespace

void writeDump(std::ostream & out, CProject const & project)
{
    DumpWriter(out, project).write();
}

}  // namespace orvane::app
