#pragma once

#include "values/scalars.h"
#include "values/typed_array.h"

// Texts of the model in the order in which they were added. Their key, the text in byte order, serves no
// lookup.
class CProjectStringArray : public orvane::CTypedArray<CProjectStringArray, CProjectString, std::identity{}>,
                            public IProjectXMLTagProcessor
{
public:
    // In documents an element of that name, or none for an empty array. The texts are never read: an element
    // "ProjectStringArray" only empties the array.
    void xmlSerialize(CProjectXMLArchive & archive, CString const & name);
    void xmlSerialize(CProjectXMLArchive & archive) override { xmlSerialize(archive, documentTag); }

private:
    static constexpr char const * documentTag = "ProjectStringArray";
};
