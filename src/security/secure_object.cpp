#include "security/secure_object.h"

#include "values/record_impl.h"

template <class Visit>
void CSecureObject::describe(Visit &&)
{
}

template <class Visit>
void CSecurityGuard::describe(Visit &&)
{
}

template class orvane::CRecord<CSecureObject>;
template class orvane::CRecord<CSecurityGuard>;
