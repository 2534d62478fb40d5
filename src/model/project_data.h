#pragma once

#include "model/company.h"
#include "model/risk.h"
#include "model/task_array.h"
#include "model/task_category.h"
#include "scene/scene.h"
#include "schedule/calendar.h"
#include "schedule/stored_risk.h"
#include "security/role.h"
#include "security/user.h"
#include "values/scalars.h"
#include "view/filter.h"

class CProject;

// What of a project is saved, compared and restored as one value. The only pointers it holds are
// back-pointers to its project, which setProject gives anew after a copy.
class CProjectData : public CDynamic<CProjectData>, public IProjectXMLTagProcessor
{
public:
    // Empty: no roles, no user. clear() gives the content of a new project.
    CProjectData();
    CProjectData(CProjectData const & other);
    CProjectData & operator=(CProjectData const & other);
    ~CProjectData() override = default;

    // The content of a new project: the default roles and administrator, an empty plan and the default
    // calendar, under fresh project identifiers. The state index stays.
    void clear();
    void setupDefaultRoles();
    void setupDefaultUser();

    // The administrator and the administrator's role are there under their names.
    bool checkAdminUserAndRoleExist() const;
    // Whether a user has exactly that login and that password.
    bool loginCheck(CString const & login, CString const & password) const;

    // By value of the content; the master project's identifier takes no part.
    friend bool operator==(CProjectData const & a, CProjectData const & b) { return equal(a, b); }

    bool getChanged() const { return changed; }
    // The derived pass: stored risk is forgotten, then every part derives its flag, the tasks last, which
    // rebuild their caches from the leaves upward.
    bool setChanged();
    // Clears every flag; what a derived pass owes to unchanged parts comes out current.
    void resetChanged();
    // Counts as changed until the next pass, whatever its parts say.
    void flagAsChanged() { changed = true; }

    // The root tasks, for building a plan as a value; the project takes it over with setProjectData.
    CTaskArray const & getTasks() const { return tasks; }
    void setTasks(CTaskArray const & roots) { tasks = roots; }

    // The companies, the register of risks and the filters, likewise.
    CCompanyArray const & getCompanies() const { return companies; }
    void setCompanies(CCompanyArray const & value) { companies = value; }
    CRiskArray const & getRisks() const { return risks; }
    void setRisks(CRiskArray const & value) { risks = value; }
    CFilterArray const & getFilters() const { return filters; }
    void setFilters(CFilterArray const & value) { filters = value; }

    // What of a project file is the project's content. Another header than its own shows a message and aborts the
    // archive, with nothing changed.
    void Serialize(CProjectArchive & archive);
    // A file of the content alone. 1, or 0 when it cannot be opened, which the user is told; what goes wrong later
    // throws. After reading, a project that takes it over must be made whole with CProject::postSerialize.
    int saveToFile(CString const & fileName);
    int readFromFile(CString const & fileName);
    // The element of the content. Loading takes from it neither tasks nor roles nor categories, and empties the tasks.
    void xmlSerialize(CProjectXMLArchive & archive) override;

    // Points everything that knows its project at this one.
    void setProject(CProject * value);

private:
    friend class CProject;
    friend class CLocalRulesChecker;

    template <class Visit>
    static void describe(Visit && visit);
    static bool equal(CProjectData const & a, CProjectData const & b);
    bool exchangeHeader(CProjectArchive & archive);
    static void skipOldViews(CProjectArchive & archive);
    void exchangeScene(CProjectArchive & archive);

    CCompanyArray companies;
    CUserArray users;
    CRoleArray roles;
    CTaskArray tasks;
    CTaskCategoryArray taskCategories;
    CRiskArray risks;
    CFilterArray filters;
    CCalendar calendar;
    CProjectID clientProjectID;
    CProjectID masterProjectID;
    CUserID adminUserID{orvane::nullID};
    CRoleID adminRoleID{orvane::nullID};
    // Copies the other's entities; the scene object itself stays.
    struct CopiedScene : CScene
    {
        CopiedScene() = default;
        CopiedScene(CopiedScene const & other) : CScene() { copyEntitiesFrom(other); }
        CopiedScene & operator=(CopiedScene const & other)
        {
            if (this != &other) copyEntitiesFrom(other);
            return *this;
        }
    };
    CopiedScene scene;
    CProjectStateIndex stateIndex{0};
    orvane::CStoredRisk storedRisk;
    // As setProject said; a copy belongs to no project until then.
    CProject * project = nullptr;
    bool changed = false;
};
