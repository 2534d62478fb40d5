#include "values/enumerations.h"

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
