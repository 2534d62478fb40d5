#pragma once

#include <concepts>
#include <type_traits>

#include "platform/project_xml_archive.h"
#include "values/record.h"

namespace orvane
{

// What stands in an element of its own, also where its name is told.
template <class Field>
concept DocumentChild = requires(Field & field, CProjectXMLArchive & archive)
{
    field.xmlSerialize(archive);
};
// What stands as an attribute. Identifiers can do both, and do this as fields.
template <class Field>
concept DocumentAttribute = !std::derived_from<Field, IProjectXMLTagProcessor> &&
                            requires(Field & field, CProjectXMLArchive & archive, CString const & name)
{
    field.xmlSerialize(archive, name);
};

template <class Self, class Base>
bool CRecord<Self, Base>::setChanged()
{
    changed = false;
    Self::describe([this](char const *, auto field) { changed |= (self().*field).setChanged(); });
    return changed;
}

template <class Self, class Base>
void CRecord<Self, Base>::resetChanged()
{
    changed = false;
    Self::describe([this](char const *, auto field) { (self().*field).resetChanged(); });
}

template <class Self, class Base>
void CRecord<Self, Base>::Serialize(CProjectArchive & archive)
{
    Self::describe([&](char const *, auto field) { archive.exchange(self().*field); });
}

template <class Self, class Base>
void CRecord<Self, Base>::exchangeAttributes(CProjectXMLArchive & archive)
{
    Self::describe(
        [&](char const * name, auto field)
        {
            using Field = std::remove_cvref_t<decltype(self().*field)>;
            if constexpr (DocumentAttribute<Field>) (self().*field).xmlSerialize(archive, name);
        });
}

template <class Self, class Base>
void CRecord<Self, Base>::exchangeChildren(CProjectXMLArchive & archive)
{
    Self::describe(
        [&](char const *, auto field)
        {
            using Field = std::remove_cvref_t<decltype(self().*field)>;
            if constexpr (DocumentChild<Field> && !DocumentAttribute<Field>) (self().*field).xmlSerialize(archive);
        });
}

template <class Self, class Base>
void CRecord<Self, Base>::exchangeElement(CProjectXMLArchive & archive, CString const & tag, char const * end)
{
    archive.startEntity(tag);
    exchangeAttributes(archive);
    archive.endEntity(end);
}

template <class Self, class Base>
void CRecord<Self, Base>::exchangeElementWithChildren(CProjectXMLArchive & archive, CString const & tag)
{
    archive.startEntity(tag);
    exchangeAttributes(archive);
    archive.out(">");
    exchangeChildren(archive);
    archive.endEntity("</" + tag + ">");
}

template <class Self, class Base>
void CRecord<Self, Base>::touch()
{
    Self::describe([this](char const *, auto field) { (self().*field).touch(); });
}

template <class Self, class Base>
bool CRecord<Self, Base>::equal(Self const & a, Self const & b)
{
    bool same = true;
    Self::describe([&](char const *, auto field) { same = same && a.*field == b.*field; });
    return same;
}

}  // namespace orvane
