#pragma once

#include "values/enumerations.h"
#include "values/identifiers.h"
#include "values/record.h"
#include "values/scalars.h"
#include "values/sub_items.h"
#include "values/typed_array.h"

class CRiskArray;

// A kind of thing that can go wrong, in a tree of kinds that belongs to the project. Tasks take a risk on
// through a CAssignedRisk.
class CRisk : public orvane::CRecord<CRisk>, public IProjectXMLTagProcessor
{
public:
    CRisk();
    CRisk(CRisk const & other);
    CRisk & operator=(CRisk const & other);
    ~CRisk() override;

    CRiskID const & getID() const { return id; }
    void setID(CRiskID const & value) { id = value; }
    // The risk's name.
    CProjectString const & getDescription() const { return description; }
    void setDescription(CString const & text) { description = text; }
    // How new assignments of the risk are measured.
    CRiskValueMode const & getValueMode() const { return valueMode; }
    void setValueMode(CRiskValueMode const & value) { valueMode = value; }
    // Null for a leaf.
    CRiskArray const * getSubRisks() const { return subRisks.get(); }
    // Keeps a copy; none when the argument is empty.
    void setSubRisks(CRiskArray const & risks);

    // Searches over this risk and all below it, depth first.
    bool findRisk(CRisk & out, CRiskID const & sought) const;
    CRisk * findWritableRisk(CRiskID const & sought);
    CRisk const * findRisk(CRiskID const & sought) const;
    // Each does nothing and answers false when this tree does not hold the risk that is named.
    bool addSubRisk(CRisk const & risk, CRiskID const & parent);
    bool renameSubRisk(CRiskID const & sought, CString const & text);
    bool setSubRiskValueMode(CRiskID const & sought, CRiskValueMode const & value);
    // Among the descendants only. The array of the parent stays, also when it is empty.
    bool removeSubRisk(CRiskID const & sought);

    // Asks whether to remove the risk; the answer.
    bool removalPrompt(bool assigned) const;

    void Serialize(CProjectArchive & archive);
    void xmlSerialize(CProjectXMLArchive & archive) override;

private:
    friend class orvane::CRecord<CRisk>;
    template <class Visit>
    static void describe(Visit && visit);

    int countSubRisks() const;

    CRiskID id;
    CProjectString description;
    CRiskValueMode valueMode{CRiskValueMode::Percent};
    orvane::CSubItems<CRiskArray> subRisks;
};

extern template class orvane::CRecord<CRisk>;

class CRiskArray : public orvane::CIdentifiedArray<CRiskArray, CRisk>, public IProjectXMLTagProcessor
{
public:
    void xmlSerialize(CProjectXMLArchive & archive) override;
};
