#pragma once

#include "platform/project_xml_archive.h"
#include "values/enumerations.h"
#include "values/record.h"

// What the 3D view presents. Its mode follows the selection while the setting AutoChoose3DMode is on; see
// CPresentationData.
class C3DPresentation : public orvane::CRecord<C3DPresentation>, public IProjectXMLTagProcessor
{
public:
    // As after clear, and unchanged.
    C3DPresentation();
    // The display mode of the settings, and lock mode 3.
    void clear();

    C3DDisplayMode const & get3DDisplayMode() const { return displayMode3D; }
    void set3DDisplayMode(C3DDisplayMode const & mode) { displayMode3D = mode; }
    C3DLockMode const & get3DLockMode() const { return lockMode3D; }
    void set3DLockMode(C3DLockMode const & mode) { lockMode3D = mode; }

    void Serialize(CProjectArchive & archive);

    // Attributes without an element of their own: read from whatever element is given.
    void xmlSerialize(CProjectXMLArchive & archive) override;

private:
    friend class orvane::CRecord<C3DPresentation>;
    template <class Visit>
    static void describe(Visit && visit);

    C3DDisplayMode displayMode3D;
    C3DLockMode lockMode3D;
};

extern template class orvane::CRecord<C3DPresentation>;
