#include "model/resource.h"

#include "model/project.h"
#include "values/record_impl.h"

template <class Visit>
void CResourceBase::describe(Visit && visit)
{
    visit("ID", &CResourceBase::id);
    visit("name", &CResourceBase::name);
    visit("description", &CResourceBase::description);
    visit("supplierReferences", &CResourceBase::supplierReferences);
    visit("autoaccept", &CResourceBase::autoAccept);
    visit("status", &CResourceBase::status);
    visit("leadtime", &CResourceBase::leadTime);
    visit("orderrequired", &CResourceBase::orderRequired);
    visit("costs", &CResourceBase::costs);
    visit("totalunitsavailable", &CResourceBase::totalUnitsAvailable);
    visit("resourceunittype", &CResourceBase::resourceUnitType);
    visit("representations", &CResourceBase::representations);
}

template class orvane::CRecord<CResourceBase>;

// ---- life -----------------------------------------------------------------------------------------

CResourceBase::CResourceBase()
{
    ++s_created;
}

CResourceBase::CResourceBase(char const * name) : name(name)
{
    ++s_created;
}

CResourceBase::CResourceBase(CResourceBase const & other)
    : CRecord(other),
      id(other.id),
      name(other.name),
      description(other.description),
      supplierReferences(other.supplierReferences),
      autoAccept(other.autoAccept),
      status(other.status),
      leadTime(other.leadTime),
      orderRequired(other.orderRequired),
      costs(other.costs),
      totalUnitsAvailable(other.totalUnitsAvailable),
      resourceUnitType(other.resourceUnitType),
      representations(other.representations)
{
    ++s_created;
}

CResourceBase & CResourceBase::operator=(CResourceBase const & other)
{
    describe([&](char const *, auto field) { this->*field = other.*field; });
    changed = other.changed;
    return *this;
}

CResourceBase::~CResourceBase()
{
    ++s_deleted;
}

void CResourceBase::setID(CResourceID const & value)
{
    id = value;
    orvane::CResourceStructure::changes();
}

CCalendar const & CResourceBase::calendarAbove(CCalendarID const & calendarID) const
{
    return project ? project->getCalendarInUse(calendarID) : CCalendar::getStandardCalendar();
}

// ---- supplier references --------------------------------------------------------------------------

CProjectString const & CResourceBase::getSupplierReference(int index) const
{
    static CProjectString const none("");
    if (supplierReferences.IsEmpty()) return none;
    return supplierReferences.GetAt(index >= 0 && index < supplierReferences.GetSize() ? index : 0);
}

void CResourceBase::setSupplierReference(CString const & text, int index)
{
    supplierReferences.SetAt(index, text);
}

int CResourceBase::removeSupplierReference(int index)
{
    if (index < 0 || index >= supplierReferences.GetSize()) return -1;
    supplierReferences.RemoveAt(index);
    return supplierReferences.GetSize();
}

// ---- costs ----------------------------------------------------------------------------------------

void CResourceBase::addCost(CCost const & cost, int index)
{
    CCostArray & array = costs.make();
    if (index < 0) array.Add(cost);
    else array.InsertAt(std::min(index, array.GetSize()), cost);
}

bool CResourceBase::findResourceCost(CCost & out, CCostID const & sought) const
{
    int const position = costs ? costs.get()->findByID(sought) : -1;
    if (position >= 0) out = costs.get()->GetAt(position);
    return position >= 0;
}

void CResourceBase::Serialize(CProjectArchive & archive)
{
    archive.exchange(id, name, description, supplierReferences, autoAccept, status, leadTime, orderRequired, costs);
    archive.skipUntil<CResourcePresentation>(32);
    archive.skipUntil<CProjectBool>(29);
    archive.exchange(representations);
    if (archive.fileVersion() >= 23) archive.skipUntil<CProjectBool>(25);
    archive.exchangeSince(23, totalUnitsAvailable, 0);
    archive.exchangeSince(24, resourceUnitType, CResourceUnitType(CResourceUnitType::Unknown));
}

// ---- in the document ------------------------------------------------------------------------------

void CResourceBase::xmlSerialize(CProjectXMLArchive & archive)
{
    CString const tag = tagName();
    if (archive.isLoading()) orvane::CResourceStructure::changes();
    if (archive.readsAnother(tag)) return xmlWriteSubTags(archive);
    archive.startEntity(tag);
    xmlWriteAttributes(archive);
    archive.out(">");
    if (archive.isStoring()) xmlWriteSubTags(archive);
    archive.endEntity("</" + tag + ">");
    if (archive.isLoading()) archive.setTagProcessor(this);
}

void CResourceBase::xmlWriteAttributes(CProjectXMLArchive & archive)
{
    exchangeAttributes(archive);
}

void CResourceBase::xmlWriteSubTags(CProjectXMLArchive & archive)
{
    supplierReferences.xmlSerialize(archive);
    costs.xmlSerialize(archive);
}
