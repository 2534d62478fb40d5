#pragma once

#include "scene/transform.h"
#include "values/enumerations.h"
#include "values/identifiers.h"
#include "values/plain_field.h"
#include "values/record.h"
#include "values/scalars.h"
#include "values/typed_array.h"

// A task uses a resource. It names the resource by identifier and lives on its task.
class CAssignedResource : public orvane::CRecord<CAssignedResource>, public IProjectXMLTagProcessor
{
public:
    CAssignedResource();
    CAssignedResource(CAssignedResourceID const & id, CResourceID const & resourceID, int percentageAssigned);
    CAssignedResource(CAssignedResource const & other);
    CAssignedResource & operator=(CAssignedResource const &) = default;
    ~CAssignedResource() override;

    CAssignedResourceID const & getID() const { return id; }
    void setID(CAssignedResourceID const & value) { id = value; }
    CResourceID const & getResourceID() const { return resourceID; }
    void setResourceID(CResourceID const & value) { resourceID = value; }
    // Of one unit of the resource: 100 for each unit that works a day.
    int getPercentageAssigned() const { return percentageAssigned.getValue(); }
    void setPercentageAssigned(int percent) { percentageAssigned = percent; }
    bool getDisplayAsPercent() const { return displayAsPercent.getValue(); }
    void setDisplayAsPercent(bool asPercent) { displayAsPercent = asPercent; }
    CResourceProfileType const & getResourceProfileType() const { return resourceProfileType; }
    void setResourceProfileType(CResourceProfileType const & value) { resourceProfileType = value; }
    // Where the resource's entities stand for this task.
    CTransform const & getTransform() const { return transform.get(); }
    void setTransform(CTransform const & value) { transform = value; }

    static int getCreated() { return s_created; }
    static int getDeleted() { return s_deleted; }
    static void resetCreatedAndDeletedCount() { s_created = s_deleted = 0; }

    void Serialize(CProjectArchive & archive);
    void xmlSerialize(CProjectXMLArchive & archive) override;

private:
    friend class orvane::CRecord<CAssignedResource>;
    template <class Visit>
    static void describe(Visit && visit);

    CAssignedResourceID id;
    CResourceID resourceID{orvane::nullID};
    CProjectInt percentageAssigned{100};
    CProjectBool displayAsPercent{true};
    CResourceProfileType resourceProfileType{CResourceProfileType::Temporary};
    orvane::CPlainField<CTransform> transform;

    static inline int s_created = 0;
    static inline int s_deleted = 0;
};

extern template class orvane::CRecord<CAssignedResource>;

// The resources of one task, found by resource through the index. With a resource that is assigned twice,
// either assignment is found.
class CAssignedResourceArray
    : public orvane::CIdentifiedArray<CAssignedResourceArray, CAssignedResource, &CAssignedResource::getResourceID>,
      public IProjectXMLTagProcessor
{
public:
    using CIdentifiedArray::findByID;
    // The position of the assignment of that identifier, or -1.
    int findByID(CAssignedResourceID const & id) const;
    // Assigns over the assignment of the same identifier, whatever its resource; false when there is none.
    bool changeElement(CAssignedResource const & element);
    // Every element that is read comes to stand twice.
    void xmlSerialize(CProjectXMLArchive & archive) override;
};
