#include "brovik/chart/trace_points.h"
#include "point_by_point.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <map>
#include <utility>

using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

namespace {

using Points = QList<QPointF>;
using Arrival = TracePoints::Arrival;

TracePoints measured(const Points &points)
{
    TracePoints trace;
    for (const QPointF &point : points) {
        trace.add(TraceKind::Measured, Arrival::Stored, point);
    }
    return trace;
}

Points wave(int count)
{
    Points points;
    for (int index = 0; index < count; ++index) {
        points.append({index * 0.5, 3.0 + 2.0 * std::sin(index * 0.7) + index % 5});
    }
    return points;
}

/// Lowest and highest value in each of so many columns from 500 to 9500.
std::map<int, std::pair<double, double>> extremes(const Points &points, int columns)
{
    std::map<int, std::pair<double, double>> result;
    for (const QPointF &point : points) {
        if (point.x() >= 500 && point.x() <= 9500) {
            const int column = static_cast<int>((point.x() - 500) * (columns / 9000.0));
            auto &[lowest, highest] = result.try_emplace(column, point.y(), point.y()).first->second;
            lowest = std::min(lowest, point.y());
            highest = std::max(highest, point.y());
        }
    }
    return result;
}

} // namespace

TEST(TracePoints, AnActuatorGoingOffTakesTheTailAway)
{
    TracePoints trace;
    trace.add(TraceKind::Actuator, Arrival::Live, {5, 3});
    EXPECT_THAT(trace.all(), ElementsAre(QPointF(5, 0), QPointF(5, 3), QPointF(10000, 3)));
    trace.add(TraceKind::Actuator, Arrival::Live, {8, 0});
    EXPECT_THAT(trace.all(), ElementsAre(QPointF(5, 0), QPointF(5, 3), QPointF(8, 3), QPointF(8, 0)));
}

TEST(TracePoints, GoingOffDoesNotLookAtTheHeight)
{
    TracePoints trace;
    trace.add(TraceKind::Actuator, Arrival::Live, {5, 3});
    trace.add(TraceKind::Actuator, Arrival::Live, {8, 7});
    EXPECT_EQ(trace.last(), QPointF(8, 0));
}

TEST(TracePoints, AStoredActuatorHasNoTail)
{
    TracePoints trace;
    for (const QPointF &point : Points{{1, 0}, {2, 4}, {3, 4}, {6, 0}, {7, 4}}) {
        trace.add(TraceKind::Actuator, Arrival::Stored, point);
    }
    EXPECT_THAT(trace.all(), ElementsAre(QPointF(1, 0), QPointF(2, 0), QPointF(2, 4), QPointF(3, 4),
                                         QPointF(6, 4), QPointF(6, 0), QPointF(7, 0), QPointF(7, 4)));
}

TEST(TracePoints, AStepMovesToTheNext)
{
    TracePoints live;
    live.add(TraceKind::Step, Arrival::Live, {0, 1});
    live.add(TraceKind::Step, Arrival::Live, {4, 2});
    EXPECT_THAT(live.all(),
                ElementsAre(QPointF(0, 0), QPointF(0, 1), QPointF(4, 1), QPointF(4, 2), QPointF(10000, 2)));
    TracePoints stored;
    stored.add(TraceKind::Step, Arrival::Stored, {0, 1});
    stored.add(TraceKind::Step, Arrival::Stored, {4, 2});
    EXPECT_THAT(stored.all(), ElementsAre(QPointF(0, 0), QPointF(0, 1), QPointF(4, 1), QPointF(4, 2)));
}

TEST(TracePoints, AMixtureOfStoredAndLiveIsThatOfPointByPoint)
{
    const Points stored = {{1, 3}, {5, 0}, {9, 3}};
    const Points live = {{12, 0}, {14, 0}, {15, 3}, {10500, 0}, {10600, 3}, {10700, 0}};
    for (const TraceKind kind : {TraceKind::Measured, TraceKind::Actuator, TraceKind::Step}) {
        PointByPoint reference(kind);
        reference.replace(stored);
        TracePoints trace;
        for (const QPointF &point : stored) {
            trace.add(kind, Arrival::Stored, point);
        }
        for (const QPointF &point : live) {
            reference.add(point);
            trace.add(kind, Arrival::Live, point);
            EXPECT_EQ(trace.all(), reference.points());
        }
    }
}

