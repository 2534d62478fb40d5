#pragma once

#include <algorithm>
#include <cstddef>
#include <string_view>

#include "platform/array.h"
#include "platform/guid.h"
#include "platform/string.h"
#include "values/value.h"

namespace orvane
{

// Says that an identifier is to be born NULL, without drawing a fresh one.
struct NullID
{
};
inline constexpr NullID nullID{};

}  // namespace orvane

// An identity of 128 bits. Each kind of object has an identifier class of its own, so that the kinds
// cannot be mixed up. A default-constructed identifier is fresh and unique; an identifier of zeros is
// called NULL and is valid all the same: isValid and isNULL are separate questions.
class CIDBase : public orvane::CFlagged<CIDBase>
{
public:
    ~CIDBase() override = default;

    // Copies the identity, and is a change also when the two were equal.
    virtual CIDBase & operator=(CIDBase const & other);
    // All 128 bits agree; flags play no part.
    virtual bool operator==(CIDBase const & other) const { return guid == other.guid; }
    virtual bool operator!=(CIDBase const & other) const { return !(guid == other.guid); }
    // -1, 0 or 1 by the bytes in memory order, as unsigned numbers. Sorted collections order by this.
    virtual int compare(CIDBase const * other) const;
    // The name under which the identifier stands in a document.
    virtual CString tagName() const { return "ProjectID"; }

    bool isNULL() const { return guid == _GUID{}; }
    // The bytes in memory order. Loading is a change; whether it is valid stays.
    void Serialize(CProjectArchive & archive)
    {
        archive.exchangeBytes(&guid, sizeof guid);
        changed |= archive.IsLoading();
    }
    // In a document: an attribute of that name, or an element of its own, by tagName, with the attribute "id".
    void xmlSerialize(CProjectXMLArchive & archive, CString const & name);
    void xmlSerialize(CProjectXMLArchive & archive);
    // Makes the identifier NULL: valid and changed.
    void clear();

    _GUID const & getGUID() const { return guid; }
    void setGUID(_GUID const & value);
    // Reads 32 characters, two for each byte in memory order, in the form that toString writes. A text
    // of any other length clears the identifier; otherwise the flags stay.
    void setGUID(CString const & text);
    // Two characters for each byte in memory order; a byte below 0x10 is a blank and one lower-case digit.
    CString toString() const;

    std::string_view keyBytes() const { return {reinterpret_cast<char const *>(&guid), sizeof guid}; }

protected:
    using GuidArray = CArray<_GUID, _GUID &>;

    // A fresh identity: valid, unchanged.
    CIDBase();
    explicit CIDBase(orvane::NullID) : CFlagged(true) {}
    CIDBase(CIDBase const &) = default;

    // The road that every fresh identity takes: kept in the list of issued ones while collecting;
    // otherwise replaced by the next one to issue while issuing and while there are any.
    void initialize(bool & collect, bool & issue, GuidArray & issued, GuidArray & toIssue);
    static void setCollectIssuedIDs(bool flag, bool & collect, bool & issue, GuidArray & issued);
    static void setIssueIDs(bool flag, bool & collect, bool & issue, GuidArray & issued, GuidArray & toIssue);

private:
    _GUID guid{};
};

// In a document the owner of an attribute stands under the tag of its project. Attributes are neither
// counted nor replayed.
class CAttributeID : public CDynamic<CAttributeID, CIDBase>
{
public:
    CAttributeID() = default;
    CAttributeID(CAttributeID const &) = default;
    using CIDBase::operator=;
    CAttributeID & operator=(CAttributeID const &) = default;
    using CIDBase::operator==;
    bool operator==(CAttributeID const & other) const { return CIDBase::operator==(other); }
    bool operator!=(CAttributeID const & other) const { return !(*this == other); }
};

namespace orvane
{

// A text as a template argument.
template <std::size_t Size>
struct Literal
{
    constexpr Literal(char const (&text)[Size]) { std::copy_n(text, Size, characters); }
    char characters[Size]{};
};

// What one class of identifier has of its own: its tag, its counters, and the two lists with which an
// action that created objects can be performed again elsewhere with the same identifiers.
template <class Self, Literal tag>
class CIdentifier : public CDynamic<Self, CIDBase>
{
public:
    CIdentifier()
    {
        ++s_created;
        this->initialize(collect, issue, issued, toIssue);
    }
    // NULL; takes no part in collecting and issuing.
    explicit CIdentifier(NullID null) : CDynamic<Self, CIDBase>(null) { ++s_created; }
    CIdentifier(CIdentifier const & other) : CDynamic<Self, CIDBase>(other) { ++s_created; }
    ~CIdentifier() override { ++s_deleted; }

