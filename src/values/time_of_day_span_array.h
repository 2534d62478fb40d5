#pragma once

#include "values/date_time.h"
#include "values/typed_array.h"

// The periods of a day in the order in which they were added. They are read by position; their key, the
// printed form, serves no lookup.
class CProjectTimeOfDaySpanArray
    : public orvane::CTypedArray<CProjectTimeOfDaySpanArray, CProjectTimeOfDaySpan, std::identity{}>,
      public IProjectXMLTagProcessor
{
public:
    // Elements are read under another name than they are written: "ProjectTimeOfDaySpan".
    void xmlSerialize(CProjectXMLArchive & archive) override;
};