TEST(TracePoints, AWindowHasOneNeighbourOnEitherSide)
{
    const TracePoints trace = measured({{0, 1}, {1, 2}, {2, 3}, {3, 4}, {4, 5}, {5, 6}});
    EXPECT_THAT(trace.seen(1.5, 3.5, 100),
                ElementsAre(QPointF(1, 2), QPointF(2, 3), QPointF(3, 4), QPointF(4, 5)));
    EXPECT_THAT(trace.seen(2.2, 2.8, 100), ElementsAre(QPointF(2, 3), QPointF(3, 4)));
    EXPECT_EQ(trace.seen(-10, 10, 1000).size(), 6);
}

TEST(TracePoints, NothingIsSeenOfNothing)
{
    EXPECT_THAT(TracePoints().seen(0, 60, 100), IsEmpty());
    EXPECT_EQ(TracePoints().last(), QPointF(0, 0));
}

TEST(TracePoints, NothingIsSeenInAWindowThatIsNone)
{
    constexpr double largest = std::numeric_limits<double>::max();
    constexpr double least = std::numeric_limits<double>::denorm_min();
    constexpr double none = std::numeric_limits<double>::quiet_NaN();
    constexpr double endless = std::numeric_limits<double>::infinity();
    const TracePoints trace = measured(wave(2 * TracePoints::few));
    for (const auto &[from, to] :
         {std::pair(5.0, 5.0), std::pair(6.0, 5.0), std::pair(-largest, largest), std::pair(0.0, least),
          std::pair(none, 5.0), std::pair(5.0, none), std::pair(-endless, 5.0), std::pair(5.0, endless)}) {
        EXPECT_THAT(trace.seen(from, to, 100), IsEmpty()) << from << ' ' << to;
    }
    EXPECT_THAT(trace.seen(0.0, largest, 100), SizeIs(testing::Gt(0)));
}

TEST(TracePoints, ACrowdedColumnKeepsItsExtremes)
{
    Points points{{0.0, 3}, {0.1, 9}};
    for (int index = 0; index < TracePoints::few; ++index) {
        points.append({0.2 + 1e-6 * index, 4});
    }
    points << QPointF(0.3, 1) << QPointF(0.4, 2) << QPointF(1.5, 5);
    EXPECT_THAT(measured(points).seen(0, 4, 4),
                ElementsAre(QPointF(0, 3), QPointF(0.3, 1), QPointF(0.1, 9), QPointF(1.5, 5)));
    points.last().setX(2.5);
    EXPECT_THAT(measured(points).seen(0, 4, 4), ElementsAre(QPointF(0, 3), QPointF(0.3, 1), QPointF(0.1, 9),
                                                            QPointF(0.4, 2), QPointF(2.5, 5)))
        << "the way to a far column begins where the line leaves this one";
}

