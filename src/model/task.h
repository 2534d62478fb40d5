#pragma once

#include <memory>

#include "model/assigned_resource.h"
#include "model/assigned_risk.h"
#include "model/link.h"
#include "model/supply_chain.h"
#include "model/task_baseline_data.h"
#include "model/task_constraint.h"
#include "model/task_report.h"
#include "schedule/task_cached_data.h"
#include "values/date_time.h"
#include "values/duration.h"
#include "values/enumerations.h"
#include "values/identifiers.h"
#include "values/scalars.h"

class CCalendar;
class CTaskArray;

// One row of the plan: a node of the task tree with its times, status, links and children.
//
// A task whose planned start is not valid is a blank task: a row that keeps a place and has no
// schedule; counts and calculations skip it. A task with children is a summary task: its times are those
// of its children. The array of children exists only while it holds a task.
//
// Times a reader asks for are those of the last derived pass, which the end of every action runs; the
// setters of planned times keep the task's own end right within an action.
class CTask : public CTaskCachedData, public CDynamic<CTask>, public IProjectXMLTagProcessor
{
public:
    // A blank task with a fresh identity.
    CTask();
    CTask(CTask const & other);
    ~CTask() override;

    // Every field, the change flag, the project and the cached data; children are copied deep. The task
    // keeps its place in the tree.
    virtual CTask & operator=(CTask const & other);
    // After a load: points the subtree at the project, gives begun tasks the times that a begun task must
    // have, and drops links whose upstream task is gone.
    virtual void postSerialize(CProject * project);

    friend bool operator==(CTask const & a, CTask const & b) { return equal(a, b); }

    // Identity, texts and plain fields.
    CTaskID const & getID() const { return fields.id; }
    void setID(CTaskID const & value);
    CProjectString const & getName() const { return fields.name; }
    void setName(CProjectString const & value) { write(fields.name, value); }
    CProjectString const & getComments() const { return fields.comments; }
    void setComments(CProjectString const & value) { write(fields.comments, value); }
    CTaskStatus const & getStatus() const { return fields.status; }
    void setStatus(CTaskStatus const & value) { write(fields.status, value); }
    CProjectBool const & isTemplate() const { return fields.isTemplateTask; }
    void setTemplate(CProjectBool const & value) { write(fields.isTemplateTask, value); }
    CTaskType const & getTaskType() const { return fields.taskType; }
    void setTaskType(CTaskType const & value) { write(fields.taskType, value); }
    CTaskCategoryID const & getCategoryID() const { return fields.categoryID; }
    void setCategoryID(CTaskCategoryID const & value) { write(fields.categoryID, value); }
    CProjectBool const & getRiskBuffer() const { return fields.riskBuffer; }
    void setRiskBuffer(CProjectBool const & value) { write(fields.riskBuffer, value); }
    CCalendarID const & getDominantCalendarID() const { return fields.dominantCalendarID; }
    void setDominantCalendarID(CCalendarID const & value) { write(fields.dominantCalendarID, value); }
    CTaskConstraint const & getConstraint() const { return fields.constraint; }
    void setConstraint(CTaskConstraint const & value) { write(fields.constraint, value); }
    CTaskConstraintType const & getConstraintType() const { return fields.constraint.getType(); }
    void setConstraintType(CTaskConstraintType const & value);
    CLinkArray const & getUpstreamLinks() const { return fields.upstreamLinks; }
    void setUpstreamLinks(CLinkArray const & value);
    CSupplyChain const & getSupplyChain() const { return fields.supplyChain; }
    // For changing in place within one action; do not keep the reference.
    CSupplyChain & getWritableSupplyChain();
    void setSupplyChain(CSupplyChain const & value) { write(fields.supplyChain, value); }

    // Resources and risks that the task takes on, and what was reported while it ran.
    CAssignedResourceArray const & getAssignedResources() const { return fields.assignedResources; }
    void setAssignedResources(CAssignedResourceArray const & value) { write(fields.assignedResources, value); }
    CAssignedRiskArray const & getAssignedRisks() const { return fields.assignedRisks; }
    void setAssignedRisks(CAssignedRiskArray const & value) { write(fields.assignedRisks, value); }
    CTaskReportArray const & getTaskReports() const { return fields.taskReports; }
    void setTaskReports(CTaskReportArray const & value) { write(fields.taskReports, value); }
    // Whether risks eat into the duration or add to it.
    CRiskType const & getRiskType() const { return fields.riskType; }

