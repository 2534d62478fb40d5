#include "platform/object.h"

namespace
{

// Constant-initialised, so that classes may enter from any static constructor.
CRuntimeClass const * newest = nullptr;

}  // namespace

CRuntimeClass::CRuntimeClass(std::string_view name, std::size_t size, CRuntimeClass const * base, Create create)
    : name(name), size(size), base(base), create(create), next(newest)
{
    newest = this;
}

bool CRuntimeClass::IsDerivedFrom(CRuntimeClass const * other) const
{
    for (CRuntimeClass const * each = this; each; each = each->base)
        if (each == other) return true;
    return false;
}

CRuntimeClass const * CRuntimeClass::FromName(std::string_view name)
{
    for (CRuntimeClass const * each = newest; each; each = each->next)
        if (each->name == name) return each;
    return nullptr;
}

CRuntimeClass const * CObject::GetThisClass()
{
    static CRuntimeClass const runtimeClass("CObject", sizeof(CObject), nullptr, nullptr);
    return &runtimeClass;
}
