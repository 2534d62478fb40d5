#include "values/date_array.h"

#include "values/document_array_impl.h"

void CProjectDateArray::xmlSerialize(CProjectXMLArchive & archive, CString const & name)
{
    orvane::exchangeLines(archive, *this, "ProjectDates", name);
}
