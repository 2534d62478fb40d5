#pragma once

#include "platform/project_xml_archive.h"
#include "values/record.h"
#include "values/scalars.h"

// Which curves the graph of earned value shows.
class CEVAGraphPresentation : public orvane::CRecord<CEVAGraphPresentation>, public IProjectXMLTagProcessor
{
public:
    // As after clear, and unchanged.
    CEVAGraphPresentation();
    // The curves of the settings.
    void clear();

    // The budgeted cost of work scheduled.
    CProjectBool const & getDisplayBCWS() const { return displayBCWS; }
    void setDisplayBCWS(CProjectBool const & display) { displayBCWS = display; }
    // The budgeted cost of work performed.
    CProjectBool const & getDisplayBCWP() const { return displayBCWP; }
    void setDisplayBCWP(CProjectBool const & display) { displayBCWP = display; }
    // The actual cost of work performed.
    CProjectBool const & getDisplayACWP() const { return displayACWP; }
    void setDisplayACWP(CProjectBool const & display) { displayACWP = display; }

    // Attributes without an element of their own: read from whatever element is given.
    void xmlSerialize(CProjectXMLArchive & archive) override;

private:
    friend class orvane::CRecord<CEVAGraphPresentation>;
    template <class Visit>
    static void describe(Visit && visit);

    CProjectBool displayBCWS;
    CProjectBool displayBCWP;
    CProjectBool displayACWP;
};

extern template class orvane::CRecord<CEVAGraphPresentation>;
