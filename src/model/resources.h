#pragma once

#include "model/resource.h"

// The four kinds of resource, each with the array in which it stands under a company or a parent.

class CEquipmentResourceArray;
class CHumanResourceArray;
class CLocationResourceArray;
class CMaterialResourceArray;

class CEquipmentResource : public orvane::CWorkingResource<CEquipmentResource, CEquipmentResourceArray>
{
public:
    static constexpr char typeName[] = "Equipment";
    static constexpr char documentTag[] = "EquipmentResource";
    static constexpr char defaultName[] = "New Equipment Resource";
};

// A person or a crew.
class CHumanResource : public orvane::CWorkingResource<CHumanResource, CHumanResourceArray>
{
public:
    static constexpr char typeName[] = "Human";
    static constexpr char documentTag[] = "HumanResource";
    static constexpr char defaultName[] = "New Human Resource";
};

class CLocationResource : public orvane::CWorkingResource<CLocationResource, CLocationResourceArray>
{
public:
    static constexpr char typeName[] = "Location";
    static constexpr char documentTag[] = "LocationResource";
    static constexpr char defaultName[] = "New Location Resource";
};

// Without a calendar. Its sub-materials keep their own project: nothing of theirs depends on it.
class CMaterialResource : public orvane::CResourceKind<CMaterialResource, CMaterialResourceArray>
{
public:
    static constexpr char typeName[] = "Material";
    static constexpr char documentTag[] = "MaterialResource";
    static constexpr char defaultName[] = "New Material Resource";

    // To be used today.
    CMaterialResource();

    CProjectTime const & getUsedOn() const { return usedOn; }
    void setUsedOn(CProjectTime const & time) { usedOn = time; }

private:
    friend class orvane::CResourceKind<CMaterialResource, CMaterialResourceArray>;
    template <class Visit>
    static void describeOwn(Visit && visit);
    static void exchangeOwn(CMaterialResource & resource, CProjectArchive & archive);

    CProjectTime usedOn;
};

class CEquipmentResourceArray : public orvane::CResourceArray<CEquipmentResourceArray, CEquipmentResource>,
                                public IProjectXMLTagProcessor
{
public:
    void xmlSerialize(CProjectXMLArchive & archive) override;
};

class CHumanResourceArray : public orvane::CResourceArray<CHumanResourceArray, CHumanResource>,
                            public IProjectXMLTagProcessor
{
public:
    void xmlSerialize(CProjectXMLArchive & archive) override;
};

class CLocationResourceArray : public orvane::CResourceArray<CLocationResourceArray, CLocationResource>,
                               public IProjectXMLTagProcessor
{
public:
    void xmlSerialize(CProjectXMLArchive & archive) override;
};

class CMaterialResourceArray : public orvane::CResourceArray<CMaterialResourceArray, CMaterialResource>,
                               public IProjectXMLTagProcessor
{
public:
    void xmlSerialize(CProjectXMLArchive & archive) override;
};

extern template class orvane::CResourceKind<CEquipmentResource, CEquipmentResourceArray>;
extern template class orvane::CResourceKind<CHumanResource, CHumanResourceArray>;
extern template class orvane::CResourceKind<CLocationResource, CLocationResourceArray>;
extern template class orvane::CResourceKind<CMaterialResource, CMaterialResourceArray>;
extern template class orvane::CWorkingResource<CEquipmentResource, CEquipmentResourceArray>;
extern template class orvane::CWorkingResource<CHumanResource, CHumanResourceArray>;
extern template class orvane::CWorkingResource<CLocationResource, CLocationResourceArray>;
