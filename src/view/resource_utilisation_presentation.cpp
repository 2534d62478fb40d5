#include "view/resource_utilisation_presentation.h"

#include "config/project_config.h"
#include "values/record_impl.h"

template <class Visit>
void CResourceUtilisationPresentation::describe(Visit && visit)
{
    visit("chartType", &CResourceUtilisationPresentation::chartType);
    visit("displayChartFor", &CResourceUtilisationPresentation::displayChartFor);
    visit("displayUtilisationChartFor", &CResourceUtilisationPresentation::displayUtilisationChartFor);
    visit("evaluateToTheMinute", &CResourceUtilisationPresentation::evaluateToTheMinute);
}

template class orvane::CRecord<CResourceUtilisationPresentation>;

CResourceUtilisationPresentation::CResourceUtilisationPresentation()
{
    clear();
    resetChanged();
}

void CResourceUtilisationPresentation::clear()
{
    chartType = CProjectConfig::getChartType();
    displayChartFor = CProjectConfig::getDisplayChartFor();
    displayUtilisationChartFor = CProjectConfig::getDisplayUtilisationChartFor();
    evaluateToTheMinute = CProjectConfig::getResourceUtilizationEvaluateToTheMinute();
}

void CResourceUtilisationPresentation::xmlSerialize(CProjectXMLArchive & archive)
{
    if (archive.readsAnother("ResourceUtilisationPresentation")) return;
    exchangeElement(archive, "ResourceUtilisationPresentation");
}
