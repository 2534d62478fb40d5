#include "model/task_category.h"

#include "values/document_array_impl.h"

void CTaskCategory::clear()
{
    name = "";
    id.clear();
}

void CTaskCategory::resetChanged()
{
    changed = false;
    name.resetChanged();
    id.resetChanged();
}

void CTaskCategory::touch()
{
    name.touch();
    id.touch();
}

int CTaskCategoryArray::findByName(CString const & name) const
{
    auto const at = [this](int position) -> CString const & { return GetAt(position).getName(); };
    return nameIndex.find(
        GetSize(), [&](int a, int b) { return at(a).Compare(at(b)); },
        [&](int position) { return at(position).Compare(name); });
}

int CTaskCategoryArray::AddIfUnique(CProjectString const & name)
{
    return findByName(name) >= 0 ? -1 : Add(CTaskCategory(name));
}

CTaskCategory & CTaskCategoryArray::getByName(CString const & name)
{
    int const position = findByName(name);
    return (*this)[position >= 0 ? position : Add(CTaskCategory(name))];
}

void CTaskCategoryArray::entered(int first, int count)
{
    CTypedArray::entered(first, count);
    if (first + count < GetSize()) nameIndex.drop();
}

void CTaskCategoryArray::leaving(int first, int count)
{
    CTypedArray::leaving(first, count);
    nameIndex.drop();
}

void CTaskCategoryArray::lentForWriting()
{
    CTypedArray::lentForWriting();
    nameIndex.drop();
}

void CTaskCategory::Serialize(CProjectArchive & archive)
{
    archive.exchange(name, id);
    if (archive.IsLoading()) setChanged();
}

void CTaskCategory::xmlSerialize(CProjectXMLArchive & archive)
{
    archive.startEntity("TaskCategory");
    name.xmlSerialize(archive, "name");
    id.xmlSerialize(archive, "id");
    archive.endEntity();
}

void CTaskCategoryArray::xmlSerialize(CProjectXMLArchive & archive)
{
    char const * const wrapper = archive.isLoading() ? "TaskCategorys" : "TaskCategories";
    orvane::exchangeElements(archive, *this, wrapper, "TaskCategory");
}
