#pragma once

#include "values/identifier_arrays.h"
#include "values/record.h"

// Who does a task and for whom: the company that supplies it now, and the companies that handed it on,
// from the first customer to the last.
class CSupplyChain : public orvane::CRecord<CSupplyChain>, public IProjectXMLTagProcessor
{
public:
    // Supplied by nobody.
    CSupplyChain() = default;
    explicit CSupplyChain(CCompanyID const & supplierID) : supplierID(supplierID) {}

    CSupplyChainID const & getID() const { return id; }
    void setID(CSupplyChainID const & value) { id = value; }
    CCompanyID const & getSupplierID() const { return supplierID; }
    void setSupplierID(CCompanyID const & value) { supplierID = value; }
    CCompanyIDArray const & getCustomerID() const { return customerID; }
    void setCustomerID(CCompanyIDArray const & value) { customerID = value; }

    // Hands the task on to a company, of which the present supplier becomes a customer; or back to one of
    // the customers, who leaves the list with all who came later.
    void assignToCompany(CCompanyID const & company);

    void Serialize(CProjectArchive & archive);
    void xmlSerialize(CProjectXMLArchive & archive) override;

private:
    friend class orvane::CRecord<CSupplyChain>;
    template <class Visit>
    static void describe(Visit && visit);

    CSupplyChainID id;
    CCompanyID supplierID{orvane::nullID};
    CCompanyIDArray customerID;
};
extern template class orvane::CRecord<CSupplyChain>;
