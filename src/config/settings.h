#pragma once

#include <type_traits>

#include "platform/string.h"

// The settings of the application, one a row: SETTING(type, name, default[, stored name]). A macro,
// because each row becomes functions of its own name; whoever walks the settings expands ORVANE_SETTINGS.
//
// - bool: a flag, stored under "Config"; any other type is stored under "ProjectConfig".
// - Colours are 0x00BBGGRR; a background of 15 is the number of a system colour. Sizes are in pixels,
//   opacities in percent. A tab of -1 is none, a width of -1 is left to the view.
// - A value is stored under the setting's name, unless the row tells another. Those stand in users'
//   stores, misspellings included. Two settings may share one stored value: they differ at most until
//   the process ends, and start alike from what was written last.

namespace orvane
{

// What callers give and take for a setting of a type in the table.
template <class T>
using SettingValue = std::conditional_t<std::is_same_v<T, bool>, int, T>;
template <class T>
using SettingArgument = std::conditional_t<std::is_same_v<T, CString>, CString const &, SettingValue<T>>;

}  // namespace orvane

// clang-format off

// Which parts of dialogs are expanded.
#define ORVANE_DIALOG_SETTINGS(SETTING) \
    SETTING(bool, ExpandTestProfileDialog, true) \
    SETTING(bool, ExpandTestObjectsDialog, true) \
    SETTING(bool, ExpandServerConnectionDialog, true) \
    SETTING(bool, ExpandCompanyGeneralDialog, false) \
    SETTING(bool, ExpandCompanyContactDialog, false) \
    SETTING(bool, ExpandCompanyCalendarDialog, false) \
    SETTING(bool, ExpandRiskGeneralDialog, false) \
    SETTING(bool, ExpandRiskRegisterDialog, false) \
    SETTING(bool, ExpandProjectGeneralDialog, false) \
    SETTING(bool, ExpandProjectCalendarDialog, false) \
    SETTING(bool, ExpandProjectCostsDialog, false) \
    SETTING(bool, ExpandAlertGeneralDialog, false) \
    SETTING(bool, ExpandFloatGeneralDialog, false) \
    SETTING(bool, ExpandResourceGeneralDialog, false) \
    SETTING(bool, ExpandResourceSupplierDialog, false) \
    SETTING(bool, ExpandResourceCalendarDialog, false) \
    SETTING(bool, ExpandResourceRepresentationDialog, false, "ExpandedResourceRepresentationDialog") \
    SETTING(bool, ExpandResourceMaterialsDateDialog, false) \
    SETTING(bool, ExpandTaskGeneralDialog, false) \
    SETTING(bool, ExpandTaskStatisticsDialog, false) \
    SETTING(bool, ExpandTaskResourcesDialog, false) \
    SETTING(bool, ExpandTaskRiskDialog, false) \
    SETTING(bool, ExpandAssignedRiskCostsDialog, false) \
    SETTING(bool, ExpandTaskCostsDialog, false) \
    SETTING(bool, ExpandTaskMonitoringDialog, false) \
    SETTING(bool, ExpandCostsTotalDialog, false) \
    SETTING(bool, ExpandResourceCostsDialog, false) \
    SETTING(bool, ExpandLinkDialog, false) \
    SETTING(bool, ExpandFilterGeneralDialog, false, "ExpandLinkDialog") \
    SETTING(bool, ExpandFilterNameDialog, false) \
    SETTING(bool, ExpandFilterDateRangeDialog, false) \
    SETTING(bool, ExpandFilterStatusDialog, false) \
    SETTING(bool, ExpandFilterResourcesDialog, false) \
    SETTING(bool, ExpandFilterRiskDialog, false) \
    SETTING(bool, ExpandFilterCompanyDialog, false) \
    SETTING(bool, ExpandUsersDialog, false) \
    SETTING(bool, ExpandUserGeneralDialog, false) \
    SETTING(bool, ExpandAccessRightsDialog, false) \
    SETTING(bool, ExpandTaskSupplyChainDialog, false) \
    SETTING(bool, ExpandRolePermissionsDialog, false) \
    SETTING(bool, ExpandUserPermissionsDialog, false)

