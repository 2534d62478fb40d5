#pragma once

#include "values/date_time.h"
#include "values/typed_array.h"

// A list of dates.
class CProjectDateArray : public orvane::CTypedArray<CProjectDateArray, CProjectDate, std::identity{}>,
                          public IProjectXMLTagProcessor
{
public:
    // In documents a line `name = "..."` for each date. They are never read: only the array is emptied.
    void xmlSerialize(CProjectXMLArchive & archive, CString const & name);
    void xmlSerialize(CProjectXMLArchive & archive) override { xmlSerialize(archive, "date"); }
    // The position of the date, compared by its stored moment, or -1.
    int find(CProjectDate const & date) const { return findByKey(date); }
};
