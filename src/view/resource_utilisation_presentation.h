#pragma once

#include "platform/project_xml_archive.h"
#include "values/enumerations.h"
#include "values/record.h"
#include "values/scalars.h"

// How the charts of the use of resources are set up.
class CResourceUtilisationPresentation : public orvane::CRecord<CResourceUtilisationPresentation>,
                                         public IProjectXMLTagProcessor
{
public:
    // As after clear, and unchanged.
    CResourceUtilisationPresentation();
    // The charts of the settings.
    void clear();

    CChartType const & getChartType() const { return chartType; }
    void setChartType(CChartType const & type) { chartType = type; }
    CDisplayChartFor const & getDisplayChartFor() const { return displayChartFor; }
    void setDisplayChartFor(CDisplayChartFor const & subject) { displayChartFor = subject; }
    CDisplayUtilisationChartFor const & getDisplayUtilisationChartFor() const { return displayUtilisationChartFor; }
    void setDisplayUtilisationChartFor(CDisplayUtilisationChartFor const & whose)
    {
        displayUtilisationChartFor = whose;
    }
    // Whether use is computed to the minute.
    CProjectBool const & getEvaluateToTheMinute() const { return evaluateToTheMinute; }
    void setEvaluateToTheMinute(CProjectBool const & exact) { evaluateToTheMinute = exact; }

    void xmlSerialize(CProjectXMLArchive & archive) override;

private:
    friend class orvane::CRecord<CResourceUtilisationPresentation>;
    template <class Visit>
    static void describe(Visit && visit);

    CChartType chartType;
    CDisplayChartFor displayChartFor;
    CDisplayUtilisationChartFor displayUtilisationChartFor;
    CProjectBool evaluateToTheMinute;
};

extern template class orvane::CRecord<CResourceUtilisationPresentation>;
