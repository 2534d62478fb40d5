#pragma once

#include "platform/project_xml_archive.h"
#include "values/record.h"
#include "values/scalars.h"

// What a user does on the project, as told by the user: the application shows it, nothing is decided by it.
class CUserJobFunction : public orvane::CRecord<CUserJobFunction>, public IProjectXMLTagProcessor
{
public:
    // None of them.
    CUserJobFunction() = default;
    CUserJobFunction(CProjectBool const & isController, CProjectBool const & isPlanner,
                     CProjectBool const & isPackageManager, CProjectBool const & isSiteManager,
                     CProjectBool const & isSupplier, CProjectBool const & isProcurement,
                     CProjectBool const & isAccounts, CProjectBool const & isSales, CProjectBool const & isManager);

    CProjectBool const & getIsController() const { return isController; }
    void setIsController(CProjectBool const & value) { isController = value; }
    CProjectBool const & getIsPlanner() const { return isPlanner; }
    void setIsPlanner(CProjectBool const & value) { isPlanner = value; }
    CProjectBool const & getIsPackageManager() const { return isPackageManager; }
    void setIsPackageManager(CProjectBool const & value) { isPackageManager = value; }
    CProjectBool const & getIsSiteManager() const { return isSiteManager; }
    void setIsSiteManager(CProjectBool const & value) { isSiteManager = value; }
    CProjectBool const & getIsSupplier() const { return isSupplier; }
    void setIsSupplier(CProjectBool const & value) { isSupplier = value; }
    CProjectBool const & getIsProcurement() const { return isProcurement; }
    void setIsProcurement(CProjectBool const & value) { isProcurement = value; }
    CProjectBool const & getIsAccounts() const { return isAccounts; }
    void setIsAccounts(CProjectBool const & value) { isAccounts = value; }
    CProjectBool const & getIsSales() const { return isSales; }
    void setIsSales(CProjectBool const & value) { isSales = value; }
    CProjectBool const & getIsManager() const { return isManager; }
    void setIsManager(CProjectBool const & value) { isManager = value; }

    void xmlSerialize(CProjectXMLArchive & archive) override;

private:
    friend class orvane::CRecord<CUserJobFunction>;
    template <class Visit>
    static void describe(Visit && visit);

    CProjectBool isController{false};
    CProjectBool isPlanner{false};
    CProjectBool isPackageManager{false};
    CProjectBool isSiteManager{false};
    CProjectBool isSupplier{false};
    CProjectBool isProcurement{false};
    CProjectBool isAccounts{false};
    CProjectBool isSales{false};
    CProjectBool isManager{false};
};
extern template class orvane::CRecord<CUserJobFunction>;
