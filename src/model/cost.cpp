#include "model/cost.h"

#include "values/record_impl.h"

template <class Visit>
void CCost::describe(Visit && visit)
{
    visit("ID", &CCost::id);
    visit("description", &CCost::description);
    visit("amount", &CCost::amount);
    visit("type", &CCost::type);
}

template class orvane::CRecord<CCost>;
