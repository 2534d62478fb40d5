#include "view/eva_graph_presentation.h"

#include "config/project_config.h"
#include "values/record_impl.h"

template <class Visit>
void CEVAGraphPresentation::describe(Visit && visit)
{
    visit("displayBCWS", &CEVAGraphPresentation::displayBCWS);
    visit("displayBCWP", &CEVAGraphPresentation::displayBCWP);
    visit("displayACWP", &CEVAGraphPresentation::displayACWP);
}

template class orvane::CRecord<CEVAGraphPresentation>;

CEVAGraphPresentation::CEVAGraphPresentation()
{
    clear();
    resetChanged();
}

void CEVAGraphPresentation::clear()
{
    displayBCWS = CProjectConfig::getEVAGraphDisplayBCWS();
    displayBCWP = CProjectConfig::getEVAGraphDisplayBCWP();
    displayACWP = CProjectConfig::getEVAGraphDisplayACWP();
}

void CEVAGraphPresentation::xmlSerialize(CProjectXMLArchive & archive)
{
    exchangeAttributes(archive);
}
