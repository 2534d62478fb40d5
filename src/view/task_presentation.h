#pragma once

#include "values/record.h"
#include "values/scalars.h"

// How one task's row is shown.
class CTaskPresentation : public orvane::CRecord<CTaskPresentation>
{
public:
    static constexpr char const * documentTag = "TaskPresentation";

    // In pixels.
    CProjectInt const & getRowHeight() const { return rowHeight; }
    void setRowHeight(CProjectInt const & pixels) { rowHeight = pixels; }
    // Whether the rows below are seen; of no effect on a leaf.
    CProjectBool const & getShowChildren() const { return showChildren; }
    void setShowChildren(CProjectBool const & show) { showChildren = show; }

    // Reads whatever element it is given.
    void xmlSerialize(CProjectXMLArchive & archive);

private:
    friend class orvane::CRecord<CTaskPresentation>;
    template <class Visit>
    static void describe(Visit && visit);

    CProjectInt rowHeight{20};
    CProjectBool showChildren{true};
};

extern template class orvane::CRecord<CTaskPresentation>;
