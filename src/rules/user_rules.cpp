// Users and their roles. Nobody gives out rights that they do not have, and the administrator stays.

#include <utility>

#include "rules/local_rules_checker.h"
#include "rules/text_checks.h"

// ---- lookups --------------------------------------------------------------------------------------

CUser * CLocalRulesChecker::getUser(CUserID const & id) const
{
    return project ? writableElement(projectData->users, id) : nullptr;
}

CRole * CLocalRulesChecker::getRole(CRoleID const & id) const
{
    return project ? writableElement(projectData->roles, id) : nullptr;
}

// ---- what a user may be given ---------------------------------------------------------------------

bool CLocalRulesChecker::checkUserLogin(CUser const & user)
{
    return orvane::accepts(orvane::limit::lines, user.getLogin());
}

bool CLocalRulesChecker::checkUserPassword(CUser const & user)
{
    return orvane::accepts(orvane::limit::lines, user.getPassword());
}

bool CLocalRulesChecker::checkUserName(CUser const & user)
{
    return orvane::accepts(orvane::limit::lines, user.getName());
}

bool CLocalRulesChecker::checkUserTelephoneNumber(CUser const & user)
{
    return orvane::accepts(orvane::limit::line, user.getTelephoneNumber());
}

bool CLocalRulesChecker::checkUserMobileTelephoneNumber(CUser const & user)
{
    return orvane::accepts(orvane::limit::line, user.getMobileTelephoneNumber());
}

bool CLocalRulesChecker::checkUserEmailAddress(CUser const & user)
{
    return orvane::accepts(orvane::limit::line, user.getEmail());
}

bool CLocalRulesChecker::mayGrant(CPermissions const & permissions)
{
    CUser const * const current = project->getCurrentUser();
    if (!current) return false;
    if (!(permissions > current->getActivePermissions())) return true;
    if (isOriginatingClient()) current->showNoAccessNotice();
    return false;
}

namespace
{

bool hasForbidden(CString const & text)
{
    return text.FindOneOf(orvane::forbiddenInLines) >= 0;
}

}  // namespace

// ---- roles ----------------------------------------------------------------------------------------

bool CLocalRulesChecker::addRole(CRole const & role)
{
    if (!project || hasForbidden(role.getName())) return false;
    CRole copy(role);
    copy.makeSubPermissionsInheritFromParentPermissions();
    return mayGrant(copy.getPermissions()) && projectData->roles.Add(copy) >= 0;
}

bool CLocalRulesChecker::changeRole(CRole const & role)
{
    if (!project || !project->getCurrentUser() || !project->getAdminRole()) return false;
    CRole copy(role);
    copy.makeSubPermissionsInheritFromParentPermissions();
    if (copy.getID() == projectData->adminRoleID) return warnUser("The Administrator Role cannot be changed"), false;
    if (!mayGrant(copy.getPermissions())) return false;
    CRole * const stored = getRole(copy.getID());
    if (!stored || hasForbidden(copy.getName())) return false;
    *stored = copy;
    return true;
}

bool CLocalRulesChecker::removeRole(CRoleID const & roleID)
{
    if (!project || !project->getAdminRole()) return false;
    if (roleID == projectData->adminRoleID) return warnUser("The Administrator Role cannot be removed"), false;
    CRole const * const role = getRole(roleID);
    if (!role) return false;
    for (CUser const & user : *users)
    {
        if (!(user.getRoleID() == roleID)) continue;
        warnUser("Cannot remove \"" + role->getName() + "\" because\nthere are existing Users who have this Role");
        return false;
    }
    // The argument may be the selection, or stand in what goes.
    CRoleID const id(roleID);
    projectData->roles.RemoveAt(projectData->roles.findByID(id));
    if (!isTransactionServer() && presentationData->getSelectedRoleID() == id) presentationData->clearSelectedRole();
    return true;
}

// ---- users ----------------------------------------------------------------------------------------

// A user who is refused for too many rights, or for want of somebody to judge, has been added all the same: the
// application restores the state before.
bool CLocalRulesChecker::addUser(CUser const & user)
{
    for (auto const text : {&CUser::getName, &CUser::getLogin, &CUser::getPassword, &CUser::getEmail,
                            &CUser::getTelephoneNumber, &CUser::getMobileTelephoneNumber})
        if (hasForbidden((user.*text)())) return false;
    if (!getRole(user.getRoleID())) return false;
    int const position = users->Add(user);
    if (position < 0) return false;
    CUser & stored = users->elementForPass(position);
    stored.setProject(project);
    stored.makeSubPermissionsInheritFromParentPermissions();
    return mayGrant(stored.getActivePermissions());
}

bool CLocalRulesChecker::changeUser(CUser const & user)
{
    using Text = CProjectString const & (CUser::*)() const;
    using Check = bool (*)(CUser const &);
    static constexpr std::pair<Text, Check> texts[] = {
        {&CUser::getLogin, checkUserLogin},
        {&CUser::getPassword, checkUserPassword},
        {&CUser::getName, checkUserName},
        {&CUser::getTelephoneNumber, checkUserTelephoneNumber},
        {&CUser::getMobileTelephoneNumber, checkUserMobileTelephoneNumber},
        {&CUser::getEmail, checkUserEmailAddress},
    };
    CUser * const stored = getUser(user.getID());
    if (!stored) return false;
    // What stays as it was is not tested.
    for (auto const & [text, check] : texts)
        if (!((user.*text)() == (stored->*text)()) && !check(user)) return false;
    if (!user.getRoleID().isNULL() && !getRole(user.getRoleID())) return false;
    CUser copy(user);
    copy.setProject(project);
    copy.makeSubPermissionsInheritFromParentPermissions();
    if (!mayGrant(copy.getActivePermissions()) || !project->getAdminUser()) return false;
    if (copy.getID() == projectData->adminUserID && !(copy.getRoleID() == stored->getRoleID()))
        return warnUser("The Administrator User cannot be changed"), false;
    *stored = copy;
    return true;
}

bool CLocalRulesChecker::removeUser(CUserID const & userID)
{
    CUser const * const current = project ? project->getCurrentUser() : nullptr;
    if (!current) return false;
    if (current->getID() == userID) return warnUser("You cannot remove yourself from the project"), false;
    if (!project->getAdminUser()) return false;
    if (userID == projectData->adminUserID) return warnUser("The Administrator User cannot be removed"), false;
    if (!getUser(userID)) return false;
    users->RemoveAt(users->findByID(userID));
    if (!isTransactionServer()) presentationData->clearSelectedUser();
    return true;
}