    // Times. Planned start and duration move through the rules of rescheduling below.
    CProjectTime const & getPlannedStartTime() const { return fields.plannedStartTime; }
    CProjectTime const & getActualStartTime() const { return fields.actualStartTime; }
    void setActualStartTime(CProjectTime const & value) { write(fields.actualStartTime, value); }
    CProjectTime const & getPredictedFinishTime() const { return fields.predictedFinishTime; }
    void setPredictedFinishTime(CProjectTime const & value) { write(fields.predictedFinishTime, value); }
    CProjectTime const & getActualFinishTime() const { return fields.actualFinishTime; }
    void setActualFinishTime(CProjectTime const & value) { write(fields.actualFinishTime, value); }

    // The start, end and working duration in force: a summary task's roll-up, a begun task's actual
    // times, or the plan.
    CProjectTime getStartTime() const;
    CProjectTime getEndTime() const;
    CProjectDuration getDuration() const;
    CProjectTime getPlannedEndTime() const;
    // Working time from the planned start to the planned end.
    CProjectDuration getPlannedDuration() const;
    // The forecast end of a started task; not valid for any other.
    CProjectTime getEstimatedFinishTime() const { return getEstimatedEndTimeCached(); }
    // Working time that the buffered risks of other tasks have placed on this one.
    CProjectDuration getStoredRiskDuration() const { return getStoredRiskDurationCached(); }

    // The ladder of ends, from early to late; the end time for a summary task.
    CProjectTime getEndExcludingRisk() const;
    CProjectTime getEndOfUnmitigatedRisk() const;
    CProjectTime getEndOfStoredRisk() const;
    CProjectTime getEndOfBufferedRisk() const;
    CProjectTime getEndOfMitigatedRisk() const;
    // Working time from the start to these ends; not valid for a blank task.
    CProjectDuration getDurationToEndOfUnmitigatedRisk() const;
    CProjectDuration getDurationToEndOfStoredRisk() const;

    // Progress in percent of the planned duration, by the clock unless another time is given: as worked, and kept within 0
    // to 100.
    double getUnconstrainedPercentComplete(CProjectTime const & now = CProjectTime::GetTickCount()) const;
    double getPercentComplete(CProjectTime const & now = CProjectTime::GetTickCount()) const;
    CProjectTime getTimeOfPercentCompletePoint() const;

    // Working time of the assigned risks: as they are, or as the reports have left them.
    CProjectDuration getTotalRiskDuration() const;
    CProjectDuration getTotalRiskDurationByStatus(CRiskStatus const & status) const;
    CProjectDuration getTotalReportModifiedRiskDuration() const;
    CProjectDuration getTotalReportModifiedRiskDurationByStatus(CRiskStatus const & status) const;

    // What is left for a further risk, in whole percent of the duration and in working time; at least 0.
    int getMaximumAvailableRiskPercent() const;
    CProjectDuration getMaximumAvailableRiskDuration() const;

    // Setters of the schedule. Each does nothing when the task or the value does not allow it.
    // Keeps the planned end and moves the start against it.
    void setPlannedStartTime(CProjectTime const & time);
    // Keeps the planned start and derives the duration.
    void setPlannedEndTime(CProjectTime const & time);
    // Working time, at least a minute; a key date's duration is always 0.
    void setDuration(CProjectDuration const & value);
    void setDurationToEndOfUnmitigatedRisk(CProjectDuration const & target);
    void setEndOfUnmitigatedRisk(CProjectTime const & time);
    // Move the task and keep its duration; a summary task moves each child that can move.
    void reschedulePlannedStartTime(CProjectTime const & time);
    void reschedulePlannedEndTime(CProjectTime const & time);
    void rescheduleEndOfUnmitigatedRisk(CProjectTime const & time);
    // Changes the meaning of the duration; false for a summary task and for the type in force.
    bool setRiskType(CRiskType const & type);

    // Costs of the task's own; null for none.
    CCostArray const * getCosts() const { return fields.costs.get(); }
    void setCosts(CCostArray const & costs);
    // Inserts before the index, or appends for -1; ignored on a summary task.
    void addCost(CCost & cost, int index);

    // What a cost comes to on the task, as budgeted or by the times it really took. Weeks and longer periods are
    // charged once. An hourly cost of an assigned resource is charged by the percentage assigned.
    double applyCost(CCost const & cost, CCostTotalType const & totalType) const;
    double applyCosts(CCostArray const & costs, CCostTotalType const & totalType) const;
    double applyCost(CAssignedResource const & assigned, CCost const & cost, CCostTotalType const & totalType) const;
    double applyCosts(CAssignedResource const & assigned, CCostArray const & costs, CCostTotalType const & totalType) const;
    // Of an assigned risk, over the time that reports have left of it; longer periods than days cost nothing, and
    // the type of total has no effect.
    double applyRiskCosts(CAssignedRisk const & assigned, CCostTotalType const & totalType) const;

