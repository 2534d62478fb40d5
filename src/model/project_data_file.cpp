#include "model/project_data.h"

#include "platform/message.h"
#include "view/presentation_data.h"

bool CProjectData::exchangeHeader(CProjectArchive & archive)
{
    constexpr char expected[] = "Orvane Schedule Project Data";
    CString header = expected;
    archive.exchange(header);
    if (header == expected) return true;
    warning("Incompatible project data file");
    archive.Abort();
    return false;
}

// The state of the views stood in the middle of the content once, as a list of its parts.
void CProjectData::skipOldViews(CProjectArchive & archive)
{
    int const version = archive.fileVersion();
    if (version >= 28) return archive.skipUntil<CPresentationData>(39);
    archive.skipUntil<CTaskID, CTaskIDArray, CCompanyID, CResourceID, CRiskID>(28);
    if (version >= 3) archive.skipUntil<CTaskReportID, CCostID>(28);
    if (version >= 14) archive.skip<CUserID>();
    if (version >= 16) archive.skip<CRoleID>();
    archive.skipUntil<CFilterID, CCostID, CCostID, CCostID, CResourceUtilisationPresentation, CNavigatorPresentation,
                      C3DPresentation, CGanttPresentation>(28);
    if (version >= 19) archive.skip<CEVAGraphPresentation>();
}

void CProjectData::exchangeScene(CProjectArchive & archive)
{
    bool const done = archive.IsStoring() ? scene.write(archive) != 0 : scene.read(archive) != 0;
    if (!done) archive.refuse();
}

void CProjectData::Serialize(CProjectArchive & archive)
{
    if (!exchangeHeader(archive)) return;
    // What a calendar that is not in use holds does not come from the file.
    if (archive.IsLoading()) calendar.clear(false);

    int const version = archive.fileVersion();
    archive.exchangeSince(4, stateIndex, 0);
    archive.exchange(masterProjectID);
    archive.exchangeSince(5, clientProjectID, masterProjectID);
    archive.exchange(companies, users);
    if (version >= 15) archive.exchange(roles);
    else setupDefaultRoles();
    archive.exchange(tasks);
    archive.exchangeSince(27, taskCategories, CTaskCategoryArray());
    archive.exchange(risks, filters);
    archive.skipUntil<CUserArray>(11);
    archive.exchange(calendar);
    skipOldViews(archive);
    exchangeScene(archive);
    archive.exchangeSince(21, adminUserID, CUserID::getNULL());
    archive.exchangeSince(21, adminRoleID, CRoleID::getNULL());
}
