#pragma once

#include "values/enumeration.h"

// The numbers of all enumerations stand in files: they never change their meaning.
// clang-format off

// ---- tasks ----------------------------------------------------------------------------------------

// How far a task has come. The first five are planning states of a task that has not begun, and alike.
class CTaskStatus : public orvane::CNamedEnumeration<CTaskStatus>
{
public:
    enum TASK_STATUS { Hold = 1, Approved = 2, Ready = 3, Go = 4, TBA = 5, Started = 6, Finished = 7 };
    using Number = TASK_STATUS;
    static constexpr orvane::EnumerationRow row = orvane::numbers(1, 7, 1);
    static constexpr char const * texts[] = {"Hold", "Approved", "Ready", "Go", "TBA", "Started", "Finished"};
    using CNamedEnumeration::CNamedEnumeration;
    using CNamedEnumeration::operator=;
};

// Work, or a moment without length.
class CTaskType : public orvane::CNamedEnumeration<CTaskType>
{
public:
    enum TASK_TYPE { Unknown = 0, Normal = 1, KeyDate = 2 };
    using Number = TASK_TYPE;
    static constexpr orvane::EnumerationRow row = orvane::numbers(0, 2, 0);
    static constexpr char const * texts[] = {"", "Normal", "Key Date"};
    using CNamedEnumeration::CNamedEnumeration;
    using CNamedEnumeration::operator=;
};

// Whether a task may be moved.
class CTaskConstraintType : public orvane::CNamedEnumeration<CTaskConstraintType>
{
public:
    enum TASK_CONSTRAINT { NoConstraint = 1, CannotReschedule = 2 };
    using Number = TASK_CONSTRAINT;
    static constexpr orvane::EnumerationRow row = orvane::numbers(1, 2, 1);
    static constexpr char const * texts[] = {"No Constraint", "Cannot Reschedule"};
    using CNamedEnumeration::CNamedEnumeration;
    using CNamedEnumeration::operator=;
};

// Which end of the upstream task a link leaves, and at which end of the downstream task it arrives.
class CLinkType : public orvane::CEnumeration<CLinkType>
{
public:
    enum LINK_TYPE { FinishToStart = 1, StartToFinish = 2, StartToStart = 3, FinishToFinish = 4 };
    using Number = LINK_TYPE;
    static constexpr orvane::EnumerationRow row = orvane::numbers(1, 4, 1);
    using CEnumeration::CEnumeration;
    using CEnumeration::operator=;
};

class CLinkStatus : public orvane::CNamedEnumeration<CLinkStatus>
{
public:
    enum LINK_STATUS { Proposed = 1, Accepted = 2 };
    using Number = LINK_STATUS;
    static constexpr orvane::EnumerationRow row = orvane::numbers(1, 2, 1);
    static constexpr char const * texts[] = {"Proposed", "Accepted"};
    using CNamedEnumeration::CNamedEnumeration;
    using CNamedEnumeration::operator=;
};

// Where a new row goes: beside the target among its siblings, or as its last child.
class CInsertType : public orvane::CEnumeration<CInsertType>
{
public:
    enum INSERT_TYPE { Above = 1, Below = 2, AsChild = 3 };
    using Number = INSERT_TYPE;
    static constexpr orvane::EnumerationRow row = orvane::numbers(1, 3, 1);
    using CEnumeration::CEnumeration;
    using CEnumeration::operator=;
};

// Which links come along with a pasted subtree: none, those within it, or those with an end in it.
class CTaskPasteMode : public orvane::CEnumeration<CTaskPasteMode>
{
public:
    enum TASKPASTEMODE { WithoutLinks = 1, WithInnerLinks = 2, WithAllLinks = 3 };
    using Number = TASKPASTEMODE;
    static constexpr orvane::EnumerationRow row = orvane::numbersOrKeep(1, 3);
    using CEnumeration::CEnumeration;
    using CEnumeration::operator=;
};

// On whose behalf the rules run. It has no flag that says whether it is valid.
class CRulesCheckerContext : public orvane::CNamedEnumeration<CRulesCheckerContext>
{
public:
    enum TASK_STATUS { OriginatingClient = 1, TransactionServer = 2, ReceivingClient = 3 };
    using Number = TASK_STATUS;
    static constexpr orvane::EnumerationRow row = orvane::numbers(1, 3, 1);
    static constexpr char const * texts[] = {"Originating Client", "Transaction Server", "Recieving Client"};
    using CNamedEnumeration::CNamedEnumeration;
    using CNamedEnumeration::operator=;
    bool isValid() const = delete;
    void setValid(bool) = delete;
};

// ---- risks and reports ----------------------------------------------------------------------------