    // Money of this task alone. Parents among the assigned equipment, people and places cost nothing themselves.
    double getTaskCostsTotal(CCostTotalType const & totalType) const;
    double getEquipmentResourceCostsTotal(CCostTotalType const & totalType) const;
    double getHumanResourceCostsTotal(CCostTotalType const & totalType) const;
    double getLocationResourceCostsTotal(CCostTotalType const & totalType) const;
    double getMaterialResourceCostsTotal(CCostTotalType const & totalType) const;
    double getMitigatedRiskCostsTotal(CCostTotalType const & totalType) const;
    double getUnmitigatedRiskCostsTotal(CCostTotalType const & totalType) const;
    double getTaskReportCostsTotal(CCostTotalType const & totalType) const;
    // All of it, with unmitigated risk until the task begins, and without mitigated risk.
    double getSumTotal(CCostTotalType const & totalType) const;

    // Money of the task and everything below it. For resources by kind, only leaves count.
    double getTreeCosts(CCostTotalType const & totalType) const;
    double getTreeDirectTaskCosts(CCostTotalType const & totalType) const;
    double getTreeEquipmentResourceCosts(CCostTotalType const & totalType) const;
    double getTreeHumanResourceCosts(CCostTotalType const & totalType) const;
    double getTreeLocationResourceCosts(CCostTotalType const & totalType) const;
    double getTreeMaterialResourceCosts(CCostTotalType const & totalType) const;
    double getTreeMitigatedRiskCosts(CCostTotalType const & totalType) const;
    double getTreeUnmitigatedRiskCosts(CCostTotalType const & totalType) const;
    double getTreeTaskReportCosts(CCostTotalType const & totalType) const;

    // Append the costs of a kind to the array; whether there were any. An advance turns its costs negative.
    bool getEquipmentResourceCosts(CCostArray & costs) const;
    bool getHumanResourceCosts(CCostArray & costs) const;
    bool getLocationResourceCosts(CCostArray & costs) const;
    bool getMaterialResourceCosts(CCostArray & costs) const;
    bool getMitigatedRiskCosts(CCostArray & costs) const;
    bool getUnmitigatedRiskCosts(CCostArray & costs) const;
    bool getTaskReportCosts(CCostArray & costs) const;

    // The baseline: what was planned, to compare with. Clearing leaves the stored figures where they are.
    void setBaseline();
    void clearBaseline() { write(fields.baselineSet, CProjectBool(false)); }
    bool isBaselineSet() const { return fields.baselineSet.getValue(); }
    CProjectTime const & getBaselineStart() const { return fields.baselineData.getStartTime(); }
    CProjectDuration const & getBaselineDuration() const { return fields.baselineData.getDuration(); }
    CProjectTime const & getBaselineFinish() const { return fields.baselineData.getFinishTime(); }
    double getBaselineEquipmentCost() const { return fields.baselineData.getEquipmentCost().getValue(); }
    double getBaselineHumanCost() const { return fields.baselineData.getHumanCost().getValue(); }
    double getBaselineLocationCost() const { return fields.baselineData.getLocationCost().getValue(); }
    double getBaselineMaterialCost() const { return fields.baselineData.getMaterialCost().getValue(); }
    double getBaselineMitigatedRiskCost() const { return fields.baselineData.getMitigatedRiskCost().getValue(); }
    double getBaselineUnmitigatedRiskCost() const { return fields.baselineData.getUnmitigatedRiskCost().getValue(); }
    double getBaselineTaskCost() const { return fields.baselineData.getTaskCost().getValue(); }
    double getBaselineTotalCost() const { return fields.baselineData.getTotalCost(); }
    // Baseline less present; positive is under budget, or shorter than planned. Without a baseline 0, and not
    // valid for time, which is elapsed time from start to end.
    double getTotalCostVariance() const;
    double getTotalCostVarianceAsPercentage() const;
    CProjectDuration getScheduleVariance() const;
    double getScheduleVarianceAsPercentage() const;

    // Whether the selected filter shows the task, by the last derived pass.
    bool isIncludedByFilter() const { return getIsIncludedByFilterCached(); }

