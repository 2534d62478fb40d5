#pragma once

#include <atomic>
#include <cstdint>

#include "model/cost.h"
#include "schedule/calendar.h"
#include "values/date_time.h"
#include "values/duration.h"
#include "values/enumerations.h"
#include "values/identifier_arrays.h"
#include "values/string_array.h"
#include "values/sub_items.h"

class CProject;

// Something that a company brings to the project: equipment, people, a place or a material. Each of the
// four kinds below stands in trees of its own kind under a company, and tasks refer to it by identifier.
// A resource with sub-resources stands for them: rates and dates are then those of the leaves.
class CResourceBase : public orvane::CRecord<CResourceBase>, public IProjectXMLTagProcessor
{
public:
    CResourceBase();
    // Without a project: whoever takes the copy in says where it belongs.
    CResourceBase(CResourceBase const & other);
    // Every field but the project.
    CResourceBase & operator=(CResourceBase const & other);
    ~CResourceBase() override;

    // The kind as planners read it; empty for the base class.
    virtual CString getType() const { return ""; }
    // Copies out the cost of that identifier, of this resource or of one below it.
    virtual bool findResourceCost(CCost & out, CCostID const & sought) const;
    virtual void resetChanged() { CRecord::resetChanged(); }
    virtual bool setChanged() { return CRecord::setChanged(); }
    // After a load.
    virtual void postSerialize(CProject * value) { setProject(value); }
    virtual void setProject(CProject * value) { project = value; }
    // Every resource below.
    virtual int countSubResources() const { return 0; }
    virtual void Serialize(CProjectArchive & archive);
    void xmlSerialize(CProjectXMLArchive & archive) override;
    // The name of the resource's element in a document; empty for the base class.
    virtual CString tagName() const { return ""; }
    // What the element holds, written and read: attributes and the elements in it.
    virtual void xmlWriteAttributes(CProjectXMLArchive & archive);
    virtual void xmlWriteSubTags(CProjectXMLArchive & archive);

    CResourceID const & getID() const { return id; }
    void setID(CResourceID const & value);
    CProjectString const & getName() const { return name; }
    void setName(CString const & text) { name = text; }
    CProjectString const & getDescription() const { return description; }
    void setDescription(CString const & text) { description = text; }
    CResourceStatus const & getStatus() const { return status; }
    void setStatus(CResourceStatus const & value) { status = value; }
    CProjectDuration const & getLeadTime() const { return leadTime; }
    void setLeadTime(CProjectDuration const & value) { leadTime = value; }
    CProjectBool const & getOrderRequired() const { return orderRequired; }
    void setOrderRequired(bool required) { orderRequired = required; }
    CProjectBool const & getAutoAccept() const { return autoAccept; }
    void setAutoAccept(bool accept) { autoAccept = accept; }
    int getTotalUnitsAvailable() const { return totalUnitsAvailable.getValue(); }
    void setTotalUnitsAvailable(int units) { totalUnitsAvailable = units; }
    CResourceUnitType const & getResourceUnitType() const { return resourceUnitType; }
    void setResourceUnitType(CResourceUnitType const & value) { resourceUnitType = value; }
    CProject * getProject() const { return project; }

    // The supplier's own references.
    CProjectStringArray const & getSupplierReferences() const { return supplierReferences; }
    void setSupplierReferences(CProjectStringArray const & references) { supplierReferences = references; }
    int getNumberOfSupplierReferences() const { return supplierReferences.GetSize(); }
    // The first for an index outside the list, an empty text when there is none.
    CProjectString const & getSupplierReference(int index) const;
    // The index of the new one.
    int addSupplierReference(CString const & text) { return supplierReferences.Add(text); }
    // Ignored outside the list.
    void setSupplierReference(CString const & text, int index);
    // The number left; -1 outside the list.
    int removeSupplierReference(int index);

    // Null while there never were any.
    CCostArray const * getCosts() const { return costs.get(); }
    // Keeps a copy, also of an empty array.
    void setCosts(CCostArray const & array) { costs.make() = array; }
    // Inserts before the index, or appends for -1.
    void addCost(CCost const & cost, int index);

    // The entities of the scene that stand for the resource.
    CEntityIDArray const & getRepresentations() const { return representations; }
    void addRepresentation(CEntityID const & entity) { representations.Add(entity); }
    void setResourceRepresentations(CEntityIDArray const & entities) { representations = entities; }

    static int getCreated() { return s_created; }
    static int getDeleted() { return s_deleted; }
    static void resetCreatedAndDeletedCount() { s_created = s_deleted = 0; }

protected:
    explicit CResourceBase(char const * name);
    // What rules where the calendar of that identifier is not in use.
    CCalendar const & calendarAbove(CCalendarID const & calendarID) const;

    CProject * project = nullptr;

private:
    friend class orvane::CRecord<CResourceBase>;
    template <class Visit>
    static void describe(Visit && visit);

    // No two resources ever share their costs, so two that have some are never equal.
    class CCosts : public orvane::CSubItems<CCostArray>
    {
        friend bool operator==(CCosts const & a, CCosts const & b) { return a.get() == b.get(); }
    };

    CResourceID id;
    CProjectString name;
    CProjectString description;
    CProjectStringArray supplierReferences;
    CProjectBool autoAccept{false};
    CResourceStatus status{CResourceStatus::Active};
    CProjectDuration leadTime{0};
    CProjectBool orderRequired{false};
    CCosts costs;
    CProjectInt totalUnitsAvailable{0};
    CResourceUnitType resourceUnitType{CResourceUnitType::Unknown};
    CEntityIDArray representations;

