#pragma once

#include "platform/project_xml_archive.h"
#include "values/date_time.h"
#include "values/duration.h"
#include "values/record.h"
#include "values/scalars.h"

// How the Gantt chart is scrolled and zoomed, and the moment on which the views are focussed.
//
// World coordinates are what the chart draws in: they run to the right, from 0 at the start of the view,
// `zoom` of them a second.
class CGanttPresentation : public orvane::CRecord<CGanttPresentation>, public IProjectXMLTagProcessor
{
public:
    // As after clear, and unchanged.
    CGanttPresentation();
    // The zoom of the settings, focussed on the present and starting today.
    void clear();

    CProjectDouble const & getZoom() const { return zoom; }
    // Stays from 2e-6 to 0.1; what is not a number becomes the least.
    void setZoom(double value);
    bool isAtMaxZoom() const { return zoom.getValue() >= maxZoom; }
    bool isAtMinZoom() const { return zoom.getValue() <= minZoom; }

    CProjectTime const & getFocussedTime() const { return focussedTime; }
    void setFocussedTime(CProjectTime const & time) { focussedTime = time; }
    // Whether the focus moves by itself, and how fast: in time of the plan for each step of the player.
    CProjectBool const & getFocussedTimePlaying() const { return focussedTimePlaying; }
    void setFocussedTimePlaying(CProjectBool const & playing) { focussedTimePlaying = playing; }
    CProjectDuration const & getPlaySpeed() const { return playSpeed; }
    void setPlaySpeed(CProjectDuration const & speed) { playSpeed = speed; }

    CProjectTime const & getViewStartTime() const { return viewStartTime; }
    // Stays from CProjectConstants::getMinViewStartTime to getMaxViewStartTime. Today, where a cleared view
    // starts, may lie beyond.
    void setViewStartTime(CProjectTime const & time);
    CProjectInt const & getScrollPosition() const { return scrollPosition; }
    void setScrollPosition(CProjectInt const & position) { scrollPosition = position; }

    double timeToWorld(CProjectTime const & time) const { return toWorld(time.getCTime()); }
    // At the date's 00:00.
    double dateToWorld(CProjectDate const & date) const { return toWorld(date.getCTime()); }
    // To the whole minute toward the start of the view; not valid while the zoom, out of a file, is 0.
    CProjectTime worldToTime(double x) const;

    // Attributes without an element of their own: read from whatever element is given.
    void xmlSerialize(CProjectXMLArchive & archive) override;

private:
    friend class orvane::CRecord<CGanttPresentation>;
    template <class Visit>
    static void describe(Visit && visit);

    double toWorld(CTime const & time) const;

    // From a year on 63 units to a minute on 6.
    static constexpr double minZoom = 2e-6;
    static constexpr double maxZoom = 0.1;

    CProjectDouble zoom;
    CProjectTime focussedTime;
    CProjectBool focussedTimePlaying;
    CProjectDuration playSpeed;
    CProjectTime viewStartTime;
    CProjectInt scrollPosition;
};

extern template class orvane::CRecord<CGanttPresentation>;
