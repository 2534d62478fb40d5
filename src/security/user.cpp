#include "security/user.h"

#include "model/project.h"
#include "platform/host.h"
#include "model/user_job_function.h"
#include "values/document_array_impl.h"
#include "values/record_impl.h"

template <class Visit>
void CUser::describe(Visit && visit)
{
    visit("ID", &CUser::id);
    visit("name", &CUser::name);
    visit("login", &CUser::login);
    visit("password", &CUser::password);
    visit("email", &CUser::email);
    visit("telephoneNumber", &CUser::telephoneNumber);
    visit("mobile", &CUser::mobileTelephoneNumber);
    visit("RoleID", &CUser::roleID);
    visit("CompanyID", &CUser::companyID);
    visit("permissions", &CUser::permissions);
}

template class orvane::CRecord<CUser>;

CUser::CUser(CString const & login, CString const & password, CString const & name, CString const & email,
             CString const & telephoneNumber, CString const & mobileTelephoneNumber)
    : name(name.IsEmpty() ? login : name),
      login(login),
      password(password),
      email(email),
      telephoneNumber(telephoneNumber),
      mobileTelephoneNumber(mobileTelephoneNumber),
      roleID(orvane::nullID),
      companyID(orvane::nullID)
{
}

CPermissions const & CUser::getActivePermissions() const
{
    CRole const * const role = project ? project->getRole(roleID) : nullptr;
    return role ? role->getPermissions() : permissions;
}

CTask const * CUser::findTask(CTaskID const & id) const
{
    return project ? project->getTask(id) : nullptr;
}

bool CUser::canWriteUser(CUserID const & id) const
{
    return canWriteUser(project ? project->getUser(id) : nullptr);
}

bool CUser::canWriteRole(CRoleID const & id) const
{
    return canWriteRole(project ? project->getRole(id) : nullptr);
}

void CUser::showNoAccessNotice() const
{
    CString text = "You do not have Access Permission to do this.\nPlease contact the Administrator";
    CUser const * const administrator = project ? project->getAdminUser() : nullptr;
    if (administrator && !administrator->email.IsEmpty()) text += ", by emailing\n" + administrator->email;
    orvane::host().messageBox(text, "Tessel Orvane Schedule", orvane::box::noAccess);
}

void CUser::setupBlankAdministratorUser(CRoleID const & adminRoleID)
{
    id.setGUID("8232b9a019dc95499ae858bff525a438");
    name = "Administrator";
    login = "Administrator";
    for (auto const text : {&CUser::password, &CUser::email, &CUser::telephoneNumber, &CUser::mobileTelephoneNumber})
        this->*text = "";
    roleID = adminRoleID;
    companyID.clear();
}

void CUser::postSerialize(CProject * project)
{
    setProject(project);
    if (!project || roleID.isNULL() || project->getRole(roleID)) return;
    if (CRole const * const administrator = project->getAdminRole()) roleID = administrator->getID();
}

int CUserArray::findByLogin(orvane::Text login) const
{
    for (int position = 0; position < GetSize(); ++position)
        if (GetAt(position).getLogin().view() == login) return position;
    return -1;
}

void CUser::Serialize(CProjectArchive & archive)
{
    archive.exchange(id);
    archive.skipUntil<CCompanyID>(11);
    archive.skipUntil<CUserJobFunction>(17);
    archive.exchange(name, login, password, email, telephoneNumber, mobileTelephoneNumber);
    archive.exchangeSince(17, roleID, CRoleID::getNULL());
    archive.exchangeSince(18, companyID, CCompanyID::getNULL());
    archive.exchangeSince(18, permissions, CPermissions());
}

void CUser::xmlSerialize(CProjectXMLArchive & archive)
{
    archive.startEntity("User");
    id.xmlSerialize(archive, "ID");
    name.xmlSerialize(archive, "name");
    login.xmlSerialize(archive, "login");
    email.xmlSerialize(archive, "email");
    telephoneNumber.xmlSerialize(archive, "telephoneNumber");
    mobileTelephoneNumber.xmlSerialize(archive, "mobile");
    roleID.xmlSerialize(archive, "RoleID");
    companyID.xmlSerialize(archive, "CompanyID");
    archive.out(">");
    permissions.xmlSerialize(archive);
    archive.endEntity("</User>");
}

void CUserArray::xmlSerialize(CProjectXMLArchive & archive)
{
    orvane::exchangeElements(archive, *this, "Users", nullptr);
    if (!archive.isTag("User")) return;
    CUser user;
    user.xmlSerialize(archive);
    if (findByLogin(user.getLogin()) < 0) Add(user);
}
