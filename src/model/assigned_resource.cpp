#include "model/assigned_resource.h"

#include "values/document_array_impl.h"
#include "values/record_impl.h"

template <class Visit>
void CAssignedResource::describe(Visit && visit)
{
    visit("id", &CAssignedResource::id);
    visit("resourceID", &CAssignedResource::resourceID);
    visit("assignedAmount", &CAssignedResource::percentageAssigned);
    visit("resourceProfileType", &CAssignedResource::resourceProfileType);
    visit("displayAsPercent", &CAssignedResource::displayAsPercent);
    visit("transform", &CAssignedResource::transform);
}

template class orvane::CRecord<CAssignedResource>;

CAssignedResource::CAssignedResource()
{
    ++s_created;
}

CAssignedResource::CAssignedResource(CAssignedResourceID const & id, CResourceID const & resourceID, int percentageAssigned)
    : id(id), resourceID(resourceID), percentageAssigned(percentageAssigned)
{
    ++s_created;
}

CAssignedResource::CAssignedResource(CAssignedResource const & other)
    : CRecord(other),
      id(other.id),
      resourceID(other.resourceID),
      percentageAssigned(other.percentageAssigned),
      displayAsPercent(other.displayAsPercent),
      resourceProfileType(other.resourceProfileType),
      transform(other.transform)
{
    ++s_created;
}

CAssignedResource::~CAssignedResource()
{
    ++s_deleted;
}

int CAssignedResourceArray::findByID(CAssignedResourceID const & id) const
{
    for (int position = 0; position < GetSize(); ++position)
        if (GetAt(position).getID() == id) return position;
    return -1;
}

bool CAssignedResourceArray::changeElement(CAssignedResource const & element)
{
    int const position = findByID(element.getID());
    if (position < 0) return false;
    SetAt(position, element);
    mutating();
    return true;
}

void CAssignedResource::Serialize(CProjectArchive & archive)
{
    archive.exchangeSince(22, transform, CTransform());
    archive.exchange(id, resourceID, percentageAssigned, resourceProfileType);
    archive.exchangeSince(25, displayAsPercent, CProjectBool(true));
}

void CAssignedResource::xmlSerialize(CProjectXMLArchive & archive)
{
    archive.startEntity("AssignedResource");
    exchangeAttributes(archive);
    // What the element holds stands at its own level.
    archive.undent();
    archive.out(">");
    archive.startEntity("Transform");
    if (archive.isStoring()) archive.attributeOut("Matrix", getTransform().toText(), "");
    archive.endEntity();
    archive.out("</AssignedResource>");
}

void CAssignedResourceArray::xmlSerialize(CProjectXMLArchive & archive)
{
    constexpr char element[] = "AssignedResource";
    orvane::exchangeElements(archive, *this, "AssignedResources", element);
    if (archive.isTag(element)) Add(CAssignedResource(GetAt(GetUpperBound())));
}
