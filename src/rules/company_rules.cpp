// Companies, and who does a task for whom.

#include "rules/local_rules_checker.h"
#include "rules/text_checks.h"

// ---- lookups --------------------------------------------------------------------------------------

CCompany * CLocalRulesChecker::getCompany(CCompanyID const & id) const
{
    return project ? writableElement(projectData->companies, id) : nullptr;
}

CSupplyChain * CLocalRulesChecker::getSupplyChain(CSupplyChainID const & id) const
{
    CTask const * const holder = project ? project->getTask(id) : nullptr;
    CTask * const task = holder ? getTask(holder->getID()) : nullptr;
    return task ? &task->getWritableSupplyChain() : nullptr;
}

// ---- what a company may hold ----------------------------------------------------------------------

bool CLocalRulesChecker::checkCompanyName(CCompany const & company)
{
    return orvane::accepts(orvane::limit::companyName, company.getName());
}

bool CLocalRulesChecker::checkCompanyType(CCompany const & company)
{
    int const type = company.getType().getEquivalentValue();
    return type >= CCompanyType::row.first && type <= CCompanyType::row.last;
}

bool CLocalRulesChecker::checkCompanyAddress(CCompany const & company)
{
    return orvane::accepts(orvane::limit::lines, company.getAddress());
}

bool CLocalRulesChecker::checkCompanyTelephoneNumber(CCompany const & company)
{
    return orvane::accepts(orvane::limit::line, company.getTelephoneNumber());
}

bool CLocalRulesChecker::checkCompanyFaxNumber(CCompany const & company)
{
    return orvane::accepts(orvane::limit::line, company.getFaxNumber());
}

bool CLocalRulesChecker::checkCompanyEmailAddress(CCompany const & company)
{
    return orvane::accepts(orvane::limit::line, company.getEmailAddress());
}

// Every calendar will do.
bool CLocalRulesChecker::checkCompanyCalendar(CCompany const &)
{
    return true;
}

namespace
{

template <class Array>
bool haveOwnIdentifiers(Array const & resources)
{
    std::unordered_set<_GUID> met;
    for (auto const & each : resources)
        if (!met.insert(each.getID().getGUID()).second) return false;
    return true;
}

}  // namespace

bool CLocalRulesChecker::checkCompanyEquipmentResources(CCompany const & company)
{
    return haveOwnIdentifiers(company.getEquipmentResources());
}

bool CLocalRulesChecker::checkCompanyHumanResources(CCompany const & company)
{
    return haveOwnIdentifiers(company.getHumanResources());
}

bool CLocalRulesChecker::checkCompanyLocationResources(CCompany const & company)
{
    return haveOwnIdentifiers(company.getLocationResources());
}

bool CLocalRulesChecker::checkCompanyMaterialResources(CCompany const & company)
{
    return haveOwnIdentifiers(company.getMaterialResources());
}

// ---- coming and changing --------------------------------------------------------------------------

bool CLocalRulesChecker::addCompany(CCompany const & company)
{
    if (!project) return false;
    CCompany copy(company);
    copy.setProject(project);
    copy.copyFromMasterCalendar();
    int const position = projectData->companies.Add(copy);
    projectData->companies.elementForPass(position).setProject(project);
    return true;
}

bool CLocalRulesChecker::changeCompany(CCompany const & company)
{
    CCompany * const stored = getCompany(company.getID());
    if (!stored) return false;
    auto const isSame = [&](auto field) { return (company.*field)() == (stored->*field)(); };
    // What stays as it was is not tested.
    auto const passes = [&](auto field, auto check) { return isSame(field) || check(company); };
    if (!passes(&CCompany::getName, checkCompanyName) || !passes(&CCompany::getType, checkCompanyType) ||
        !passes(&CCompany::getAddress, checkCompanyAddress) ||
        !passes(&CCompany::getTelephoneNumber, checkCompanyTelephoneNumber) ||
        !passes(&CCompany::getFaxNumber, checkCompanyFaxNumber) ||
        !passes(&CCompany::getEmailAddress, checkCompanyEmailAddress) ||
        !passes(&CCompany::getCalendar, checkCompanyCalendar))
        return false;
    // Resources have operations of their own.
    if (!isSame(&CCompany::getEquipmentResources) || !isSame(&CCompany::getHumanResources) ||
        !isSame(&CCompany::getLocationResources) || !isSame(&CCompany::getMaterialResources))
        return false;
    *stored = company;
    stored->setProject(project);
    return true;
}