    CIdentifier & operator=(CIdentifier const & other)
    {
        CIDBase::operator=(other);
        return *this;
    }
    friend bool operator==(Self const & a, Self const & b) { return a.CIDBase::operator==(b); }
    friend bool operator!=(Self const & a, Self const & b) { return !(a == b); }
    CString tagName() const override { return tag.characters; }

    // The one NULL identifier of this class, for searches and for fields that start NULL. It stays to the
    // end, so that it is not counted.
    static Self const & getNULL()
    {
        struct Uncounted
        {
            Uncounted() { --s_created; }
            Self id{nullID};
        };
        static Uncounted const null;
        return null.id;
    }

    // Collecting keeps the identities issued from now on; switching it on empties the list.
    static void setCollectIssuedIDs(bool flag) { CIDBase::setCollectIssuedIDs(flag, collect, issue, issued); }
    static void suspendCollectingIssuedIDs() { collect = false; }
    static void resumeCollectingIssuedIDs() { collect = true; }
    static CArray<_GUID, _GUID &> & getIssuedIDs() { return issued; }
    // Issuing hands out the identities of this list, first to last, before fresh ones.
    static CArray<_GUID, _GUID &> & getIDsToIssue() { return toIssue; }
    static void setIssueIDs(bool flag) { CIDBase::setIssueIDs(flag, collect, issue, issued, toIssue); }

    // How many were constructed and destroyed since the last reset; the difference shows leaks.
    static int getCreated() { return static_cast<int>(s_created); }
    static int getDeleted() { return static_cast<int>(s_deleted); }
    static void resetCreatedAndDeletedCount() { s_created = s_deleted = 0; }

private:
    static inline CArray<_GUID, _GUID &> issued;
    static inline CArray<_GUID, _GUID &> toIssue;
    static inline bool collect = false;
    static inline bool issue = false;
    // Unsigned, since they may pass all numbers in a long run.
    static inline unsigned s_created = 0;
    static inline unsigned s_deleted = 0;
};

}  // namespace orvane

// A new kind of object needs two lines here. The tags stand in documents and never change.
// clang-format off
class CAssignedResourceID : public orvane::CIdentifier<CAssignedResourceID, "AssignedResourceID">
{ using CIdentifier::CIdentifier; };
class CAssignedRiskID : public orvane::CIdentifier<CAssignedRiskID, "AssignedRiskID">
{ using CIdentifier::CIdentifier; };
class CCalendarDayTypeID : public orvane::CIdentifier<CCalendarDayTypeID, "CalendarDayTypeID">
{ using CIdentifier::CIdentifier; };
class CCalendarID : public orvane::CIdentifier<CCalendarID, "CalendarID">
{ using CIdentifier::CIdentifier; };
class CCompanyID : public orvane::CIdentifier<CCompanyID, "CompanyID">
{ using CIdentifier::CIdentifier; };
class CCostID : public orvane::CIdentifier<CCostID, "CostID">
{ using CIdentifier::CIdentifier; };
class CEntityID : public orvane::CIdentifier<CEntityID, "EntityID">
{ using CIdentifier::CIdentifier; };
class CFilterID : public orvane::CIdentifier<CFilterID, "FilterID">
{ using CIdentifier::CIdentifier; };
class CLinkID : public orvane::CIdentifier<CLinkID, "LinkID">
{ using CIdentifier::CIdentifier; };
class CLocationID : public orvane::CIdentifier<CLocationID, "LocationID">
{ using CIdentifier::CIdentifier; };
class CProjectID : public orvane::CIdentifier<CProjectID, "ProjectID">
{ using CIdentifier::CIdentifier; };
class CResourceID : public orvane::CIdentifier<CResourceID, "ResourceID">
{ using CIdentifier::CIdentifier; };
class CRiskID : public orvane::CIdentifier<CRiskID, "RiskID">
{ using CIdentifier::CIdentifier; };
class CRoleID : public orvane::CIdentifier<CRoleID, "RoleID">
{ using CIdentifier::CIdentifier; };
class CSupplyChainID : public orvane::CIdentifier<CSupplyChainID, "SupplyChainID">
{ using CIdentifier::CIdentifier; };
class CTaskCategoryID : public orvane::CIdentifier<CTaskCategoryID, "TaskCategoryID">
{ using CIdentifier::CIdentifier; };
class CTaskID : public orvane::CIdentifier<CTaskID, "TaskID">
{ using CIdentifier::CIdentifier; };
class CTaskReportID : public orvane::CIdentifier<CTaskReportID, "TaskReportID">
{ using CIdentifier::CIdentifier; };
class CUserID : public orvane::CIdentifier<CUserID, "UserID">
{ using CIdentifier::CIdentifier; };
// clang-format on
