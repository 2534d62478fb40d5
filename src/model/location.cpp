#include "model/location.h"

#include "values/record_impl.h"

template <class Visit>
void CLocation::describe(Visit && visit)
{
    visit("ID", &CLocation::id);
}

template class orvane::CRecord<CLocation>;
