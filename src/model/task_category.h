#pragma once

#include "values/identifiers.h"
#include "values/scalars.h"
#include "values/typed_array.h"
#include "values/value.h"

// A name by which tasks are grouped. Two categories are equal when their identities are, whatever their
// names; hence no list of compared fields, as other records have.
class CTaskCategory : public CDynamic<CTaskCategory>, public IProjectXMLTagProcessor
{
public:
    CTaskCategory() = default;
    explicit CTaskCategory(CProjectString const & name) : name(name) {}

    CProjectString const & getName() const { return name; }
    CTaskCategoryID const & getID() const { return id; }
    // Without a name, under the NULL identity.
    void clear();

    friend bool operator==(CTaskCategory const & a, CTaskCategory const & b) { return a.id == b.id; }

    // Change flags; see CRecord.
    bool getChanged() const { return changed; }
    bool setChanged() { return changed = name.setChanged() | id.setChanged(); }
    void resetChanged();
    void touch();

    void Serialize(CProjectArchive & archive);
    void xmlSerialize(CProjectXMLArchive & archive) override;

private:
    bool changed = false;
    CProjectString name;
    CTaskCategoryID id;
};

// The categories of a project, found by identity and by name.
class CTaskCategoryArray : public orvane::CTypedArray<CTaskCategoryArray, CTaskCategory, &CTaskCategory::getID>,
                           public IProjectXMLTagProcessor
{
public:
    // The position of a category, or -1.
    int findByID(CTaskCategoryID const & id) const { return findByKey(id); }
    int findByName(CString const & name) const;
    // Adds a category of that name and tells its position; -1 when there is one already.
    int AddIfUnique(CProjectString const & name);
    // The category of that name, added when there is none. Do not keep the reference.
    CTaskCategory & getByName(CString const & name);
    // Written as "TaskCategories", read from "TaskCategorys".
    void xmlSerialize(CProjectXMLArchive & archive) override;

protected:
    void entered(int first, int count) override;
    void leaving(int first, int count) override;
    void lentForWriting() override;

private:
    mutable orvane::CPositionIndex nameIndex;
};
