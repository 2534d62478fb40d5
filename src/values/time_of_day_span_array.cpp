#include "values/time_of_day_span_array.h"

#include "values/document_array_impl.h"

void CProjectTimeOfDaySpanArray::xmlSerialize(CProjectXMLArchive & archive)
{
    orvane::exchangeElements(archive, *this, "ProjectTimeOfDaySpans", "ProjectTimeOfDaySpan");
}