// ---- fields ---------------------------------------------------------------------------------------

bool CLocalRulesChecker::setCompanyName(CCompanyID const & companyID, CString const & name)
{
    CCompany * const company = getCompany(companyID);
    // A name of tabs passes.
    if (!company || orvane::isEntirelyComposedOf(name, " ")) return false;
    company->setName(name);
    return true;
}

namespace
{

// True means a change, so that a value which stands already is refused.
template <class Field, class Value>
bool changeField(CCompany * company, Field const & (CCompany::*field)() const, void (CCompany::*set)(Value const &),
                 Value const & value)
{
    if (!company || (company->*field)() == value) return false;
    (company->*set)(value);
    return true;
}

}  // namespace

bool CLocalRulesChecker::setCompanyAddress(CCompanyID const & companyID, CString const & address)
{
    return changeField(getCompany(companyID), &CCompany::getAddress, &CCompany::setAddress, address);
}

bool CLocalRulesChecker::setCompanyTelephoneNumber(CCompanyID const & companyID, CString const & number)
{
    return changeField(getCompany(companyID), &CCompany::getTelephoneNumber, &CCompany::setTelephoneNumber, number);
}

bool CLocalRulesChecker::setCompanyFaxNumber(CCompanyID const & companyID, CString const & number)
{
    return changeField(getCompany(companyID), &CCompany::getFaxNumber, &CCompany::setFaxNumber, number);
}

bool CLocalRulesChecker::setCompanyEmailAddress(CCompanyID const & companyID, CString const & address)
{
    return changeField(getCompany(companyID), &CCompany::getEmailAddress, &CCompany::setEmailAddress, address);
}

bool CLocalRulesChecker::setCompanyType(CCompanyID const & companyID, CCompanyType const & type)
{
    return changeField(getCompany(companyID), &CCompany::getType, &CCompany::setType, type);
}

bool CLocalRulesChecker::setCompanyColor(CCompanyID const & companyID, unsigned long color)
{
    CCompany * const company = getCompany(companyID);
    if (company) company->setColor(color);
    return company != nullptr;
}

// ---- going ----------------------------------------------------------------------------------------

namespace
{

// How the company stands in the supply chain; null when it does not.
char const * partIn(CSupplyChain const & chain, CCompanyID const & companyID)
{
    if (chain.getSupplierID() == companyID) return "Supplier";
    return chain.getCustomerID().findByID(companyID) >= 0 ? "Customer" : nullptr;
}

}  // namespace

bool CLocalRulesChecker::makeCompanyNotBeSupplier(CTaskArray const & array, CCompanyID const & companyID)
{
    for (CTask const & task : array)
    {
        if (char const * const part = partIn(task.getSupplyChain(), companyID))
        {
            warnUser(CString("This company cannot be removed, because it is the ") + part + " of\n\"" +
                     task.getName() + "\"");
            return false;
        }
        if (task.getSubTasks() && !makeCompanyNotBeSupplier(*task.getSubTasks(), companyID)) return false;
    }
    return true;
}

// Changes nothing: the tasks would have to be handed on first.
bool CLocalRulesChecker::makeCompanyNotBeSupplier(CCompanyID const & companyID)
{
    return makeCompanyNotBeSupplier(*tasks, companyID);
}

bool CLocalRulesChecker::removeCompany(CCompanyID const & companyID)
{
    if (!project || companyID.isNULL()) return false;
    // The argument may be the selection, or stand in what goes.
    CCompanyID const id(companyID);
    if (!makeCompanyNotBeSupplier(id) || project->hasResourcesThatAreAssignedToTasks(id)) return false;
    CCompany const * const company = getCompany(id);
    if (!company) return false;
    removeAllResourcePresentations(*company);
    removeFromFilters(id);
    if (!isTransactionServer())
    {
        if (presentationData->getSelectedCompanyID() == id) presentationData->clearSelectedCompany();
        presentationData->deselectResourceIfOwnedByCompany(*company);
    }
    projectData->companies.RemoveAt(projectData->companies.findByID(id));
    return true;
}

// ---- the supply chain -----------------------------------------------------------------------------

bool CLocalRulesChecker::changeSupplyChain(CSupplyChain const & chain)
{
    CSupplyChain * const stored = getSupplyChain(chain.getID());
    if (!stored || !getCompany(chain.getSupplierID())) return false;
    for (CCompanyID const & customer : chain.getCustomerID())
        if (!getCompany(customer)) return false;
    *stored = chain;
    return true;
}
