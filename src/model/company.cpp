#include "model/company.h"

#include "values/document_array_impl.h"
#include "values/record_impl.h"
#include "view/company_presentation.h"

template <class Visit>
void CCompany::describe(Visit && visit)
{
    visit("ID", &CCompany::id);
    visit("name", &CCompany::name);
    visit("type", &CCompany::type);
    visit("address", &CCompany::address);
    visit("telephoneNumber", &CCompany::telephoneNumber);
    visit("faxNumber", &CCompany::faxNumber);
    visit("emailAddress", &CCompany::emailAddress);
    visit("calendar", &CCompany::calendar);
    visit("equipmentResources", &CCompany::equipmentResources);
    visit("humanResources", &CCompany::humanResources);
    visit("locationResources", &CCompany::locationResources);
    visit("materialResources", &CCompany::materialResources);
    visit("color", &CCompany::color);
}

template class orvane::CRecord<CCompany>;

CCompany::CCompany(CString const & name, CCompanyType const & type, CString const & address,
                   CString const & telephoneNumber, CString const & faxNumber, CString const & emailAddress)
    : name(name),
      type(type),
      address(address),
      telephoneNumber(telephoneNumber),
      faxNumber(faxNumber),
      emailAddress(emailAddress)
{
}

CCompany & CCompany::operator=(CCompany const & other)
{
    describe([&](char const *, auto field) { this->*field = other.*field; });
    changed = other.changed;
    orvane::CResourceStructure::changes();
    return *this;
}

void CCompany::setID(CCompanyID const & value)
{
    id = value;
    orvane::CResourceStructure::changes();
}

void CCompany::setCalendar(CCalendar const & value)
{
    calendar = value;
    orvane::CResourceStructure::changes();
}

void CCompany::copyFromMasterCalendar()
{
    calendar.copyFromMasterCalendar();
}

int CCompany::getTotalNumberOfResources() const
{
    int total = 0;
    forEachKind([&](auto const & resources) { total += resources.GetSize(); });
    return total;
}

void CCompany::setProject(CProject * project)
{
    calendar.setProject(project);
    forEachKind([&](auto & resources) {
        for (int each = 0; each < resources.GetSize(); ++each) resources.elementForPass(each).setProject(project);
    });
}

void CCompany::postSerialize(CProject * project)
{
    setProject(project);
    if (!project) return;
    calendar.postSerialize(project);
    forEachKind([&](auto & resources) {
        for (int each = 0; each < resources.GetSize(); ++each) resources.elementForPass(each).postSerialize(project);
    });
}

void CCompany::Serialize(CProjectArchive & archive)
{
    archive.exchange(id, type, calendar);
    forEachKind([&](auto & resources) { archive.exchange(resources); });
    if (archive.fileVersion() >= 12) archive.skipUntil<CUserIDArray>(18);
    archive.skipUntil<CCompanyPresentation>(35);
    archive.exchange(name, address, telephoneNumber, faxNumber, emailAddress);
    archive.exchangeSince(31, color, CProjectColor());
}

void CCompany::xmlSerialize(CProjectXMLArchive & archive)
{
    constexpr char tag[] = "Company";
    if (archive.readsAnother(tag))
    {
        if (archive.readsAny({"Calendar", "EquipmentResources", "HumanResources", "LocationResources",
                              "MaterialResources"}))
            exchangeChildren(archive);
        return;
    }
    archive.startEntity(tag);
    exchangeAttributes(archive);
    archive.out(">");
    if (archive.isStoring()) exchangeChildren(archive);
    archive.endEntity("</Company>");
    if (!archive.isLoading()) return;
    archive.setTagProcessor(this);
    orvane::CResourceStructure::changes();
}

void CCompanyArray::xmlSerialize(CProjectXMLArchive & archive)
{
    orvane::exchangeElements(archive, *this, "Companies", "Company");
}