    // What may be done to the task.
    // Id, planned start and status are valid: not a blank task.
    bool isValid() const { return fields.id.isValid() && fields.plannedStartTime.isValid() && fields.status.isValid(); }
    bool isSummaryTask() const { return subTasks != nullptr; }
    bool isKeyDate() const { return fields.taskType == CTaskType::KeyDate; }
    // Neither started nor finished.
    bool isOpen() const;
    bool canBecomeSummaryTask() const;
    bool canCreateLinks() const { return isValid(); }
    bool canReschedule() const;
    bool canChangeDuration() const;
    bool canAssignRisks() const;
    bool canAssignTaskReports() const;
    bool canAssignResources() const;
    bool canChangePercentComplete() const;
    bool canChangeBaseline() const;
    bool canChangeType() const;
    // Why not, as a sentence for the planner; empty when it can.
    CString getExplanationForInabilityToReschedule() const;
    CString getExplanationForInabilityToAssignRisks() const;
    CString getExplanationForInabilityToAssignResources() const;

    // Children. Null for a plain task.
    CTaskArray const * getSubTasks() const { return subTasks.get(); }
    // For changing in place within one action; do not keep the pointer.
    CTaskArray * getWritableSubTasks();
    // Replaces the children by copies, or by none; ignored unless the task can become a summary task.
    void setSubTasks(CTaskArray const & tasks);
    // Inserts a copy at 0 to the number of children; ignored elsewhere or unless the task can become a
    // summary task.
    void insertSubTask(CTask const & task, int position);
    // Every valid task below; a blank task's subtree is not entered.
    int calculateNumberOfChildren() const;
    // Turns empty arrays in the subtree into none, as a file wants it.
    void deleteSubTasksIfEmpty();
    // The task with all below it, as it stands in a project file.
    void Serialize(CProjectArchive & archive);
    // The task's element with all below it. Loading, it takes the attributes of every element that it is given,
    // whatever its name, and none for the duration.
    void xmlSerialize(CProjectXMLArchive & archive) override;

    // Searches over the subtree, the task itself first.
    CTask const * findTask(CTaskID const & sought) const;
    CTask const * findTask(CLinkID const & sought) const;
    CTask const * findTask(CSupplyChainID const & sought) const;
    CTask const * findTask(CAssignedResourceID const & sought) const;
    CTask const * findTask(CAssignedRiskID const & sought) const;
    CTask const * findTask(CTaskReportID const & sought) const;
    // Among the tasks' own costs.
    CTask const * findTask(CCostID const & sought) const;
    CAssignedRisk const * findAssignedRisk(CAssignedRiskID const & sought) const;
    bool findAssignedRisk(CAssignedRisk & out, CAssignedRiskID const & sought) const;
    // Every task with an assignment of exactly that resource.
    bool hasAssignedResources(CResourceID const & resource) const;
    bool findAssignedResources(CTaskArray & tasks, CResourceID const & resource) const;
    CTask * findWritableTask(CTaskID const & sought);
    // Whether the task stands anywhere below this one.
    bool isDescendant(CTaskID const & sought) const;

    // The parent as the tree stands now, also within an action; null for a root and for a free task.
    CTask * getParent() const;
    // The parent as the last derived pass left it.
    CTask const * getParentOfLastPass() const { return getParentCached(); }
    // The index among the siblings; 0 without a project, -1 when the project does not hold the task.
    int getPositionInSiblings() const;
    bool canMoveTaskUp() const;
    bool canMoveTaskDown() const;

    // Links.
    // Whether the other task is reached through upstream links.
    bool isUpstream(CTaskID const & other) const;
    // Whether links lead from the task, its ancestors and descendants back to one of these: a summary
    // task depends on what its children depend on, and the reverse. Needs the parents of a derived pass.
    bool isInCircularChain() const;

    // The calendar that rules the task's working time.
    CCalendar const & getCalendar() const;

    // Change flags; see CRecord.
    bool getChanged() const { return changed; }
    bool setChanged();
    void resetChanged();
    void touch();
    // As touch, for the whole subtree.
    void flagSubtreeAsAssigned();

    void setProject(CProject * value);
    void resetAllCachedData();

    // Asks the memory for what the length of a chain is computed from, a little before it is read.
    void prefetchForChains() const;

    // A number that a walk over the whole tree may leave on each task, to find it in arrays of its own. It
    // means nothing to the next walk.
    int walkMark() const { return mark; }
    void setWalkMark(int number) const { mark = number; }

    static int getCreated() { return s_created; }
    static int getDeleted() { return s_deleted; }
    static void resetCreatedAndDeletedCount() { s_created = s_deleted = 0; }

private:
    friend class CTaskArray;
    friend class CTaskCachedData;
    friend class orvane::CStoredRisk;

