#include "model/supply_chain.h"

#include "values/record_impl.h"

template <class Visit>
void CSupplyChain::describe(Visit && visit)
{
    visit("id", &CSupplyChain::id);
    visit("supplierID", &CSupplyChain::supplierID);
    visit("customerID", &CSupplyChain::customerID);
}

template class orvane::CRecord<CSupplyChain>;

void CSupplyChain::assignToCompany(CCompanyID const & company)
{
    // A copy, for the argument may be a customer that is about to leave the list.
    CCompanyID const supplier = company;
    if (!supplierID.isNULL()) customerID.Add(supplierID);
    int const position = customerID.findByID(supplier);
    if (position >= 0) customerID.SetSize(position);
    supplierID = supplier;
}

void CSupplyChain::Serialize(CProjectArchive & archive)
{
    archive.exchange(id, supplierID);
    archive.exchangeSince(20, customerID, CCompanyIDArray());
}

void CSupplyChain::xmlSerialize(CProjectXMLArchive & archive)
{
    if (archive.readsAny({"CompanyIDs", "CompanyID"})) return customerID.xmlSerialize(archive);
    if (archive.readsAnother("SupplyChain")) return;
    exchangeElementWithChildren(archive, "SupplyChain");
}
