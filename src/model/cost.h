#pragma once

#include "values/enumerations.h"
#include "values/identifiers.h"
#include "values/record.h"
#include "values/scalars.h"
#include "values/typed_array.h"

// A named amount of money, charged once or by time: of a task, a resource, an assigned risk or a report.
// What it comes to on a task, CTask::applyCost tells.
class CCost : public orvane::CRecord<CCost>, public IProjectXMLTagProcessor
{
public:
    CCostID const & getID() const { return id; }
    void setID(CCostID const & value) { id = value; }
    CProjectString const & getDescription() const { return description; }
    void setDescription(CString const & text) { description = text; }
    // In the project's currency: the whole sum of a fixed cost, else the rate for one unit of the type. May
    // be negative.
    CProjectDouble const & getAmount() const { return amount; }
    void setAmount(CProjectDouble const & value) { amount = value; }
    CCostType const & getType() const { return type; }
    void setType(CCostType const & value) { type = value; }

    void xmlSerialize(CProjectXMLArchive & archive) override;

private:
    friend class orvane::CRecord<CCost>;
    template <class Visit>
    static void describe(Visit && visit);

    CCostID id;
    CProjectString description{"New Cost"};
    CProjectDouble amount{0.0};
    CCostType type{CCostType::Fixed};
};

extern template class orvane::CRecord<CCost>;

class CCostArray : public orvane::CIdentifiedArray<CCostArray, CCost>, public IProjectXMLTagProcessor
{
public:
    void xmlSerialize(CProjectXMLArchive & archive) override;
};
