#include "values/enumerations.h"

#include "platform/project_xml_archive.h"

bool orvane::exchangeNumber(CProjectXMLArchive & archive, CString const & name, int & number)
{
    archive.attribute(name, number, 0);
    return archive.isLoading() != 0;
}

bool operator>(CAccessType const & a, CAccessType const & b)
{
    int const own = a.getEquivalentValue();
    switch (b.getEquivalentValue())
    {
        case CAccessType::All: return false;
        case CAccessType::WhereSupplierOrCustomer: return own == CAccessType::All;
        case CAccessType::None: return own != CAccessType::None;
        default: return own != b.getEquivalentValue() && own != CAccessType::None;
    }
}

void CAccessType::makeEqualOrLessPermissive(CAccessType const & limit)
{
    if (*this > limit) *this = limit;
}