#define ORVANE_FLAG_SETTINGS(SETTING) \
    SETTING(bool, BaselineTasksAutomatically, true) \
    SETTING(bool, FullHistory, true) \
    SETTING(bool, UndoRedoEnabled, true) \
    SETTING(bool, EquipmentResourcesExpanded, true) \
    SETTING(bool, HumanResourcesExpanded, true) \
    SETTING(bool, LocationResourcesExpanded, true) \
    SETTING(bool, MaterialResourcesExpanded, true) \
    SETTING(bool, GanttShowHolidays, true) \
    SETTING(bool, GanttShowHorizontalLines, true) \
    SETTING(bool, GanttShowVerticalLines, true) \
    SETTING(bool, GanttShowLateness, true) \
    SETTING(bool, GanttShowEarlyness, true) \
    SETTING(bool, GanttCurrentTimeThick, true) \
    SETTING(bool, ResourceUtilizationEvaluateToTheMinute, true) \
    SETTING(bool, EVAGraphDisplayBCWS, true) \
    SETTING(bool, EVAGraphDisplayBCWP, true) \
    SETTING(bool, EVAGraphDisplayACWP, true) \
    SETTING(bool, LastFindDirectionDown, true) \
    SETTING(bool, ReloadLastProject, false) \
    SETTING(bool, ReloadLastProjectFailed, false) \
    SETTING(bool, CompanyFilterInUse, false) \
    SETTING(bool, GanttUseCompanyColors, false) \
    SETTING(bool, RescheduleDialogApplyToAll, false) \
    SETTING(bool, DisplayTimeConcise, false) \
    SETTING(bool, DisplayDurationConcise, false) \
    SETTING(bool, ResourceUtilizationVisible, false) \
    SETTING(bool, EVAGraphVisible, false) \
    SETTING(bool, LastFindMatchCase, false) \
    SETTING(bool, LastFindWholeWord, false) \
    SETTING(bool, ShowCriticalPath, false) \
    SETTING(bool, ResourceLevellingApplyToAll, false) \
    SETTING(bool, ResourceLevellingShowProgress, false) \
    SETTING(bool, ResourceLevellingAttemptOptimisation, false) \
    SETTING(bool, DisplayResourceWithCompanyColor, false) \
    SETTING(bool, DisplayInactiveResourceWithOriginalColor, false) \
    SETTING(bool, PrintingHasHeader, false) \
    SETTING(bool, PrintingHasFooter, false, "PrintingHasHeader") \
    SETTING(bool, PrintingHasPageNumbers, false) \
    SETTING(bool, AutoChoose3DMode, false)

