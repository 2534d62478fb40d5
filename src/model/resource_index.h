#pragma once

#include <array>
#include <cstdint>
#include <unordered_map>

#include "model/company.h"

namespace orvane
{

// Every resource and calendar of a project's companies by identifier. It is brought up to date on demand,
// whenever resources may have come, gone or moved, by one walk over the companies in their order; of two
// with the same identifier the first in that walk is found.
class CResourceIndex
{
public:
    // In the order in which a resource of unknown kind is sought.
    static constexpr std::size_t kinds = 4;

    struct Place
    {
        CResourceBase * resource = nullptr;
        // Null directly under the company.
        CResourceBase * parent = nullptr;
        CCompany * company = nullptr;
    };
    // What bears one identifier, by kind: as a rule one resource.
    struct Holders
    {
        std::array<Place, kinds> places;
        // The first of any kind.
        Place const & first() const;
    };
    struct CalendarPlace
    {
        CCalendar const * calendar = nullptr;
        CCompany const * company = nullptr;
    };

    // Null when there is none, and for a NULL identifier.
    Holders const * find(CCompanyArray const & companies, CResourceID const & id);
    CalendarPlace const * find(CCompanyArray const & companies, CCalendarID const & id);

    template <class Resource>
    static constexpr std::size_t kindOf()
    {
        if constexpr (std::is_same_v<Resource, CEquipmentResource>) return 0;
        else if constexpr (std::is_same_v<Resource, CHumanResource>) return 1;
        else if constexpr (std::is_same_v<Resource, CLocationResource>) return 2;
        else return 3;
    }

private:
    void bringUpToDate(CCompanyArray const & companies);
    template <class Array>
    void enterAll(Array & array, CCompany & company, CResourceBase * parent);

    std::unordered_map<_GUID, Holders> resources;
    std::unordered_map<_GUID, CalendarPlace> calendars;
    std::uint64_t stamp = 0;
};

}  // namespace orvane
