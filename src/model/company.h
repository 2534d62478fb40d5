#pragma once

#include <type_traits>

#include "model/resources.h"

// An organisation on the project, with the resources that it brings and a calendar of its own.
class CCompany : public orvane::CRecord<CCompany>, public IProjectXMLTagProcessor
{
public:
    CCompany() = default;
    CCompany(CString const & name, CCompanyType const & type, CString const & address, CString const & telephoneNumber,
             CString const & faxNumber, CString const & emailAddress);
    CCompany(CCompany const &) = default;
    CCompany & operator=(CCompany const & other);
    ~CCompany() override = default;

    CCompanyID const & getID() const { return id; }
    void setID(CCompanyID const & value);
    CProjectString const & getName() const { return name; }
    void setName(CString const & text) { name = text; }
    CCompanyType const & getType() const { return type; }
    void setType(CCompanyType const & value) { type = value; }
    // May hold several lines.
    CProjectString const & getAddress() const { return address; }
    void setAddress(CString const & text) { address = text; }
    CProjectString const & getTelephoneNumber() const { return telephoneNumber; }
    void setTelephoneNumber(CString const & text) { telephoneNumber = text; }
    CProjectString const & getFaxNumber() const { return faxNumber; }
    void setFaxNumber(CString const & text) { faxNumber = text; }
    CProjectString const & getEmailAddress() const { return emailAddress; }
    void setEmailAddress(CString const & text) { emailAddress = text; }
    CProjectColor const & getColor() const { return color; }
    void setColor(CProjectColor const & value) { color = value; }
    CCalendar const & getCalendar() const { return calendar; }
    void setCalendar(CCalendar const & value);
    void copyFromMasterCalendar();

    // The tops of the four trees. The writable ones are for changing in place within one action.
    CEquipmentResourceArray const & getEquipmentResources() const { return equipmentResources; }
    CHumanResourceArray const & getHumanResources() const { return humanResources; }
    CLocationResourceArray const & getLocationResources() const { return locationResources; }
    CMaterialResourceArray const & getMaterialResources() const { return materialResources; }
    void setEquipmentResources(CEquipmentResourceArray const & resources) { equipmentResources = resources; }
    void setHumanResources(CHumanResourceArray const & resources) { humanResources = resources; }
    void setLocationResources(CLocationResourceArray const & resources) { locationResources = resources; }
    void setMaterialResources(CMaterialResourceArray const & resources) { materialResources = resources; }
    CEquipmentResourceArray & getWritableEquipmentResources() { return equipmentResources; }
    CHumanResourceArray & getWritableHumanResources() { return humanResources; }
    CLocationResourceArray & getWritableLocationResources() { return locationResources; }
    CMaterialResourceArray & getWritableMaterialResources() { return materialResources; }

    // Of the tops alone.
    int getNumberOfEquipmentResources() const { return equipmentResources.GetSize(); }
    int getNumberOfHumanResources() const { return humanResources.GetSize(); }
    int getNumberOfLocationResources() const { return locationResources.GetSize(); }
    int getNumberOfMaterialResources() const { return materialResources.GetSize(); }
    int getTotalNumberOfResources() const;
    // Over the leaves.
    int getEquipmentResourceUseRatePerDay() const { return useRatePerDay(equipmentResources); }
    int getHumanResourceUseRatePerDay() const { return useRatePerDay(humanResources); }
    int getLocationResourceUseRatePerDay() const { return useRatePerDay(locationResources); }
    int getMaterialResourceUseRatePerDay() const { return useRatePerDay(materialResources); }

    // The tops of the trees of one kind of resource.
    template <class Resource>
    auto & resourcesOf();
    template <class Resource>
    auto const & resourcesOf() const
    {
        return const_cast<CCompany &>(*this).resourcesOf<Resource>();
    }
    // Calls `visit` with each of the four arrays, in the order in which a resource of unknown kind is sought.
    template <class Visit>
    void forEachKind(Visit && visit)
    {
        visit(equipmentResources);
        visit(humanResources);
        visit(locationResources);
        visit(materialResources);
    }
    template <class Visit>
    void forEachKind(Visit && visit) const
    {
        const_cast<CCompany *>(this)->forEachKind([&](auto const & array) { visit(array); });
    }

    // Of the calendar and of every resource.
    void setProject(CProject * project);
    // After a load.
    void postSerialize(CProject * project);

    void Serialize(CProjectArchive & archive);
    void xmlSerialize(CProjectXMLArchive & archive) override;

private:
    friend class orvane::CRecord<CCompany>;
    template <class Visit>
    static void describe(Visit && visit);
    template <class Array>
    static int useRatePerDay(Array const & resources)
    {
        std::int64_t sum = 0;
        for (auto const & each : resources) sum += each.getUseRatePerDay();
        return orvane::saturate<std::int32_t>(sum);
    }

    CCompanyID id;
    CProjectString name;
    CCompanyType type{CCompanyType::Supplier};
    CProjectString address;
    CProjectString telephoneNumber;
    CProjectString faxNumber;
    CProjectString emailAddress;
    CCalendar calendar;
    CEquipmentResourceArray equipmentResources;
    CHumanResourceArray humanResources;
    CLocationResourceArray locationResources;
    CMaterialResourceArray materialResources;
    CProjectColor color;
};

extern template class orvane::CRecord<CCompany>;

template <class Resource>
auto & CCompany::resourcesOf()
{
    if constexpr (std::is_same_v<Resource, CEquipmentResource>) return equipmentResources;
    else if constexpr (std::is_same_v<Resource, CHumanResource>) return humanResources;
    else if constexpr (std::is_same_v<Resource, CLocationResource>) return locationResources;
    else return materialResources;
}

class CCompanyArray : public orvane::CResourceArray<CCompanyArray, CCompany>, public IProjectXMLTagProcessor
{
public:
    void xmlSerialize(CProjectXMLArchive & archive) override;
};
