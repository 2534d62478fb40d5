#include "values/scalars.h"

#include <gtest/gtest.h>

#include <climits>
#include <limits>
#include <string>

namespace
{

template <class Value>
void expectFlags(Value const & value, bool valid, bool changed)
{
    EXPECT_EQ(value.isValid(), valid);
    EXPECT_EQ(value.getChanged(), changed);
}

// The life of a scalar that all of them share; a colour is valid after every assignment.
template <class Value>
void expectLife(Value const & given, bool validFromNothing = false)
{
    SCOPED_TRACE(std::string(Value::GetThisClass()->getName()));
    expectFlags(Value(), false, false);
    expectFlags(given, true, false);
    Value value;
    value = given;
    EXPECT_TRUE(value == given);
    expectFlags(value, true, true);
    expectFlags(Value(value), true, false);
    value.resetChanged();
    value = Value(value);
    expectFlags(value, true, true);
    value = Value();
    EXPECT_TRUE(value != given);
    expectFlags(value, validFromNothing, true);
}

TEST(Scalars, CopiesAreUnchangedAssignmentsAreChanges)
{
    expectLife(CProjectBool(true));
    expectLife(CProjectInt(3));
    expectLife(CProjectDouble(0.5));
    expectLife(CProjectString("dig"));
    expectLife(CProjectColor(0, 128, 255), true);
}

TEST(ProjectInt, ArithmeticStopsAtTheEnds)
{
    EXPECT_EQ(CProjectInt().getValue(), -1);
    CProjectInt number(INT_MAX);
    EXPECT_EQ((number += 1).getValue(), INT_MAX);
    EXPECT_EQ((number *= -2).getValue(), INT_MIN);
    EXPECT_EQ((-number).getValue(), INT_MAX);
    EXPECT_EQ((number + number).getValue(), INT_MIN);
    EXPECT_EQ((CProjectInt(0) - number).getValue(), INT_MAX);
    EXPECT_EQ((number /= -1).getValue(), INT_MAX);
    EXPECT_EQ((number /= -10).getValue(), -214748364);
}

// Red lies in the low byte; what is out of range is bounded.
TEST(ProjectColor, NumbersComeBackAndColoursLoseTheirFractions)
{
    float const nan = std::numeric_limits<float>::quiet_NaN();
    float const infinite = std::numeric_limits<float>::infinity();
    std::pair<CProjectColor, unsigned long> const cases[] = {
        {CProjectColor(), 0xFFFFFF},
        {CProjectColor(0.5F, 0.25F, 0.999F), 0xFE3F7F},
        {CProjectColor(nan, infinite, -infinite), 0x00FF00},
        {CProjectColor(2.0F, 0.0F, -1.0F), 0x0100FE},
    };
    for (auto const & [color, number] : cases) EXPECT_EQ(static_cast<unsigned long>(color), number);
    for (unsigned long byte = 0; byte < 256; ++byte)
    {
        unsigned long const number = byte | (255 - byte) << 8 | (byte ^ 0x55) << 16;
        EXPECT_EQ(static_cast<unsigned long>(CProjectColor(number)), number);
    }
    EXPECT_FLOAT_EQ(CProjectColor(0x00FF3300UL).green(), 0.2F);
    EXPECT_NE(CProjectColor(0x00007FUL), CProjectColor(0.5F, 0.0F, 0.0F));
}

}  // namespace