    template <class Visit>
    static void describe(Visit && visit);
    static bool equal(CTask const & a, CTask const & b);

    CProject * getProject() const override { return project; }
    // The bit of the stretch of the record in which a field begins; reads nothing of the field.
    template <class Field>
    std::uint32_t stretchOf(Field const & field) const
    {
        auto const offset = reinterpret_cast<char const *>(&field) - reinterpret_cast<char const *>(&fields);
        return std::uint32_t{1} << (static_cast<std::size_t>(offset) * 32 / sizeof(Fields));
    }
    template <class Field, class Value>
    void write(Field & field, Value const & value)
    {
        touched |= stretchOf(field);
        field = value;
    }
    // Lives around a change of the task's links, so that the index of the forest hears of it.
    class LinksChange;
    bool ownFieldsChanged();
    void resetOwnFields();
    // False when the task lacks what its times could be taken from.
    bool giveBegunTaskItsTimes();
    void dropDanglingLinks();
    template <class Test>
    CTask const * findDepthFirst(Test const & test) const;
    void dropEmptyArrays();
    void exchangeSubTasks(CProjectArchive & archive);
    void exchangeAttributes(CProjectXMLArchive & archive);
    void exchangeChildren(CProjectXMLArchive & archive);
    CTaskArray & makeSubTasks();
    void dropSubTasks();
    // Flags the task as changed by way of its identifier, where nothing that is left shows the change.
    void flagByID();
    CTaskArray const * getSiblings() const;

    double getResourceCostsTotal(std::size_t kind, CCostTotalType const & totalType) const;
    double getRiskCostsTotal(CRiskStatus const & status) const;
    bool getResourceCosts(std::size_t kind, CCostArray & costs) const;
    bool getRiskCosts(CRiskStatus const & status, CCostArray & costs) const;

    bool makeRiskSubtractive();
    bool makeRiskAdditive();
    void changeRiskType(CRiskType const & type, int direction);
    void keepLength(CAssignedRisk & assigned, CProjectDuration const & length) const;
    template <class Counts>
    CProjectDuration sumOfRisks(CProjectDuration (CAssignedRisk::*size)(CTask const &) const, Counts const & counts) const;
    CProjectTime withRisk(CProjectTime const & end, CRiskStatus const & status) const;
    CProjectTime withStoredRisk(CProjectTime const & end) const;
    CProjectTime getEndOfStoredRiskInPass() const;
    CProjectDuration getMinimumDuration() const;
    void movePlannedStart(CProjectTime const & time);
    // One way of moving a task: which of its times is given, what lies between its start and that time, and
    // whether that time is an end.
    struct Rescheduling
    {
        CProjectTime (CTask::*current)() const;
        CProjectDuration (CTask::*length)() const;
        bool asEnd;
    };
    void reschedule(CProjectTime const & time, Rescheduling const & way);
    void rescheduleChildren(CProjectTime const & time, Rescheduling const & way);

    // Where the task stands; null for a free task. The position is where it stood when last looked up.
    CTaskArray * container = nullptr;
    mutable int positionHint = 0;
    mutable int mark = 0;
    CProject * project = nullptr;
    std::unique_ptr<CTaskArray> subTasks;

    // What is saved and compared, in one piece so that it is copied and assigned in one. What the critical path
    // reads of every task stands first, side by side.
    struct Fields
    {
        CTaskID id;
        CProjectTime plannedStartTime;
        CTaskStatus status{CTaskStatus::Hold};
        CProjectDuration duration;
        CLinkArray upstreamLinks;
        CProjectString name;
        CProjectTime actualStartTime;
        CProjectTime predictedFinishTime;
        CProjectTime actualFinishTime;
        CProjectBool isTemplateTask{false};
        CRiskType riskType{CRiskType::Subtractive};
        CTaskType taskType{CTaskType::Normal};
        CCalendarID dominantCalendarID{orvane::nullID};
        CTaskConstraint constraint;
        CTaskCategoryID categoryID{orvane::nullID};
        CProjectBool riskBuffer{false};
        CProjectString comments{""};
        CSupplyChain supplyChain;
        CAssignedResourceArray assignedResources;
        CAssignedRiskArray assignedRisks;
        CTaskReportArray taskReports;
        orvane::CSubItems<CCostArray> costs;
        CProjectBool baselineSet{false};
        CTaskBaselineData baselineData;
    };
    Fields fields;

    static inline int s_created = 0;
    static inline int s_deleted = 0;
};
