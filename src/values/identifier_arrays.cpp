#include "values/identifier_arrays.h"

#include "values/document_array_impl.h"

using orvane::exchangeElements;
using orvane::exchangeLines;
using orvane::readElement;

// Those without a readElement, or an element's name, are written and never read: only their wrapper empties them.

void CAssignedRiskIDArray::xmlSerialize(CProjectXMLArchive & archive)
{
    exchangeLines(archive, *this, "AssignedRiskIDs", "id");
}

void CCompanyIDArray::xmlSerialize(CProjectXMLArchive & archive)
{
    exchangeElements(archive, *this, "CompanyIDs", "CompanyID");
}

void CEntityIDArray::xmlSerialize(CProjectXMLArchive & archive)
{
    exchangeLines(archive, *this, "EntityIDs", "id");
    readElement(archive, *this, "EntityID");
}

void CResourceIDArray::xmlSerialize(CProjectXMLArchive & archive)
{
    exchangeLines(archive, *this, "ResourceIDs", "id");
    readElement(archive, *this, "ResourceID");
}

void CRiskIDArray::xmlSerialize(CProjectXMLArchive & archive)
{
    exchangeLines(archive, *this, "RiskIDs", "id");
    readElement(archive, *this, "RiskID");
}

void CTaskIDArray::xmlSerialize(CProjectXMLArchive & archive)
{
    exchangeLines(archive, *this, "TaskIDs", "id");
}

void CUserIDArray::xmlSerialize(CProjectXMLArchive & archive)
{
    exchangeElements(archive, *this, "UserIDs", nullptr);
}
