#include "model/risk.h"

#include "platform/message.h"
#include "values/document_array_impl.h"
#include "values/record_impl.h"
#include "view/tree_presentation.h"

template <class Visit>
void CRisk::describe(Visit && visit)
{
    visit("id", &CRisk::id);
    visit("description", &CRisk::description);
    visit("valuemode", &CRisk::valueMode);
    visit("subRisks", &CRisk::subRisks);
}

template class orvane::CRecord<CRisk>;

CRisk::CRisk() = default;
CRisk::CRisk(CRisk const & other) = default;
CRisk & CRisk::operator=(CRisk const & other) = default;
CRisk::~CRisk() = default;

void CRisk::setSubRisks(CRiskArray const & risks)
{
    subRisks.assign(risks);
}

// ---- searches -------------------------------------------------------------------------------------

CRisk const * CRisk::findRisk(CRiskID const & sought) const
{
    if (id == sought) return this;
    if (!subRisks) return nullptr;
    for (CRisk const & risk : *subRisks.get())
        if (CRisk const * const found = risk.findRisk(sought)) return found;
    return nullptr;
}

CRisk * CRisk::findWritableRisk(CRiskID const & sought)
{
    return const_cast<CRisk *>(findRisk(sought));
}

bool CRisk::findRisk(CRisk & out, CRiskID const & sought) const
{
    CRisk const * const found = findRisk(sought);
    // The copy may be what is searched.
    if (found && found != &out) out = CRisk(*found);
    return found != nullptr;
}

// ---- changes within the tree ----------------------------------------------------------------------

bool CRisk::addSubRisk(CRisk const & risk, CRiskID const & parent)
{
    CRisk * const found = findWritableRisk(parent);
    if (!found) return false;
    found->subRisks.make().Add(CRisk(risk));
    return true;
}

bool CRisk::renameSubRisk(CRiskID const & sought, CString const & text)
{
    CRisk * const found = findWritableRisk(sought);
    if (found) found->setDescription(text);
    return found != nullptr;
}

bool CRisk::setSubRiskValueMode(CRiskID const & sought, CRiskValueMode const & value)
{
    CRisk * const found = findWritableRisk(sought);
    if (found) found->setValueMode(value);
    return found != nullptr;
}

bool CRisk::removeSubRisk(CRiskID const & sought)
{
    if (!subRisks) return false;
    CRiskArray & below = *subRisks.get();
    for (int each = 0; each < below.GetSize(); ++each)
    {
        if (below.GetAt(each).getID() == sought) return below.RemoveAt(each), true;
        if (below.elementForPass(each).removeSubRisk(sought)) return true;
    }
    return false;
}

// ---- before a removal -----------------------------------------------------------------------------

int CRisk::countSubRisks() const
{
    if (!subRisks) return 0;
    int count = subRisks.get()->GetSize();
    for (CRisk const & risk : *subRisks.get()) count += risk.countSubRisks();
    return count;
}

bool CRisk::removalPrompt(bool assigned) const
{
    int const below = countSubRisks();
    CString question = "Remove the risk \"" + description + "\"";
    if (below >= 2)
    {
        CString count;
        count.Format(" and its %i subcatagories?", below);
        question += count;
    }
    else question += below == 1 ? " and its subcatagory?" : "?";
    if (assigned)
    {
        question += below == 0 ? "\nThis risk is assigned to tasks."
                               : "\nThis risk, or one of its subcatagories, is assigned to tasks.";
        question += "\nIf you continue, tasks will lose their risk assignment.";
    }
    return promptYesNo(question);
}

void CRisk::Serialize(CProjectArchive & archive)
{
    archive.exchange(id, description, subRisks, valueMode);
    archive.skipUntil<CRiskPresentation>(33);
}

void CRisk::xmlSerialize(CProjectXMLArchive & archive)
{
    archive.startEntity("Risk");
    exchangeAttributes(archive);
    archive.out(">");
    if (archive.isStoring()) exchangeChildren(archive);
    archive.endEntity("</Risk>");
    orvane::readOwnedArray(archive, subRisks, "hasSubRisks");
}

void CRiskArray::xmlSerialize(CProjectXMLArchive & archive)
{
    orvane::exchangeElements(archive, *this, "Risks", "Risk");
}
