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
        member("costs", costsJson(costs.ofPlan()));
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

    Json computedJson(CTask const & task, int row) const
    {
        CProjectDuration const duration = task.getDuration();
        Json json = {{"row", row}, {"summary", task.isSummaryTask()}};
        // A blank row has no schedule.
        if (!task.isValid()) return json;
        auto const add = [&](char const * name, Json value) { json.push_back({name, std::move(value)}); };
        add("critical", project.isInCriticalPath(task.getID()));
        add("includedByFilter", task.isIncludedByFilter());
        add("start", leafJson(task.getStartTime()));
        add("end", leafJson(task.getEndTime()));
        add("plannedEnd", leafJson(task.getPlannedEndTime()));
        add("estimatedFinish", leafJson(task.getEstimatedFinishTime()));
        add("endExcludingRisk", leafJson(task.getEndExcludingRisk()));
        add("endOfUnmitigatedRisk", leafJson(task.getEndOfUnmitigatedRisk()));
        add("endOfStoredRisk", leafJson(task.getEndOfStoredRisk()));
        add("endOfBufferedRisk", leafJson(task.getEndOfBufferedRisk()));
        add("endOfMitigatedRisk", leafJson(task.getEndOfMitigatedRisk()));
        add("durationMinutes", duration.GetTotalMinutes());
        add("durationDays", workingDays(duration, calendar));
        add("storedRiskMinutes", task.getStoredRiskDuration().GetTotalMinutes());
        add("riskMinutes", task.getTotalRiskDuration().GetTotalMinutes());
        add("percentComplete", task.getPercentComplete());
        add("costs", costsJson(costs.of(task)));
        if (task.isBaselineSet())
        {
            add("costVariance", task.getTotalCostVariance());
            add("scheduleVarianceMinutes", leafJson(task.getScheduleVariance()));
        }
        return json;
    }

    void writeTasks(CTaskArray const & tasks)
    {
        lines(tasks,
              [&](CTask const & task)
              {
                  // What stands below is written into the object.
                  std::string text = jsonText(ownFieldsJson(task));
                  text.pop_back();
                  out << text << ",\"computed\":" << jsonText(computedJson(task, ++row)) << ",\"subTasks\":";
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
};

}  // namespace

void writeDump(std::ostream & out, CProject const & project)
{
    DumpWriter(out, project).write();
}

}  // namespace orvane::app
