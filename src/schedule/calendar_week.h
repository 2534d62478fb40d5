#pragma once

#include "platform/project_xml_archive.h"
#include "values/identifiers.h"
#include "values/record.h"

// Which day type each day of the week has. Days are numbered from 1 for Sunday to 7 for Saturday.
class CCalendarWeek : public orvane::CRecord<CCalendarWeek>, public IProjectXMLTagProcessor
{
public:
    // For any other number one identifier that belongs to no day type.
    CCalendarDayTypeID const & getDay(int day) const;
    // Any other number is ignored.
    void setDay(int day, CCalendarDayTypeID const & dayTypeID);

    // Flags the week, also when storing.
    void Serialize(CProjectArchive & archive);
    void xmlSerialize(CProjectXMLArchive & archive) override;

private:
    friend class orvane::CRecord<CCalendarWeek>;
    template <class Visit>
    static void describe(Visit && visit);

    // The field of a day; null for any other number.
    static CCalendarDayTypeID CCalendarWeek::*fieldOf(int day);

    CCalendarDayTypeID sunday{orvane::nullID};
    CCalendarDayTypeID monday{orvane::nullID};
    CCalendarDayTypeID tuesday{orvane::nullID};
    CCalendarDayTypeID wednesday{orvane::nullID};
    CCalendarDayTypeID thursday{orvane::nullID};
    CCalendarDayTypeID friday{orvane::nullID};
    CCalendarDayTypeID saturday{orvane::nullID};
};

extern template class orvane::CRecord<CCalendarWeek>;