class CRiskStatus : public orvane::CTextEnumeration<CRiskStatus>
{
public:
    enum RISK_STATUS { Unmitigated = 1, Mitigated = 2, Buffered = 3 };
    using Number = RISK_STATUS;
    static constexpr orvane::EnumerationRow row = orvane::numbers(1, 3, 1);
    static constexpr char const * texts[] = {"Unmitigated", "Mitigated", "Buffered"};
    using CTextEnumeration::CTextEnumeration;
    using CTextEnumeration::operator=;
};

class CRiskWeight : public orvane::CTextEnumeration<CRiskWeight>
{
public:
    enum RISK_STATUS { Low = 1, Medium = 2, High = 3 };
    using Number = RISK_STATUS;
    static constexpr orvane::EnumerationRow row = orvane::numbers(1, 3, 1);
    static constexpr char const * texts[] = {"Low", "Medium", "High"};
    using CTextEnumeration::CTextEnumeration;
    using CTextEnumeration::operator=;
};

// Whether risks eat into a task's duration or add to it.
class CRiskType : public orvane::CTextEnumeration<CRiskType>
{
public:
    enum RISK_TYPE { Subtractive = 1, Additive = 2 };
    using Number = RISK_TYPE;
    static constexpr orvane::EnumerationRow row = orvane::numbersOrKeep(1, 2);
    static constexpr char const * texts[] = {"Subtractive", "Additive"};
    using CTextEnumeration::CTextEnumeration;
    using CTextEnumeration::operator=;
};

// Whether a risk is measured in percent of the task's duration or as a fixed duration.
class CRiskValueMode : public orvane::CEnumeration<CRiskValueMode>
{
public:
    enum RISK_MODE { Percent = 1, Fixed = 2 };
    using Number = RISK_MODE;
    static constexpr orvane::EnumerationRow row = orvane::numbersOrKeep(1, 2);
    using CEnumeration::CEnumeration;
    using CEnumeration::operator=;
};

class CTaskReportType : public orvane::CNamedEnumeration<CTaskReportType>
{
public:
    enum RISK_TYPE { Delay = 1, Advance = 2 };
    using Number = RISK_TYPE;
    static constexpr orvane::EnumerationRow row = orvane::numbersOrKeep(1, 2);
    static constexpr char const * texts[] = {"Delay", "Advance"};
    using CNamedEnumeration::CNamedEnumeration;
    using CNamedEnumeration::operator=;
};

// ---- costs ----------------------------------------------------------------------------------------

class CCostType : public orvane::CTextEnumeration<CCostType>
{
public:
    enum COST_TYPE { Fixed = 1, Hourly = 2, Daily = 3, Weekly = 4, Monthly = 5, Quarterly = 6, Yearly = 7 };
    using Number = COST_TYPE;
    static constexpr orvane::EnumerationRow row = orvane::numbersOrKeep(1, 7);
    static constexpr char const * texts[] = {"Fixed", "Hourly", "Daily", "Weekly", "Monthly", "Quaterly", "Yearly"};
    using CTextEnumeration::CTextEnumeration;
    using CTextEnumeration::operator=;
};

class CCostTotalType : public orvane::CTextEnumeration<CCostTotalType>
{
public:
    enum COST_TOTAL_TYPE { Budgeted = 1, Actual = 2 };
    using Number = COST_TOTAL_TYPE;
    static constexpr orvane::EnumerationRow row = orvane::numbersOrKeep(1, 2);
    static constexpr char const * texts[] = {"Budgeted", "Actual"};
    using CTextEnumeration::CTextEnumeration;
    using CTextEnumeration::operator=;
};

// ---- resources and companies ----------------------------------------------------------------------

class CResourceType : public orvane::CEnumeration<CResourceType>
{
public:
    enum CType { Human = 1, Equipment = 2, Material = 3, Location = 4 };
    using Number = CType;
    static constexpr orvane::EnumerationRow row{.first = 1, .last = 4, .unknownBecomes = 1};
    using CEnumeration::CEnumeration;
    using CEnumeration::operator=;
};

class CResourceStatus : public orvane::CEnumeration<CResourceStatus>
{
public:
    enum RESOURCE_STATUS { Active = 1, Inactive = 2, Delayed = 3, Constrained = 4 };
    using Number = RESOURCE_STATUS;
    static constexpr orvane::EnumerationRow row = orvane::numbers(1, 4, 1);
    static constexpr char const * texts[] = {"Active", "Inactive", "Delayed", "Constrained"};
    using CEnumeration::CEnumeration;
    using CEnumeration::operator=;
    operator CString() const { return text("Unknown"); }
};

