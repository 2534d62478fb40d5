#pragma once

#include "values/identifier_arrays.h"
#include "values/record.h"
#include "view/3d_presentation.h"
#include "view/eva_graph_presentation.h"
#include "view/gantt_presentation.h"
#include "view/navigator_presentation.h"
#include "view/presentation_map.h"
#include "view/resource_utilisation_presentation.h"

class CCompany;
class CEquipmentResourceArray;
class CHumanResourceArray;
class CLocationResourceArray;
class CMaterialResourceArray;
class CProject;

// The state of the views: what is selected, how each view is set up, and how the items in them are shown.
// It is saved with the project and is no part of its content. It holds identifiers only; whether one still
// means something is seen when it is used.
class CPresentationData : public orvane::CRecord<CPresentationData>, public IProjectXMLTagProcessor
{
public:
    // An empty selection, no entries, and views as the settings tell.
    void clear();
    void setProject(CProject * value) { project = value; }

    // What is selected, one of a kind, NULL when there is none. Of tasks and of entities of the scene there
    // may be several; the primary one is the one whose details are shown.
    CTaskID const & getPrimarySelectedTaskID() const { return primarySelectedTaskID; }
    CTaskIDArray const & getSelectedTaskID() const { return selectedTaskID; }
    CCompanyID const & getSelectedCompanyID() const { return selectedCompanyID; }
    CResourceID const & getSelectedResourceID() const { return selectedResourceID; }
    CRiskID const & getSelectedRiskID() const { return selectedRiskID; }
    CFilterID const & getSelectedFilterID() const { return selectedFilterID; }
    CCostID const & getSelectedAssignedRiskCostID() const { return selectedAssignedRiskCostID; }
    CCostID const & getSelectedTaskCostID() const { return selectedTaskCostID; }
    CCostID const & getSelectedResourceCostID() const { return selectedResourceCostID; }
    CEntityID const & getPrimarySelectedSceneEntityID() const { return primarySelectedSceneEntityID; }
    CEntityIDArray const & getSelectedSceneEntityID() const { return selectedSceneEntityID; }
    CTaskReportID const & getSelectedTaskReportID() const { return selectedTaskReportID; }
    CCostID const & getSelectedTaskReportCostID() const { return selectedTaskReportCostID; }
    CUserID const & getSelectedUserID() const { return selectedUserID; }
    CRoleID const & getSelectedRoleID() const { return selectedRoleID; }
    // The first assignment of the selected risk or resource to the primary task; NULL when there is none.
    CAssignedRiskID getSelectedAssignedRiskID() const;
    CAssignedResourceID getSelectedAssignedResourceID() const;

    // Selecting always answers true. What is selected already stays as it is, with all below; NULL selects
    // nothing, and NULL ones are left out of a list. Selecting tasks, a company, a resource or entities turns
    // the 3D view to them while the setting AutoChoose3DMode is on.
    //
    // A primary task deselects the cost, the report and its cost that were shown with the former one, and the
    // cost of an assigned risk that is not one of its own.
    bool setPrimarySelectedTaskID(CTaskID const & id);
    bool setSelectedTaskID(CTaskIDArray const & ids);
    // This task and no other, primary and selected.
    bool setSingleSelectedTaskID(CTaskID const & id);
    bool setSelectedCompanyID(CCompanyID const & id);
    // Deselects the cost of a resource.
    bool setSelectedResourceID(CResourceID const & id);
    bool setSelectedRiskID(CRiskID const & id);
    bool setPrimarySelectedSceneEntityID(CEntityID const & id);
    bool setSelectedSceneEntityID(CEntityIDArray const & ids);
    // Deselects the costs of a report and of a resource.
    bool setSelectedTaskReportID(CTaskReportID const & id);
    bool setSelectedUserID(CUserID const & id);
    bool setSelectedRoleID(CRoleID const & id);
    bool setSelectedTaskCostID(CCostID const & id);
    bool setSelectedResourceCostID(CCostID const & id);
    bool setSelectedAssignedRiskCostID(CCostID const & id);
    bool setSelectedTaskReportCostID(CCostID const & id);

    // Deselecting what goes leaves the 3D view and all else as it is.
    void clearPrimarySelectedTask() { primarySelectedTaskID.clear(); }
    void clearAllSelectedTasks();
    void clearSelectedCompany() { selectedCompanyID.clear(); }
    void clearSelectedResource() { selectedResourceID.clear(); }
    void clearSelectedRisk() { selectedRiskID.clear(); }
    void clearSelectedFilter() { selectedFilterID.clear(); }
    void clearSelectedAssignedRiskCost() { selectedAssignedRiskCostID.clear(); }
    void clearSelectedTaskCost() { selectedTaskCostID.clear(); }
    void clearSelectedResourceCost() { selectedResourceCostID.clear(); }
    // The primary one and all others.
    void clearSelectedSceneEntity();
    void clearSelectedTaskReport() { selectedTaskReportID.clear(); }
    void clearSelectedTaskReportCost() { selectedTaskReportCostID.clear(); }
    void clearSelectedUser() { selectedUserID.clear(); }
    void clearSelectedRole() { selectedRoleID.clear(); }
    // Deselect a resource that stands in the array, or under the company, at any depth; whether they did.
    bool deselectAllResources(CEquipmentResourceArray const & resources);
    bool deselectAllResources(CHumanResourceArray const & resources);
    bool deselectAllResources(CLocationResourceArray const & resources);
    bool deselectAllResources(CMaterialResourceArray const & resources);
    bool deselectResourceIfOwnedByCompany(CCompany const & company);

