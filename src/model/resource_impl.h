#pragma once

#include "model/location.h"
#include "model/resources.h"
#include "values/record_impl.h"
#include "values/saturate.h"

namespace orvane
{

// ---- life and flags ---------------------------------------------------------------------------------

template <class Self, class Array>
CResourceKind<Self, Array>::CResourceKind() : CDynamic<Self, CResourceBase>(Self::defaultName)
{
}

template <class Self, class Array>
CResourceKind<Self, Array>::CResourceKind(CResourceKind const & other) = default;

template <class Self, class Array>
CResourceKind<Self, Array> & CResourceKind<Self, Array>::operator=(CResourceKind const & other)
{
    CResourceBase::operator=(other);
    useRatePerDay = other.useRatePerDay;
    subResources = other.subResources;
    CResourceStructure::changes();
    return *this;
}

template <class Self, class Array>
CResourceKind<Self, Array>::~CResourceKind() = default;

template <class Self, class Array>
void CResourceKind<Self, Array>::resetChanged()
{
    CResourceBase::resetChanged();
    Self::describeOwn([this](char const *, auto field) { (static_cast<Self *>(this)->*field).resetChanged(); });
}

template <class Self, class Array>
bool CResourceKind<Self, Array>::setChanged()
{
    CResourceBase::setChanged();
    Self::describeOwn([this](char const *, auto field) {
        this->changed |= (static_cast<Self *>(this)->*field).setChanged();
    });
    return this->changed;
}

template <class Self, class Array>
void CResourceKind<Self, Array>::touch()
{
    CResourceBase::touch();
    Self::describeOwn([this](char const *, auto field) { (static_cast<Self *>(this)->*field).touch(); });
    if (subResources) *subResources.get() = *subResources.get();
}

template <class Self, class Array>
bool CResourceKind<Self, Array>::equal(Self const & a, Self const & b)
{
    bool same = CResourceBase::equal(a, b);
    Self::describeOwn([&](char const *, auto field) { same = same && a.*field == b.*field; });
    return same;
}

template <class Self, class Array>
void CResourceKind<Self, Array>::Serialize(CProjectArchive & archive)
{
    CResourceBase::Serialize(archive);
    Self::exchangeOwn(static_cast<Self &>(*this), archive);
    if (archive.IsStoring()) return;
    // A leaf has no array rather than an empty one.
    subResources.deleteIfEmpty();
    CResourceStructure::changes();
}

template <class Self, class Array>
void CResourceKind<Self, Array>::xmlWriteAttributes(CProjectXMLArchive & archive)
{
    CResourceBase::xmlWriteAttributes(archive);
    Self::describeOwn(
        [&](char const * name, auto field)
        {
            auto & value = static_cast<Self *>(this)->*field;
            if constexpr (DocumentAttribute<std::remove_cvref_t<decltype(value)>>) value.xmlSerialize(archive, name);
        });
}

template <class Self, class Array>
void CResourceKind<Self, Array>::xmlWriteSubTags(CProjectXMLArchive & archive)
{
    CResourceBase::xmlWriteSubTags(archive);
    Self::describeOwn(
        [&](char const *, auto field)
        {
            auto & value = static_cast<Self *>(this)->*field;
            using Field = std::remove_cvref_t<decltype(value)>;
            if constexpr (DocumentChild<Field> && !DocumentAttribute<Field>) value.xmlSerialize(archive);
        });
}

// ---- the tree ---------------------------------------------------------------------------------------

template <class Self, class Array>
void CResourceKind<Self, Array>::setSubResources(Array const & resources)
{
    subResources.assign(resources);
    CResourceStructure::changes();
}

template <class Self, class Array>
int CResourceKind<Self, Array>::countSubResources() const
{
    if (!subResources) return 0;
    int count = subResources.get()->GetSize();
    for (Self const & each : *subResources.get()) count += each.countSubResources();
    return count;
}

template <class Self, class Array>
template <class Test>
Self const * CResourceKind<Self, Array>::findFirst(Test const & test) const
{
    if (test(self())) return &self();
    if (!subResources) return nullptr;
    for (Self const & each : *subResources.get())
        if (Self const * const found = each.findFirst(test)) return found;
    return nullptr;
}

template <class Self, class Array>
Self const * CResourceKind<Self, Array>::findResource(CResourceID const & sought) const
{
    return findFirst([&](Self const & each) { return each.getID() == sought; });
}

template <class Self, class Array>
Self * CResourceKind<Self, Array>::findWritableResource(CResourceID const & sought)
{
    return const_cast<Self *>(findResource(sought));
}

template <class Self, class Array>
Self const * CResourceKind<Self, Array>::findResource(CCostID const & sought) const
{
    return findFirst([&](Self const & each) { return each.getCosts() && each.getCosts()->findByID(sought) >= 0; });
}

template <class Self, class Array>
bool CResourceKind<Self, Array>::findResourceCost(CCost & out, CCostID const & sought) const
{
    Self const * const holder = findResource(sought);
    return holder && holder->CResourceBase::findResourceCost(out, sought);
}

template <class Self, class Array>
bool CResourceKind<Self, Array>::canMakeSubResource(Self const & candidate) const
{
    bool const already = subResources && subResources.get()->findByID(candidate.getID()) >= 0;
    return !already && !candidate.findResource(this->getID());
}

template <class Self, class Array>
bool CResourceKind<Self, Array>::getLeafResources(CResourceIDArray & leaves) const
{
    if (!subResources) return leaves.Add(this->getID()) >= 0;
    bool all = true;
    for (Self const & each : *subResources.get()) all = each.getLeafResources(leaves) && all;
    return all;
}

template <class Self, class Array>
bool CResourceKind<Self, Array>::getLeafResources(Array & leaves) const
{
    if (!subResources) return leaves.Add(self()) >= 0;
    bool all = true;
    for (Self const & each : *subResources.get()) all = each.getLeafResources(leaves) && all;
    return all;
}

template <class Self, class Array>
bool CResourceKind<Self, Array>::isEntityAssignedToResourceOrSubResources(CEntityID const & entity) const
{
    return findFirst([&](Self const & each) { return each.getRepresentations().findByID(entity) >= 0; }) != nullptr;
}

template <class Self, class Array>
int CResourceKind<Self, Array>::getUseRatePerDay() const
{
    if (!subResources) return useRatePerDay.getValue();
    std::int64_t sum = 0;
    for (Self const & each : *subResources.get()) sum += each.getUseRatePerDay();
    return saturate<std::int32_t>(sum);
}

// ---- resources with a calendar ----------------------------------------------------------------------

template <class Self, class Array>
template <class Visit>
void CWorkingResource<Self, Array>::describeOwn(Visit && visit)
{
    visit("calendar", &CWorkingResource::calendar);
    visit("useRatePerDay", &CWorkingResource::useRatePerDay);
    visit("percentageused", &CWorkingResource::percentageUsed);
    visit("availablefrom", &CWorkingResource::availableFrom);
    visit("availableto", &CWorkingResource::availableTo);
    visit("subResources", &CWorkingResource::subResources);
}

template <class Self, class Array>
void CWorkingResource<Self, Array>::exchangeOwn(Self & resource, CProjectArchive & archive)
{
    archive.exchange(resource.calendar, resource.useRatePerDay, resource.percentageUsed);
    // People were once told where they work.
    if constexpr (std::is_same_v<Self, CHumanResource>) archive.skipUntil<CLocationArray>(29);
    archive.exchange(resource.availableFrom, resource.availableTo, resource.subResources);
}

template <class Self, class Array>
void CWorkingResource<Self, Array>::setProject(CProject * value)
{
    this->project = value;
    calendar.setProject(value);
    if (!this->subResources) return;
    Array & below = *this->subResources.get();
    for (int each = 0; each < below.GetSize(); ++each) below.elementForPass(each).setProject(value);
}

template <class Self, class Array>
void CWorkingResource<Self, Array>::postSerialize(CProject * value)
{
    setProject(value);
    calendar.postSerialize(value);
    if (!this->subResources) return;
    Array & below = *this->subResources.get();
    for (int each = 0; each < below.GetSize(); ++each) below.elementForPass(each).postSerialize(value);
}

template <class Self, class Array>
void CWorkingResource<Self, Array>::setCalendar(CCalendar const & value)
{
    calendar = value;
    CResourceStructure::changes();
}

template <class Self, class Array>
void CWorkingResource<Self, Array>::copyCalendarFromMasterCalendar()
{
    calendar.copyFromMasterCalendar();
}

template <class Self, class Array>
CCalendar const & CWorkingResource<Self, Array>::getCalendarInUse() const
{
    if (calendar.getInUse()) return calendar;
    return this->calendarAbove(calendar.getID());
}

template <class Self, class Array>
Self const * CWorkingResource<Self, Array>::findResourceCalendar(CCalendarID const & sought) const
{
    return this->findFirst([&](Self const & each) { return each.getCalendar().getID() == sought; });
}

// The first valid date met, and from then on whichever valid one lies further out.
template <class Array, class Date, class Further>
CProjectDate outermost(Array const & resources, Date const & dateOf, Further const & further)
{
    CProjectDate found;
    for (auto const & each : resources)
    {
        CProjectDate const date = (each.*dateOf)();
        if (!found.isValid() || (date.isValid() && further(date, found))) found = date;
    }
    return found;
}

template <class Self, class Array>
CProjectDate CWorkingResource<Self, Array>::getAvailableFrom() const
{
    if (!this->subResources) return availableFrom;
    return outermost(*this->subResources.get(), &Self::getAvailableFrom, std::less<>());
}

template <class Self, class Array>
CProjectDate CWorkingResource<Self, Array>::getAvailableTo() const
{
    if (!this->subResources) return availableTo;
    return outermost(*this->subResources.get(), &Self::getAvailableTo, std::greater<>());
}

template <class Self, class Array>
void CWorkingResource<Self, Array>::setAvailableFrom(CProjectDate const & date)
{
    if (!this->subResources) availableFrom = date;
}

template <class Self, class Array>
void CWorkingResource<Self, Array>::setAvailableTo(CProjectDate const & date)
{
    if (!this->subResources) availableTo = date;
}

}  // namespace orvane