// How a task uses a resource: leaves it in place, for a while, or takes it away.
class CResourceProfileType : public orvane::CTextEnumeration<CResourceProfileType>
{
public:
    enum RESOURCE_PROFILE_TYPE { Install = 1, Temporary = 2, Remove = 3 };
    using Number = RESOURCE_PROFILE_TYPE;
    static constexpr orvane::EnumerationRow row{.first = 1, .last = 3, .initial = 2, .unknownReads = 2};
    static constexpr char const * texts[] = {"Install", "Temporary", "Remove"};
    using CTextEnumeration::CTextEnumeration;
    using CTextEnumeration::operator=;
    static constexpr int getMinimumEquivalentValue() { return row.first; }
    static constexpr int getMaximumEquivalentValue() { return row.last; }
    static constexpr int getNumberOfProfileTypes() { return row.last - row.first + 1; }
};

class CResourceUnitType : public orvane::CTextEnumeration<CResourceUnitType>
{
public:
    enum RESOURCE_UNIT_TYPE
    {
        Unknown = 0, CubicFeet = 1, CubicMeter = 2, Liter = 3, Millimeter = 4, Meter = 5, Feet = 6, Each = 7,
        Pair = 8, Dozen = 9, Gross = 10, SquareFoot = 11, SquareYard = 12, SquareMeter = 13, Pound = 14,
        Gram = 15, Kilo = 16, Bag = 17, Box = 18, Bucket = 19, Bundle = 20, Card = 21, Carton = 22, Coil = 23,
        Pack = 24, Pegs = 25, Length = 26, Outer = 27, Pallet = 28, Roll = 29, Sachet = 30, Set = 31,
        Sheet = 32, Ton = 33, Person = 34,
    };
    using Number = RESOURCE_UNIT_TYPE;
    static constexpr orvane::EnumerationRow row = orvane::numbersOrKeep(0, 34, 0);
    // The spelling is that of the texts that planners know.
    static constexpr char const * texts[] = {
        "Unknown", "Cubic feet", "Cubic meter", "Liter", "Milimeter", "Meter", "Feet", "Each", "Pair", "Dozen",
        "Gross", "Sq Foot", "Sq Yard", "Sq Meter", "Pound", "Gram", "Kilo", "Bag", "Box", "Bucket",
        "Bundle", "Card", "Carton", "Coil", "Pack", "Pegs", "Length", "Outer", "Pallet", "Roll",
        "Sachet", "Set", "Sheet", "Ton", "Person"};
    using CTextEnumeration::CTextEnumeration;
    using CTextEnumeration::operator=;
    static constexpr int getMinimumEquivalentValue() { return row.first; }
    static constexpr int getMaximumEquivalentValue() { return row.last; }
    static constexpr int getNumberOfUnitTypes() { return row.last - row.first + 1; }
};

// What a company does on the project. Any number is stored as it is given; the rules refuse unknown ones.
class CCompanyType : public orvane::CTextEnumeration<CCompanyType>
{
public:
    enum CType
    {
        Supplier = 1, Manufacturer = 2, Contractor = 3, Subcontractor = 4, Architect = 5,
        StructuralEngineer = 6, CostEngineer = 7, Client = 8, BuildingOwner = 9, BuildingOperator = 10,
        MechanicalEngineer = 11, ElectricalEngineer = 12, ProjectManager = 13, FacilitiesManager = 14,
        CivilEngineer = 15, CommissioningEngineer = 16, Engineer = 17, Owner = 18, Consultant = 19,
        ConstructionManager = 20, FieldConstructionManager = 21, Reseller = 22,
    };
    using Number = CType;
    static constexpr orvane::EnumerationRow row{
        .first = 1, .last = 22, .onUnknown = orvane::UnknownNumber::isStored};
    static constexpr char const * texts[] = {"Supplier", "Manufacturer", "Contractor", "Subcontractor", "Architect",
        "Structural engineer", "Cost engineer", "Client", "Building owner", "Building operator",
        "Mechanical engineer", "Electrical engineer", "Project manager", "Facilities manager", "Civil engineer",
        "Commissioning engineer", "Engineer", "Owner", "Consultant", "Construction manager",
        "Field construction manager", "Reseller"};
    using CTextEnumeration::CTextEnumeration;
    using CTextEnumeration::operator=;
    static constexpr int getMinimumEquivalentValue() { return row.first; }
    static constexpr int getMaximumEquivalentValue() { return row.last; }
};

// ---- access and calendars -------------------------------------------------------------------------

// For which tasks, resources or users a permission holds.
class CAccessType : public orvane::CNamedEnumeration<CAccessType>
{
public:
    enum ACCESS_TYPE { All = 1, WhereSupplier = 2, WhereCustomer = 3, WhereSupplierOrCustomer = 4, None = 5 };
    using Number = ACCESS_TYPE;
    static constexpr orvane::EnumerationRow row = orvane::numbers(1, 5, 5);
    static constexpr char const * texts[] = {"All", "Where User is Supplier", "Where User is Customer",
        "Where User is Supplier or Customer", "None"};
    using CNamedEnumeration::CNamedEnumeration;
    using CNamedEnumeration::operator=;

