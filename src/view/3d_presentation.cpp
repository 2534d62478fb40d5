#include "view/3d_presentation.h"

#include "config/project_config.h"
#include "values/record_impl.h"

// Under the names that stand in documents.
template <class Visit>
void C3DPresentation::describe(Visit && visit)
{
    visit("Resource3DDisplayMode", &C3DPresentation::displayMode3D);
    visit("3DLockMode", &C3DPresentation::lockMode3D);
}

template class orvane::CRecord<C3DPresentation>;

C3DPresentation::C3DPresentation()
{
    clear();
    resetChanged();
}

void C3DPresentation::clear()
{
    // As a number: one that no mode has becomes the first.
    displayMode3D = CProjectConfig::get3DDisplayMode();
    lockMode3D = C3DLockMode::Mode3;
}

void C3DPresentation::Serialize(CProjectArchive & archive)
{
    archive.exchange(displayMode3D);
    archive.exchangeSince(41, lockMode3D, C3DPresentation().lockMode3D);
}

void C3DPresentation::xmlSerialize(CProjectXMLArchive & archive)
{
    exchangeAttributes(archive);
}
