#include "model/user_job_function.h"

#include <gtest/gtest.h>

namespace
{

// Nine flags of one type are easily mixed up: each in turn is the only one set.
TEST(UserJobFunctionTest, FlagsKeepTheirPlaces)
{
    using F = CUserJobFunction;
    struct
    {
        CProjectBool const & (F::*get)() const;
        void (F::*set)(CProjectBool const &);
    } const flags[] = {{&F::getIsController, &F::setIsController},         {&F::getIsPlanner, &F::setIsPlanner},
                       {&F::getIsPackageManager, &F::setIsPackageManager}, {&F::getIsSiteManager, &F::setIsSiteManager},
                       {&F::getIsSupplier, &F::setIsSupplier},             {&F::getIsProcurement, &F::setIsProcurement},
                       {&F::getIsAccounts, &F::setIsAccounts},             {&F::getIsSales, &F::setIsSales},
                       {&F::getIsManager, &F::setIsManager}};
    for (int only = 0; only < 9; ++only)
    {
        auto const is = [&](int place) { return CProjectBool(place == only); };
        CUserJobFunction const built(is(0), is(1), is(2), is(3), is(4), is(5), is(6), is(7), is(8));
        CUserJobFunction set;
        EXPECT_FALSE(built == set);
        (set.*flags[only].set)(true);
        EXPECT_TRUE(built == set && set.setChanged());
        for (int place = 0; place < 9; ++place) EXPECT_EQ((built.*flags[place].get)(), is(place)) << place << only;
    }
}

}  // namespace
