#include "brovik/chart/axis_range.h"
#include "log_capture.h"

#include <gmock/gmock.h>

#include <limits>

namespace {

constexpr double infinity = std::numeric_limits<double>::infinity();
constexpr double noNumber = std::numeric_limits<double>::quiet_NaN();

class AxisRangeTest : public testing::Test
{
protected:
    AxisRangeTest() { axis.setRange(2, 7); }

    void expectUnchanged() const
    {
        EXPECT_EQ(axis.min(), 2);
        EXPECT_EQ(axis.max(), 7);
        EXPECT_THAT(log.messages(), testing::IsEmpty()) << "the chart's own complaints";
    }

    const LogCapture log;
    QValueAxis axis;
    const AxisRange range;
};

} // namespace

TEST_F(AxisRangeTest, BothEndsAreSetAtOnce)
{
    int told = 0;
    QObject::connect(&axis, &QValueAxis::rangeChanged, &axis, [&](double min, double max) {
        ++told;
        EXPECT_EQ(min, 30);
        EXPECT_EQ(max, 40);
    });
    range.set(&axis, 30, 40);
    EXPECT_EQ(told, 1);
}

TEST_F(AxisRangeTest, WhatIsNoNumberChangesNothing)
{
    for (const double end : {infinity, -infinity, noNumber}) {
        range.set(&axis, end, 9);
        expectUnchanged();
        range.set(&axis, 1, end);
        expectUnchanged();
    }
}

TEST_F(AxisRangeTest, EndsTheWrongWayRoundChangeNothing)
{
    range.set(&axis, 9, 1);
    expectUnchanged();
}

TEST_F(AxisRangeTest, NoAxisIsNone)
{
    range.set(nullptr, 1, 9);
    expectUnchanged();
}
