#include "model/resource_index.h"

#include <algorithm>

namespace orvane
{

CResourceIndex::Place const & CResourceIndex::Holders::first() const
{
    return *std::find_if(places.begin(), places.end() - 1, [](Place const & place) { return place.resource != nullptr; });
}

CResourceIndex::Holders const * CResourceIndex::find(CCompanyArray const & companies, CResourceID const & id)
{
    if (id.isNULL()) return nullptr;
    bringUpToDate(companies);
    auto const found = resources.find(id.getGUID());
    return found == resources.end() ? nullptr : &found->second;
}

CResourceIndex::CalendarPlace const * CResourceIndex::find(CCompanyArray const & companies, CCalendarID const & id)
{
    if (id.isNULL()) return nullptr;
    bringUpToDate(companies);
    auto const found = calendars.find(id.getGUID());
    return found == calendars.end() ? nullptr : &found->second;
}

template <class Array>
void CResourceIndex::enterAll(Array & array, CCompany & company, CResourceBase * parent)
{
    for (int each = 0; each < array.GetSize(); ++each)
    {
        auto & resource = array.elementForPass(each);
        using Resource = std::remove_reference_t<decltype(resource)>;
        Place & place = resources[resource.getID().getGUID()].places[kindOf<Resource>()];
        if (!place.resource) place = {&resource, parent, &company};
        if constexpr (requires { resource.getCalendar(); })
            calendars.try_emplace(resource.getCalendar().getID().getGUID(), CalendarPlace{&resource.getCalendar(), &company});
        if (resource.hasSubResource()) enterAll(const_cast<Array &>(*resource.getSubResources()), company, &resource);
    }
}

// The index hands out what it finds for reading or, to the rules, for writing.
void CResourceIndex::bringUpToDate(CCompanyArray const & companies)
{
    std::uint64_t const now = CResourceStructure::stamp();
    if (stamp == now) return;
    stamp = now;
    resources.clear();
    calendars.clear();
    for (CCompany const & each : companies)
    {
        CCompany & company = const_cast<CCompany &>(each);
        calendars.try_emplace(company.getCalendar().getID().getGUID(), CalendarPlace{&company.getCalendar(), &company});
        company.forEachKind([&](auto & array) { enterAll(array, company, nullptr); });
    }
}

}  // namespace orvane
