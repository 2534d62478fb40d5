#pragma once

#include "security/permissions.h"
#include "values/identifiers.h"
#include "values/scalars.h"
#include "values/typed_array.h"

// A named set of permissions that users of a project share.
class CRole : public orvane::CRecord<CRole>, public IProjectXMLTagProcessor
{
public:
    // "New Role", which grants nothing, under a fresh identity.
    CRole() = default;

    CRoleID const & getID() const { return id; }
    void setID(CRoleID const & value) { id = value; }
    CProjectString const & getName() const { return name; }
    void setName(CProjectString const & value) { name = value; }
    CPermissions const & getPermissions() const { return permissions; }
    void setPermissions(CPermissions const & value) { permissions = value; }
    void makeSubPermissionsInheritFromParentPermissions() { permissions.makeSubPermissionsInheritFromParent(); }

    // Become one of the roles of a new project. Their identities are the same in every project.
    void setToDefaultAdministratorRole();
    void setToDefaultUserRole();
    void setToDefaultGuestRole();

    // By permissions.
    bool operator>(CRole const & other) const { return permissions > other.permissions; }

    // Reads its attributes from whatever element it is given, its permissions from theirs.
    void xmlSerialize(CProjectXMLArchive & archive) override;

private:
    friend class orvane::CRecord<CRole>;
    template <class Visit>
    static void describe(Visit && visit);

    CRoleID id;
    CProjectString name{"New Role"};
    CPermissions permissions;
};
extern template class orvane::CRecord<CRole>;

class CRoleArray : public orvane::CIdentifiedArray<CRoleArray, CRole>, public IProjectXMLTagProcessor
{
public:
    // Roles are written and never read: an element "Role" empties the array.
    void xmlSerialize(CProjectXMLArchive & archive) override;
};