// Whether active resources keep their own colour rather than that of their state.
#define ORVANE_ORIGINAL_COLOR_SETTINGS(SETTING, kind) \
    SETTING(bool, DisplayActive##kind##ResourceInstallWithOriginalColor, false) \
    SETTING(bool, DisplayActive##kind##ResourceTemporaryWithOriginalColor, false) \
    SETTING(bool, DisplayActive##kind##ResourceRemoveWithOriginalColor, false) \
    SETTING(bool, DisplayActive##kind##ResourceAlertWithOriginalColor, false)

#define ORVANE_NUMBER_SETTINGS(SETTING) \
    SETTING(int, ActiveNavigatorTab, -1) \
    SETTING(int, TaskViewWidth, -1) \
    SETTING(int, ActiveTab, 0) \
    SETTING(int, ActivePropertiesTab, -1) \
    SETTING(int, ActiveTestTab, -1) \
    SETTING(int, TestsTabIndex, -1) \
    SETTING(int, CompanyFilter, 1) \
    SETTING(int, EquipmentResourceColor, 0x00FFFF) \
    SETTING(int, HumanResourceColor, 0x0000FF) \
    SETTING(int, LocationResourceColor, 0x00FF00) \
    SETTING(int, MaterialResourceColor, 0xFF0000) \
    SETTING(int, DisplayChartFor, 3) \
    SETTING(int, DisplayUtilisationChartFor, 7) \
    SETTING(int, ChartType, 1) \
    SETTING(int, 3DDisplayMode, 6) \
    SETTING(int, GanttNonWorkingDayColor, 15, "GanntNonWorkingDayColor") \
    SETTING(int, GanttNonWorkingTimeOfDayColor, 0xDCE4E8, "GanntNonWorkingTimeOfDayColor") \
    SETTING(int, GanttWorkingTimeColor, 0xFFFFFF, "GanntWorkingTimeColor") \
    SETTING(int, GanttLinkStyle, 2) \
    SETTING(int, SelectedTaskColor, 0xB44949, "GanttSelectedColor") \
    SETTING(int, GanttGridLinesColor, 0, "GanntGridLinesColor") \
    SETTING(int, RulerBackgroundColor, 15) \
    SETTING(int, RulerForegroundColor, 0) \
    SETTING(int, FocussedTimeColor, 0xFF8080) \
    SETTING(int, CurrentTimeColor, 0xFF0000) \
    SETTING(int, LatenessColor, 0x0000FF) \
    SETTING(int, EarlynessColor, 0x00FF00) \
    SETTING(int, GanttUnmitigatedRiskColor, 0xFFB0FF) \
    SETTING(int, GanttStoredRiskColor, 0x9BE100) \
    SETTING(int, GanttBufferedRiskColor, 0x808000) \
    SETTING(int, GanttMitigatedRiskColor, 0xFFFFFF) \
    SETTING(int, GanttDelayColor, 0xA000A0) \
    SETTING(int, RescheduleDialogChoice, 1) \
    SETTING(int, LineOfBalancePaneWidth, 100) \
    SETTING(int, LineOfBalanceInfoPaneWidth, 100) \
    SETTING(int, ResourceUtilizationPaneHeight, 100) \
    SETTING(int, EVAGraphPaneHeight, 100) \
    SETTING(int, EVAGraphBCWSColor, 0xFFFF00) \
    SETTING(int, EVAGraphBCWPColor, 0xFF00FF) \
    SETTING(int, EVAGraphACWPColor, 0x00FFFF) \
    SETTING(int, DefaultLinkType, 1) \
    SETTING(int, DefaultTaskStartDateChoice, 0) \
    SETTING(int, DefaultTaskFinishDateChoice, 0) \
    SETTING(int, ActiveSecurityTab, 0) \
    SETTING(int, ServerPort, 1200) \
    SETTING(int, ServerConnectionTimesToRunEachTest, 10) \
    SETTING(int, SnapMode, 3) \
    SETTING(int, TaskPasteMode, 2) \
    SETTING(int, MaximumNumberUndoRedoStates, 20) \
    SETTING(int, PrintingTopMargin, 1) \
    SETTING(int, PrintingBottomMargin, 1) \
    SETTING(int, PrintingLeftMargin, 1) \
    SETTING(int, PrintingRightMargin, 1) \
    SETTING(int, TaskListIndexColumnWidth, 40) \
    SETTING(int, TaskListNameColumnWidth, 300) \
    SETTING(int, TaskListDurationColumnWidth, 114) \
    SETTING(int, TaskListStartColumnWidth, 150) \
    SETTING(int, TaskListFinishColumnWidth, 150)

// How the resources of a kind look in each state.
#define ORVANE_RESOURCE_STATE_SETTINGS(SETTING, kind) \
    SETTING(int, kind##ResourceInactiveColor, 0xD4D4D4) \
    SETTING(int, kind##ResourceInactiveOpacity, 50) \
    SETTING(int, kind##ResourceInstallColor, 0x00FF00) \
    SETTING(int, kind##ResourceInstallOpacity, 100) \
    SETTING(int, kind##ResourceTemporaryColor, 0xFF0000) \
    SETTING(int, kind##ResourceTemporaryOpacity, 100) \
    SETTING(int, kind##ResourceRemoveColor, 0x03A1FF) \
    SETTING(int, kind##ResourceRemoveOpacity, 100) \
    SETTING(int, kind##ResourceAlertColor, 0x0000FF) \
    SETTING(int, kind##ResourceAlertOpacity, 100)

#define ORVANE_OTHER_SETTINGS(SETTING) \
    SETTING(double, GanttZoom, 0.0) \
    SETTING(double, SelectedTaskTintOpaqueness, 0.3) \
    SETTING(double, ServerConnectionDelay, 1.0) \
    SETTING(CString, LastProject, "") \
    SETTING(CString, LastFindString, "") \
    SETTING(CString, LastReplaceString, "") \
    SETTING(CString, ServerName, "localhost") \
    SETTING(CString, ServerUser, "") \
    SETTING(CString, ProjectsToUpdateDirectory, "") \
    SETTING(CString, SystemDirectory, "") \
    SETTING(CString, OrvaneScheduleVersion, "2.00") \
    SETTING(CString, GlobalCurrencyUnit, "$") \
    SETTING(CString, PrintingHeader, "") \
    SETTING(CString, PrintingFooter, "")

// The whole table.
#define ORVANE_SETTINGS(SETTING) \
    ORVANE_DIALOG_SETTINGS(SETTING) \
    ORVANE_FLAG_SETTINGS(SETTING) \
    ORVANE_ORIGINAL_COLOR_SETTINGS(SETTING, ) \
    ORVANE_ORIGINAL_COLOR_SETTINGS(SETTING, Equipment) \
    ORVANE_ORIGINAL_COLOR_SETTINGS(SETTING, Human) \
    ORVANE_ORIGINAL_COLOR_SETTINGS(SETTING, Location) \
    ORVANE_ORIGINAL_COLOR_SETTINGS(SETTING, Material) \
    ORVANE_NUMBER_SETTINGS(SETTING) \
    ORVANE_RESOURCE_STATE_SETTINGS(SETTING, Equipment) \
    ORVANE_RESOURCE_STATE_SETTINGS(SETTING, Human) \
    ORVANE_RESOURCE_STATE_SETTINGS(SETTING, Location) \
    ORVANE_RESOURCE_STATE_SETTINGS(SETTING, Material) \
    ORVANE_OTHER_SETTINGS(SETTING)

// clang-format on