    static inline int s_created = 0;
    static inline int s_deleted = 0;
};

extern template class orvane::CRecord<CResourceBase>;

namespace orvane
{

// Where resources stand, in all projects: a number that changes whenever one comes, goes or takes another
// identifier or calendar. What was found by walking the trees holds until then.
class CResourceStructure
{
public:
    static std::uint64_t stamp() { return current.load(std::memory_order_relaxed); }
    static void changes() { current.fetch_add(1, std::memory_order_relaxed); }

private:
    static inline std::atomic<std::uint64_t> current{1};
};

// An array by which resources are found.
template <class Self, class Element>
class CResourceArray : public CIdentifiedArray<Self, Element>
{
    using Base = CIdentifiedArray<Self, Element>;

public:
    CResourceArray() = default;
    CResourceArray(CResourceArray const &) = default;
    CResourceArray & operator=(CResourceArray const &) = default;
    ~CResourceArray() override { CResourceStructure::changes(); }

protected:
    void entered(int first, int count) override
    {
        Base::entered(first, count);
        CResourceStructure::changes();
    }
    void leaving(int first, int count) override
    {
        Base::leaving(first, count);
        CResourceStructure::changes();
    }
};

// What the four kinds share: a tree of their own kind. `Array` is the array of that kind.
template <class Self, class Array>
class CResourceKind : public CDynamic<Self, CResourceBase>
{
public:
    CString getType() const override { return Self::typeName; }
    CString tagName() const override { return Self::documentTag; }
    void xmlWriteAttributes(CProjectXMLArchive & archive) override;
    void xmlWriteSubTags(CProjectXMLArchive & archive) override;
    bool findResourceCost(CCost & out, CCostID const & sought) const override;
    void resetChanged() override;
    bool setChanged() override;
    int countSubResources() const override;
    void Serialize(CProjectArchive & archive) override;
    // Flags every field, here and below, as an assignment would.
    void touch();

    // Field by field, sub-resources by content; but two that both have costs are never equal, unless they are
    // one and the same.
    friend bool operator==(Self const & a, Self const & b) { return CResourceKind::equal(a, b); }

    // Null for a leaf; never empty.
    Array const * getSubResources() const { return subResources.get(); }
    // The array for adding to in place within one action, created when there is none yet.
    Array & makeSubResources() { return subResources.make(); }
    // Keeps a copy; none of an empty array, which leaves a leaf with the rates and dates of its own.
    void setSubResources(Array const & resources);
    bool hasSubResource() const { return static_cast<bool>(subResources); }
    // Whether the candidate may come under this resource: it is not there yet, and does not contain it.
    bool canMakeSubResource(Self const & candidate) const;

    // Searches over this resource and all below it, depth first; null when there is none.
    Self const * findResource(CResourceID const & sought) const;
    Self * findWritableResource(CResourceID const & sought);
    // The one whose own costs hold that cost.
    Self const * findResource(CCostID const & sought) const;
    // Appends the leaves below, or this one when it is a leaf.
    bool getLeafResources(CResourceIDArray & leaves) const;
    bool getLeafResources(Array & leaves) const;
    bool isEntityAssignedToResourceOrSubResources(CEntityID const & entity) const;

    // Units of work a day; the sum of those below unless a leaf.
    int getUseRatePerDay() const;
    void setUseRatePerDay(int rate) { useRatePerDay = rate; }

protected:
    CResourceKind();
    CResourceKind(CResourceKind const & other);
    CResourceKind & operator=(CResourceKind const & other);
    ~CResourceKind() override;

    template <class Test>
    Self const * findFirst(Test const & test) const;

    CProjectInt useRatePerDay{1};
    CSubItems<Array> subResources;

private:
    static bool equal(Self const & a, Self const & b);
    Self const & self() const { return static_cast<Self const &>(*this); }
};

// What those that work by a calendar share beyond: equipment, people and places.
template <class Self, class Array>
class CWorkingResource : public CResourceKind<Self, Array>
{
public:
    void postSerialize(CProject * value) override;
    // Of the resource, its calendar and all below.
    void setProject(CProject * value) override;

    CCalendar const & getCalendar() const { return calendar; }
    void setCalendar(CCalendar const & value);
    // The resource's own calendar if it is in use, else that of the company or of the project.
    CCalendar const & getCalendarInUse() const;
    void copyCalendarFromMasterCalendar();
    // The resource, here or below, whose calendar has that identifier; null when there is none.
    Self const * findResourceCalendar(CCalendarID const & sought) const;

    // From the earliest to the latest valid date of the leaves; not valid without any.
    CProjectDate getAvailableFrom() const;
    CProjectDate getAvailableTo() const;
    // Ignored unless a leaf.
    void setAvailableFrom(CProjectDate const & date);
    void setAvailableTo(CProjectDate const & date);
    CProjectInt getPercentageUsed() const { return percentageUsed; }
    void setPercentageUsed(int percent) { percentageUsed = percent; }

protected:
    friend class CResourceKind<Self, Array>;
    template <class Visit>
    static void describeOwn(Visit && visit);
    static void exchangeOwn(Self & resource, CProjectArchive & archive);

    CWorkingResource() = default;
    CWorkingResource(CWorkingResource const &) = default;
    CWorkingResource & operator=(CWorkingResource const &) = default;
    ~CWorkingResource() override = default;

    CCalendar calendar;
    CProjectInt percentageUsed{100};
    CProjectDate availableFrom;
    CProjectDate availableTo;
};

}  // namespace orvane