    // How each view is set up.
    CResourceUtilisationPresentation const & getResourceUtilisationPresentation() const
    {
        return resourceUtilisationPresentation;
    }
    CEVAGraphPresentation const & getEVAGraphPresentation() const { return evaGraphPresentation; }
    CNavigatorPresentation const & getNavigatorPresentation() const { return navigatorPresentation; }
    C3DPresentation const & get3DPresentation() const { return presentation3D; }
    CGanttPresentation const & getGanttPresentation() const { return ganttPresentation; }

    // How each item is shown. An item without an entry is shown as by a new one.
    //
    // Copies the entry out; false and untouched without one.
    bool getResourcePresentation(CResourceID const & id, CResourcePresentation & presentation) const;
    bool getRiskPresentation(CRiskID const & id, CRiskPresentation & presentation) const;
    bool getTaskPresentation(CTaskID const & id, CTaskPresentation & presentation) const;
    // Enters a new entry, or the given one, in place of any other. False for a NULL identifier.
    bool addResourcePresentation(CResourceID const & id) { return setResourcePresentation(id, {}); }
    bool addRiskPresentation(CRiskID const & id) { return setRiskPresentation(id, {}); }
    bool addTaskPresentation(CTaskID const & id) { return setTaskPresentation(id, {}); }
    bool addTaskPresentations(CTaskIDArray const & ids);
    bool setResourcePresentation(CResourceID const & id, CResourcePresentation const & presentation);
    bool setRiskPresentation(CRiskID const & id, CRiskPresentation const & presentation);
    bool setTaskPresentation(CTaskID const & id, CTaskPresentation const & presentation);
    // True also when there was no entry; false for a NULL identifier.
    bool removeResourcePresentation(CResourceID const & id);
    bool removeRiskPresentation(CRiskID const & id);
    bool removeTaskPresentation(CTaskID const & id);
    // All entries at once.
    CResourcePresentationMap const & getResourcePresentations() const { return resourcePresentations; }
    CRiskPresentationMap const & getRiskPresentations() const { return riskPresentations; }
    CTaskPresentationMap const & getTaskPresentations() const { return taskPresentations; }

    void Serialize(CProjectArchive & archive);
    // What stands in a document as bare lines is written only: after reading no task is selected, and the curves,
    // the 3D view and the Gantt chart are as they were. Selected entities are not in it.
    void xmlSerialize(CProjectXMLArchive & archive) override;
    // A file of its own. 1, or 0 when it cannot be opened, which the user is told; what goes wrong later throws.
    int saveToFile(CString const & fileName);
    int readFromFile(CString const & fileName);

private:
    friend class orvane::CRecord<CPresentationData>;
    friend class CProject;
    // Replaces whole views, and selects without the consequences.
    friend class CLocalRulesChecker;
    template <class Visit>
    static void describe(Visit && visit);

    void choose3DMode(C3DDisplayMode const & mode);
    template <class ID>
    bool selectIn3D(ID & field, ID const & id, C3DDisplayMode const & mode);
    template <class Array>
    void selectAllIn3D(Array & field, Array const & ids, C3DDisplayMode const & mode);
    template <class Array>
    bool deselectResourceIn(Array const & resources);
    void deselectAssignedRiskCostIDIfNecessary();

    CProject * project = nullptr;
    CTaskID primarySelectedTaskID{orvane::nullID};
    CTaskIDArray selectedTaskID;
    CCompanyID selectedCompanyID{orvane::nullID};
    CResourceID selectedResourceID{orvane::nullID};
    CRiskID selectedRiskID{orvane::nullID};
    CFilterID selectedFilterID{orvane::nullID};
    CCostID selectedAssignedRiskCostID{orvane::nullID};
    CCostID selectedTaskCostID{orvane::nullID};
    CCostID selectedResourceCostID{orvane::nullID};
    CEntityID primarySelectedSceneEntityID{orvane::nullID};
    CEntityIDArray selectedSceneEntityID;
    CTaskReportID selectedTaskReportID{orvane::nullID};
    CCostID selectedTaskReportCostID{orvane::nullID};
    CUserID selectedUserID{orvane::nullID};
    CRoleID selectedRoleID{orvane::nullID};
    CResourceUtilisationPresentation resourceUtilisationPresentation;
    CEVAGraphPresentation evaGraphPresentation;
    CNavigatorPresentation navigatorPresentation;
    C3DPresentation presentation3D;
    CGanttPresentation ganttPresentation;
    CResourcePresentationMap resourcePresentations;
    CRiskPresentationMap riskPresentations;
    CTaskPresentationMap taskPresentations;
};

extern template class orvane::CRecord<CPresentationData>;
