#pragma once

#include <cstddef>
#include <string_view>
#include <type_traits>

class CObject;

namespace orvane
{

// The name of a class as its author wrote it, without namespaces, taken from the compiler's own text.
template <class T>
constexpr std::string_view className()
{
    std::string_view text = __PRETTY_FUNCTION__;
    std::size_t const first = text.find("T = ") + 4;
    text = text.substr(first, text.find_first_of(";]", first) - first);
    std::size_t const scope = text.rfind("::");
    return scope == std::string_view::npos ? text : text.substr(scope + 2);
}

}  // namespace orvane

// What is known at run time of one class: its name, its size, its base, and how to make one.
class CRuntimeClass
{
public:
    using Create = CObject * (*)();

    CRuntimeClass(std::string_view name, std::size_t size, CRuntimeClass const * base, Create create);
    CRuntimeClass(CRuntimeClass const &) = delete;
    CRuntimeClass & operator=(CRuntimeClass const &) = delete;

    std::string_view getName() const { return name; }
    std::size_t getObjectSize() const { return size; }
    CRuntimeClass const * getBaseClass() const { return base; }

    // A new default-constructed object that the caller owns; null for a class that cannot be created.
    CObject * CreateObject() const { return create ? create() : nullptr; }
    bool IsDerivedFrom(CRuntimeClass const * other) const;

    // The class of that name among those that the program uses; null when there is none.
    static CRuntimeClass const * FromName(std::string_view name);

private:
    std::string_view name;
    std::size_t size;
    CRuntimeClass const * base;
    Create create;
    CRuntimeClass const * next;
};

// The root of every class of the model: an object that knows its class at run time.
class CObject
{
public:
    virtual CRuntimeClass const * GetRuntimeClass() const { return GetThisClass(); }
    virtual ~CObject() = default;

    // Whether the object is of that class or of one derived from it.
    bool IsKindOf(CRuntimeClass const * runtimeClass) const { return GetRuntimeClass()->IsDerivedFrom(runtimeClass); }

    static CRuntimeClass const * GetThisClass();

protected:
    CObject() = default;
    CObject(CObject const &) = default;
    CObject & operator=(CObject const &) = default;
};

// Gives `Self` its run-time class: derive from CDynamic<Self> or CDynamic<Self, Base>, and that is all.
template <class Self, class Base = CObject>
class CDynamic : public Base
{
public:
    using Base::Base;

    CRuntimeClass const * GetRuntimeClass() const override { return &runtimeClass; }
    static CRuntimeClass const * GetThisClass() { return &runtimeClass; }

private:
    static CObject * create()
    {
        if constexpr (std::is_default_constructible_v<Self> && !std::is_abstract_v<Self>) return new Self;
        else return nullptr;
    }
    static CRuntimeClass const * baseClass() { return Base::GetThisClass(); }

    // A function-local size keeps this usable while Self is still incomplete.
    static std::size_t objectSize() { return sizeof(Self); }

    static inline CRuntimeClass const runtimeClass{orvane::className<Self>(), objectSize(), baseClass(), &CDynamic::create};
};
