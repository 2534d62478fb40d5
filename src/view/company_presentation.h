#pragma once

#include "values/record.h"
#include "values/scalars.h"

// How a company is shown. Companies hold their colour themselves; this is the place where old files have it.
class CCompanyPresentation : public orvane::CRecord<CCompanyPresentation>
{
public:
    CProjectColor const & getColor() const { return color; }
    void setColor(CProjectColor const & value) { color = value; }

    // Reads whatever element it is given.
    void xmlSerialize(CProjectXMLArchive & archive);

private:
    friend class orvane::CRecord<CCompanyPresentation>;
    template <class Visit>
    static void describe(Visit && visit);

    CProjectColor color;
};

extern template class orvane::CRecord<CCompanyPresentation>;
