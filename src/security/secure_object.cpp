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

void CSecureObject::xmlSerialize(CProjectXMLArchive & archive)
{
    archive.startEntity("SecureObject");
    archive.out(">");
    archive.endEntity("</SecureObject>");
}

void CSecurityGuard::xmlSerialize(CProjectXMLArchive & archive)
{
    archive.startEntity("SecurityGuard");
    archive.out(">");
    archive.endEntity("</SecurityGuard>");
}