TEST(TracePoints, EveryColumnKeepsItsExtremes)
{
    TracePoints steps;
    for (int index = 0; index < 10'000; ++index) {
        steps.add(TraceKind::Step, Arrival::Live,
                  {static_cast<double>(index), static_cast<double>(index * 7919 % 101)});
    }
    for (const TracePoints &trace : {measured(wave(20'000)), steps}) {
        for (const int columns : {1, 7, 100, 640, 1300}) {
            EXPECT_EQ(extremes(trace.seen(500, 9500, columns), columns), extremes(trace.all(), columns));
        }
    }
}

TEST(TracePoints, WhatIsBeyondTheWindowIsOneColumnOnEitherSide)
{
    // Many points on one side, on the other and on the first again: no order that a search could use.
    Points points;
    Points expected;
    for (const double x : {-20.0, 110.0, -20.0}) {
        points.append({x, 5});
        points.append(Points(TracePoints::few, {x + 1, 5}));
        points << QPointF(x + 2, 2) << QPointF(x + 3, 9) << QPointF(x + 4, 5);
        expected << QPointF(x, 5) << QPointF(x + 2, 2) << QPointF(x + 3, 9) << QPointF(x + 4, 5);
    }
    EXPECT_EQ(measured(points).seen(0, 100, 100), expected);
}

TEST(TracePoints, WhatIsBeyondTheWindowIsNextToNoColumn)
{
    Points points{{0.5, 5}};
    points.append(Points(TracePoints::few, {-1, 5}));
    points << QPointF(-2, 2) << QPointF(-3, 9) << QPointF(-1, 4);
    points << QPointF(0.5, 6) << QPointF(0.6, 7) << QPointF(0.7, 1) << QPointF(0.8, 6);
    EXPECT_THAT(measured(points).seen(0, 100, 100),
                ElementsAre(QPointF(0.5, 5), QPointF(-1, 5), QPointF(-2, 2), QPointF(-3, 9), QPointF(-1, 4),
                            QPointF(0.5, 6), QPointF(0.6, 7), QPointF(0.7, 1), QPointF(0.8, 6)))
        << "the ways out of the window and back into it show where they begin and end";
}

TEST(TracePoints, FewPointsAreSeenAsTheyAre)
{
    const Points points = wave(TracePoints::few);
    EXPECT_EQ(measured(points).seen(0, 1e6, 1), points);
}

TEST(TracePoints, WhatIsSeenIsBoundedByTheWidth)
{
    const TracePoints trace = measured(wave(100'000));
    EXPECT_LE(trace.seen(0, 50'000, 700).size(), 2 * 701 + 4);
    EXPECT_LE(trace.seen(1000, 1060, 700).size(), 123);
}

TEST(TracePoints, AFarNeighbourIsPulledCloserAlongTheLine)
{
    const TracePoints trace = measured({{0, 0}, {1, 1}, {10001, 10001}});
    EXPECT_THAT(trace.seen(0, 2, 100), ElementsAre(QPointF(0, 0), QPointF(1, 1), QPointF(4, 4)));
    const TracePoints early = measured({{-1e300, 7}, {1, 7}});
    EXPECT_THAT(early.seen(0, 2, 100), ElementsAre(QPointF(-2, 7), QPointF(1, 7)));
}

TEST(TracePoints, NeighboursAsFarApartAsNumbersGoStayNumbers)
{
    constexpr double largest = std::numeric_limits<double>::max();
    const TracePoints trace = measured({{-largest, largest}, {largest, -largest}});
    EXPECT_THAT(trace.seen(-1, 1, 100), ElementsAre(QPointF(-3, 0), QPointF(3, 0)));
    const TracePoints upright = measured({{-largest, -largest}, {0, largest}});
    EXPECT_THAT(upright.seen(-1, 1, 100), ElementsAre(QPointF(-3, largest), QPointF(0, largest)));
    const TracePoints back = measured({{-5, largest}, {-5.5, -largest}, {0, 0}});
    EXPECT_THAT(back.seen(-1, 1, 100),
                ElementsAre(QPointF(-3, largest), QPointF(-5.5, -largest), QPointF(0, 0)));
}

TEST(TracePoints, AFarNeighbourStaysWhereTheLineIsUpright)
{
    const TracePoints trace = measured({{-100, 1}, {-100, 5}, {10, 2}, {3, 3}});
    EXPECT_THAT(trace.seen(0, 20, 100),
                ElementsAre(QPointF(-100, 1), QPointF(-100, 5), QPointF(10, 2), QPointF(3, 3)));
    // A width that is nothing once it is halved.
    constexpr double least = std::numeric_limits<double>::denorm_min();
    constexpr double width = 1e-308;
    const TracePoints narrow = measured({{0, 1}, {least, 5}, {10, 2}, {3, 3}});
    EXPECT_EQ(narrow.seen(width + least, 2 * width + least, 1).constFirst(), QPointF(0, 1));
}

TEST(TracePoints, ALineMayGoBack)
{
    // It leaves the window, comes back, and has no order that a search could use.
    const TracePoints trace = measured({{0, 1}, {5, 2}, {3, 3}, {9, 4}, {2, 5}, {4, 6}});
    EXPECT_THAT(trace.seen(1.5, 4.5, 100), ElementsAre(QPointF(0, 1), QPointF(5, 2), QPointF(3, 3),
                                                       QPointF(9, 4), QPointF(2, 5), QPointF(4, 6)));
    TracePoints cleared = trace;
    cleared.clear();
    EXPECT_THAT(cleared.all(), IsEmpty());
}

TEST(TracePoints, OrderIsFoundAgainWhenTheTailIsGone)
{
    TracePoints trace;
    for (int second = 10'000; second < 60'000; second += 10) {
        trace.add(TraceKind::Step, Arrival::Live,
                  {static_cast<double>(second), static_cast<double>(second % 13)});
    }
    trace.add(TraceKind::Actuator, Arrival::Live, {60'000, 0}); // takes the last tail away
    EXPECT_LE(trace.seen(20'000, 20'060, 100'000).size(), 2 * 8 + 2);
}
