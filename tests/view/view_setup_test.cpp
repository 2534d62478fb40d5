#include <limits>
#include <utility>

#include <gtest/gtest.h>

#include "config/project_config.h"
#include "config/project_constants.h"
#include "tests/support/clock_scope.h"
#include "tests/support/plan_builder.h"

using namespace orvane;

namespace
{

TEST(GanttPresentation, TheZoomStaysWithinItsLimits)
{
    double const nan = std::numeric_limits<double>::quiet_NaN(), least = 2e-6, most = 0.1;
    std::pair<double, double> const cases[] = {{1.0, most},   {0.1, most},  {0.05, 0.05}, {3e-6, 3e-6},
                                               {2e-6, least}, {0.0, least}, {-1, least},  {nan, least}};
    CGanttPresentation gantt;
    for (auto const & [asked, stored] : cases)
    {
        gantt.setZoom(asked);
        EXPECT_EQ(gantt.getZoom().getValue(), stored) << asked;
        EXPECT_EQ(gantt.isAtMinZoom(), stored == least) << asked;
        EXPECT_EQ(gantt.isAtMaxZoom(), stored == most) << asked;
        CProjectConfig::setGanttZoom(asked);
        EXPECT_TRUE(CGanttPresentation().getZoom() == gantt.getZoom()) << asked;
    }
    CProjectConfig::setGanttZoom(0.0);
}

TEST(GanttPresentation, WorldCoordinatesRunFromTheStartOfTheView)
{
    CGanttPresentation gantt;
    gantt.setZoom(0.1);
    gantt.setViewStartTime("01-05 00:00"_t);
    EXPECT_DOUBLE_EQ(gantt.timeToWorld("01-05 01:00"_t), 360.0);
    EXPECT_DOUBLE_EQ(gantt.dateToWorld(("01-06 09:00"_t).getDate()), 8640.0);
    // Seconds are lost, toward the start.
    EXPECT_EQ(gantt.worldToTime(365.9), "01-05 01:00"_t);
    EXPECT_EQ(gantt.worldToTime(-365.9), "01-04 23:00"_t);
    EXPECT_EQ(gantt.worldToTime(std::numeric_limits<double>::quiet_NaN()), "01-05 00:00"_t);
    EXPECT_GE(gantt.worldToTime(1e300), CProjectTime(2038, 1, 1, 0, 0));
}

TEST(GanttPresentation, TheViewStartsBetween1970And2020UnlessItStartsToday)
{
    ClockScope const clock(CProjectTime(2026, 5, 4, 15, 30));
    CGanttPresentation gantt;
    EXPECT_FALSE(gantt.setChanged());
    EXPECT_EQ(gantt.getViewStartTime(), CProjectTime(2026, 5, 4, 0, 0));
    EXPECT_EQ(gantt.getFocussedTime(), CProjectTime(2026, 5, 4, 15, 30));
    EXPECT_EQ(gantt.getPlaySpeed(), 24_h);
    gantt.setViewStartTime(CProjectTime(2026, 5, 4, 0, 0));
    EXPECT_EQ(gantt.getViewStartTime(), CProjectConstants::getMaxViewStartTime());
    gantt.setViewStartTime(CProjectTime(1950, 5, 4, 0, 0));
    EXPECT_EQ(gantt.getViewStartTime(), CProjectConstants::getMinViewStartTime());
    gantt.clear();
    EXPECT_TRUE(gantt == CGanttPresentation());
    EXPECT_TRUE(gantt.setChanged());
}

TEST(ViewSetup, ClearTakesTheSettings)
{
    ClockScope const clock("01-05 09:00"_t);
    CPresentationData const usual;
    auto const configure = [](int display, int company, int flag)
    {
        CProjectConfig::set3DDisplayMode(display);
        CProjectConfig::setCompanyFilter(company);
        CProjectConfig::setResourceUtilizationEvaluateToTheMinute(flag);
        CProjectConfig::setEVAGraphDisplayBCWP(flag);
    };
    configure(99, CCompanyType::Client, 0);
    CPresentationData views(usual);
    views.clear();
    EXPECT_EQ(views.get3DPresentation().get3DDisplayMode(), C3DDisplayMode::NothingSelected);
    EXPECT_EQ(views.getNavigatorPresentation().getCompanyFilter(), CCompanyType::Client);
    EXPECT_FALSE(views.getResourceUtilisationPresentation().getEvaluateToTheMinute());
    EXPECT_FALSE(views.getEVAGraphPresentation().getDisplayBCWP());
    configure(C3DDisplayMode::SceneEntity, CCompanyType::Supplier, 1);
    views.clear();
    EXPECT_TRUE(views == usual);
}

}  // namespace
