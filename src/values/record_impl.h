#pragma once

#include "values/record.h"

namespace orvane
{

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