    // Whether this grants access somewhere that the other does not: two can each be greater.
    friend bool operator>(CAccessType const & a, CAccessType const & b);
    // Takes the limit over where this grants more than it.
    void makeEqualOrLessPermissive(CAccessType const & limit);
};

// The kind of a day: a calendar's normal day, whose length is a day in durations; a day without work; or
// another working day.
class CDayType : public orvane::CEnumeration<CDayType>
{
public:
    enum CDay { NormalWorkingDay = 1, NonWorkingDay = 2, OtherWorkingDay = 3 };
    using Number = CDay;
    static constexpr orvane::EnumerationRow row = orvane::numbers(1, 3, 1);
    using CEnumeration::CEnumeration;
    using CEnumeration::operator=;
    // The number as it stands, 0 for one that was never given.
    int getType() const { return value; }
};

// ---- filters --------------------------------------------------------------------------------------

// Whether a task must pass every sub-filter in use, or one.
class CFilterMode : public orvane::CEnumeration<CFilterMode>
{
public:
    enum FILTER_MODE { PassEvery = 1, PassAny = 2 };
    using Number = FILTER_MODE;
    static constexpr orvane::EnumerationRow row = orvane::numbersOrKeep(1, 2);
    using CEnumeration::CEnumeration;
    using CEnumeration::operator=;
};

// Which companies of a task a filter looks at.
class CCompanyFilterMode : public orvane::CEnumeration<CCompanyFilterMode>
{
public:
    enum RISK_TYPE { Supplier = 1, Customer = 2, SupplierOrCustomer = 3, ResourceOwner = 4 };
    using Number = RISK_TYPE;
    static constexpr orvane::EnumerationRow row = orvane::numbersOrKeep(1, 4);
    using CEnumeration::CEnumeration;
    using CEnumeration::operator=;
};

// ---- views ----------------------------------------------------------------------------------------

// What the 3D view presents. The selection can choose it; what modes 5 and 7 show is up to the views.
class C3DDisplayMode : public orvane::CEnumeration<C3DDisplayMode>
{
public:
    enum DISPLAY_MODE
    {
        NothingSelected = 1, Company = 2, Task = 3, Resource = 4, Mode5 = 5, SceneEntity = 6, Mode7 = 7,
    };
    using Number = DISPLAY_MODE;
    static constexpr orvane::EnumerationRow row = orvane::numbers(1, 7, 1);
    using CEnumeration::CEnumeration;
    using CEnumeration::operator=;
};

// What its modes lock is up to the views.
class C3DLockMode : public orvane::CEnumeration<C3DLockMode>
{
public:
    enum LOCK_MODE { Mode1 = 1, Mode2 = 2, Mode3 = 3 };
    using Number = LOCK_MODE;
    static constexpr orvane::EnumerationRow row = orvane::numbers(1, 3, 3);
    using CEnumeration::CEnumeration;
    using CEnumeration::operator=;
};

// The two charts of the use of resources. Unlike others it starts with a known number, and still not valid.
class CChartType : public orvane::CEnumeration<CChartType>
{
public:
    enum CHART_TYPE { Type1 = 1, Type2 = 2 };
    using Number = CHART_TYPE;
    static constexpr orvane::EnumerationRow row = orvane::numbers(1, 2, 0, 1);
    using CEnumeration::CEnumeration;
    using CEnumeration::operator=;
};

// Of what a chart is drawn; it starts like the type of chart.
class CDisplayChartFor : public orvane::CEnumeration<CDisplayChartFor>
{
public:
    enum CHART_TYPE { Choice3 = 3, Choice4 = 4 };
    using Number = CHART_TYPE;
    static constexpr orvane::EnumerationRow row = orvane::numbers(3, 4, 0, 3);
    using CEnumeration::CEnumeration;
    using CEnumeration::operator=;
};

// Whose use a utilisation chart shows.
class CDisplayUtilisationChartFor : public orvane::CNamedEnumeration<CDisplayUtilisationChartFor>
{
public:
    enum UTILISATION_MODE
    {
        SelectedResource = 1, SelectedCompany = 2, AllEquipment = 3, AllHuman = 4, AllLocation = 5,
        AllMaterial = 6, AllResources = 7,
    };
    using Number = UTILISATION_MODE;
    static constexpr orvane::EnumerationRow row = orvane::numbers(1, 7, 7);
    static constexpr char const * texts[] = {
        "Selected Resource", "Selected Company's Resources", "All Equipment Resources", "All Human Resources",
        "All Location Resources", "All Material Resources", "All Resources"};
    using CNamedEnumeration::CNamedEnumeration;
    using CNamedEnumeration::operator=;
};

// clang-format on
