#include "view/gantt_presentation.h"

#include <algorithm>

#include "config/project_config.h"
#include "config/project_constants.h"
#include "values/record_impl.h"
#include "values/saturate.h"

// Under the names that stand in documents.
template <class Visit>
void CGanttPresentation::describe(Visit && visit)
{
    visit("Zoom", &CGanttPresentation::zoom);
    visit("FocusedTime", &CGanttPresentation::focussedTime);
    visit("FocusedTimePlaying", &CGanttPresentation::focussedTimePlaying);
    visit("PlaySpeed", &CGanttPresentation::playSpeed);
    visit("ViewStartTime", &CGanttPresentation::viewStartTime);
    visit("ScrollPosition", &CGanttPresentation::scrollPosition);
}

template class orvane::CRecord<CGanttPresentation>;

CGanttPresentation::CGanttPresentation()
{
    clear();
    resetChanged();
}

void CGanttPresentation::clear()
{
    setZoom(CProjectConfig::getGanttZoom());
    focussedTime = CProjectTime::GetTickCount();
    focussedTimePlaying = false;
    playSpeed = CProjectDuration(24, 0);
    // Not by the setter, whose range ended in 2020.
    viewStartTime = CProjectTime(CProjectDate::GetCurrentDate().getCTime());
    scrollPosition = 0;
}

void CGanttPresentation::setZoom(double value)
{
    // In this form the least also takes what is not a number.
    zoom = value > minZoom ? std::min(value, maxZoom) : minZoom;
}

void CGanttPresentation::setViewStartTime(CProjectTime const & time)
{
    CProjectTime const earliest = CProjectConstants::getMinViewStartTime();
    CProjectTime const latest = CProjectConstants::getMaxViewStartTime();
    viewStartTime = std::clamp(time, earliest, latest);
}

double CGanttPresentation::toWorld(CTime const & time) const
{
    // In 64 bits: a view that starts in 2020 is further from 1901 than a duration reaches.
    return static_cast<double>(time.GetTime() - viewStartTime.getCTime().GetTime()) * zoom.getValue();
}

CProjectTime CGanttPresentation::worldToTime(double x) const
{
    if (zoom.getValue() == 0) return CProjectTime();
    return viewStartTime + CProjectDuration(orvane::saturate<std::int32_t>(x / zoom.getValue()));
}

void CGanttPresentation::xmlSerialize(CProjectXMLArchive & archive)
{
    exchangeAttributes(archive);
}
