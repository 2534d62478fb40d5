#pragma once

#include "platform/project_xml_archive.h"
#include "values/record.h"
#include "values/scalars.h"

namespace orvane
{

// How a node of a tree of the register or of a company is shown: whether what stands below it is seen. A
// kind of node derives from this.
template <class Self>
class CTreePresentation : public CRecord<Self>, public IProjectXMLTagProcessor
{
public:
    CProjectBool const & getShowExpanded() const { return showExpanded; }
    void setShowExpanded(CProjectBool const & show) { showExpanded = show; }

    // Reads whatever element it is given.
    void xmlSerialize(CProjectXMLArchive & archive) override;

private:
    friend class CRecord<Self>;
    template <class Visit>
    static void describe(Visit && visit);

    CProjectBool showExpanded{true};
};

}  // namespace orvane

class CResourcePresentation : public orvane::CTreePresentation<CResourcePresentation>
{
public:
    // Unlike its kin it stands in documents under the name of its class.
    static constexpr char const * documentTag = "CResourcePresentation";
};
class CRiskPresentation : public orvane::CTreePresentation<CRiskPresentation>
{
public:
    static constexpr char const * documentTag = "RiskPresentation";
};

extern template class orvane::CRecord<CResourcePresentation>;
extern template class orvane::CRecord<CRiskPresentation>;
