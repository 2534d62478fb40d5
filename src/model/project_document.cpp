// The project's XML document as a whole.

#include "model/project.h"


namespace
{

// No name that a parser accepts, for its blank.
CString const & rootName()
{
    static CString const name = "Brindlewood Co";
    return name;
}

// With the year in which the library was built.
CString makersNotice()
{
    constexpr int yearInDate = 7;
    return CString("Orvane Schedule ") + (__DATE__ + yearInDate);
}

}  // namespace

void CProjectData::xmlSerialize(CProjectXMLArchive & archive)
{
    constexpr char tag[] = "ProjectData";
    // Roles and categories are written, and never read.
    bool const readsPart = archive.readsAny(
        {tag, "ProjectStateIndex", "Companies", "Users", "Tasks", "Risks", "Filters", "Calendar"});
    if (archive.isLoading() && !readsPart) return;
    archive.startEntity(tag);
    if (!archive.readsAnother(tag))
    {
        adminUserID.xmlSerialize(archive, "adminUserID");
        adminRoleID.xmlSerialize(archive, "adminRoleID");
        masterProjectID.xmlSerialize(archive, "masterProjectID");
        clientProjectID.xmlSerialize(archive, "clientProjectID");
    }
    archive.out(">");
    stateIndex.xmlSerialize(archive);
    companies.xmlSerialize(archive);
    users.xmlSerialize(archive);
    roles.xmlSerialize(archive);
    tasks.xmlSerialize(archive);
    taskCategories.xmlSerialize(archive);
    risks.xmlSerialize(archive);
    filters.xmlSerialize(archive);
    calendar.xmlSerialize(archive);
    archive.endEntity("</ProjectData>");
}

void CProject::xmlSerialize(CProjectXMLArchive & archive)
{
    if (archive.readsAnother(rootName())) return;
    // Of the document; it has always been this one.
    int version = 1;
    archive.attribute("version", version, 0);
    if (archive.isLoading()) return archive.setTagProcessor(&projectData);
    archive.out(">");
    projectData.xmlSerialize(archive);
}

void CProject::xmlSerialize(bool write, CString const & fileName, bool compressed)
{
    CProjectXMLArchive archive;
    if (write)
    {
        if (!archive.openForWrite(nullptr, fileName, compressed, rootName(), "", makersNotice())) return;
        xmlSerialize(archive);
        archive.close();
    }
    else archive.parse(fileName, this);
    updateCriticalPath();
}
