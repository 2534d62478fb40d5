#pragma once

#include "values/identifiers.h"
#include "values/record.h"
#include "values/typed_array.h"

// A place of the projects of old, by identity alone. No project holds any: old files do, and are read past them.
class CLocation : public orvane::CRecord<CLocation>, public IProjectXMLTagProcessor
{
public:
    CLocation() { ++s_created; }
    CLocation(CLocation const & other) : CRecord(other), id(other.id) { ++s_created; }
    CLocation & operator=(CLocation const &) = default;
    ~CLocation() override { ++s_deleted; }

    CLocationID const & getID() const { return id; }
    void setID(CLocationID const & value) { id = value; }

    static int getCreated() { return s_created; }
    static int getDeleted() { return s_deleted; }
    static void resetCreatedAndDeletedCount() { s_created = s_deleted = 0; }

    void xmlSerialize(CProjectXMLArchive & archive) override;

private:
    friend class orvane::CRecord<CLocation>;
    template <class Visit>
    static void describe(Visit && visit);

    CLocationID id;

    static inline int s_created = 0;
    static inline int s_deleted = 0;
};

extern template class orvane::CRecord<CLocation>;

class CLocationArray : public orvane::CIdentifiedArray<CLocationArray, CLocation>, public IProjectXMLTagProcessor
{
public:
    void xmlSerialize(CProjectXMLArchive & archive) override;
};
