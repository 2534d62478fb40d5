#include "model/user_job_function.h"

#include "values/record_impl.h"

template <class Visit>
void CUserJobFunction::describe(Visit && visit)
{
    visit("isController", &CUserJobFunction::isController);
    visit("isPlanner", &CUserJobFunction::isPlanner);
    visit("isPackageManager", &CUserJobFunction::isPackageManager);
    visit("isSiteManager", &CUserJobFunction::isSiteManager);
    visit("isSupplier", &CUserJobFunction::isSupplier);
    visit("isProcurement", &CUserJobFunction::isProcurement);
    visit("isAccounts", &CUserJobFunction::isAccounts);
    visit("isSales", &CUserJobFunction::isSales);
    visit("isManager", &CUserJobFunction::isManager);
}

template class orvane::CRecord<CUserJobFunction>;

CUserJobFunction::CUserJobFunction(CProjectBool const & isController, CProjectBool const & isPlanner,
                                   CProjectBool const & isPackageManager, CProjectBool const & isSiteManager,
                                   CProjectBool const & isSupplier, CProjectBool const & isProcurement,
                                   CProjectBool const & isAccounts, CProjectBool const & isSales,
                                   CProjectBool const & isManager)
    : isController(isController),
      isPlanner(isPlanner),
      isPackageManager(isPackageManager),
      isSiteManager(isSiteManager),
      isSupplier(isSupplier),
      isProcurement(isProcurement),
      isAccounts(isAccounts),
      isSales(isSales),
      isManager(isManager)
{
}

void CUserJobFunction::xmlSerialize(CProjectXMLArchive & archive)
{
    exchangeElement(archive, "UserJobFunction", " />");
}
