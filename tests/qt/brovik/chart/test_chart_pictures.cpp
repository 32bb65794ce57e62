#include "qml_binding.h"
#include "traced_screen.h"

#include <gmock/gmock.h>

#include <QMetaEnum>
#include <QThread>

#include <limits>
#include <memory>

// What a trace draws looks as if the line had been drawn point by point.

namespace {

using Points = ChartLine::Points;
using Screen = TracedScreen;

struct Window
{
    double from;
    double to;
};

constexpr Window windows[] = {{0, 60},     {100, 160},   {123.4, 124.1}, {0, 1100},
                              {940, 1100}, {2000, 2060}, {0, 12000}};

void expectSamePictures(Screen &screen)
{
    int inked = 0;
    for (const Window &window : windows) {
        screen.look(window.from, window.to);
        EXPECT_EQ(screen.difference(), 0.0) << window.from << " to " << window.to;
        EXPECT_NEAR(screen.inked(), screen.expectedInk(), 0.05 * screen.expectedInk())
            << window.from << " to " << window.to;
        inked += screen.inked();
    }
    EXPECT_GT(inked, 1000) << "a picture without a line proves nothing";
}

class Picture : public testing::TestWithParam<TraceKind>
{
protected:
    Screen screen{GetParam()};
    const Points points = record(GetParam(), 2000);
};

} // namespace

TEST_P(Picture, OfALiveRecord)
{
    for (const QPointF &point : points) {
        screen.add(point);
        if (point.x() < 100) {
            Screen::settle(); // one by one, and later many at once
        }
    }
    expectSamePictures(screen);
}

TEST_P(Picture, OfALoadedRecord)
{
    screen.replace(points);
    expectSamePictures(screen);
}

TEST_P(Picture, OfALoadedRecordThatGoesOn)
{
    const qsizetype half = points.size() / 2;
    screen.replace(points.first(half));
    Screen::settle();
    for (const QPointF &point : points.sliced(half)) {
        screen.add(point);
    }
    expectSamePictures(screen);
}

TEST_P(Picture, OfDataBehindPoints)
{
    // All of it waits in one queue, and the line is already further than the first event.
    const qsizetype third = points.size() / 3;
    for (const QPointF &point : points.first(third)) {
        screen.add(point);
    }
    screen.replace(points.first(2 * third));
    for (const QPointF &point : points.sliced(2 * third)) {
        screen.add(point);
    }
    expectSamePictures(screen);
}

TEST_P(Picture, OfOtherDataThanBefore)
{
    screen.replace(points);
    Screen::settle();
    screen.replace(points.first(points.size() / 4));
    expectSamePictures(screen);
}

TEST_P(Picture, OfACrowdedRecord)
{
    // Many lines over each other leave no half-covered pixels at the edges, a few lines do.
    screen.replace(record(GetParam(), 20'000));
    for (const Window &window : {Window{0, 10'000}, {2000, 6000}, {0, 50'000}}) {
        screen.look(window.from, window.to);
        EXPECT_LT(screen.difference(), 0.001) << window.from << " to " << window.to;
        EXPECT_NEAR(screen.inked(), screen.expectedInk(), 0.3 * screen.expectedInk());
        EXPECT_GT(screen.inked(), 1000);
    }
}

TEST_P(Picture, OfLevelsOfAllLengths)
{
    Points levels;
    for (int length = 1; length < 30; ++length) {
        for (int point = 0; point < 2 * length; ++point) {
            levels.append({static_cast<double>(levels.size()) * 0.5, point < length ? 1.0 : 4.0});
        }
    }
    screen.replace(levels);
    for (const Window &window : {Window{0, 60}, {0, 440}, {0, 2000}, {300, 305}}) {
        screen.look(window.from, window.to);
        EXPECT_EQ(screen.difference(), 0.0) << window.from << " to " << window.to;
        EXPECT_NEAR(screen.inked(), screen.expectedInk(), 0.05 * screen.expectedInk());
    }
}

TEST_P(Picture, OfTimesThatGoBackAndBelowZero)
{
    for (const QPointF &point : Points{{10, 3}, {-5, 0}, {30, 4}, {20, 0}, {20, 2}, {-1, 5}, {50, 0}}) {
        screen.add(point);
    }
    screen.look(-10, 60);
    EXPECT_EQ(screen.difference(), 0.0);
    screen.look(15, 25);
    EXPECT_EQ(screen.difference(), 0.0);
    EXPECT_GT(screen.inked(), 100);
}

TEST_P(Picture, OfNumbersThatAreNone)
{
    constexpr double nan = std::numeric_limits<double>::quiet_NaN();
    constexpr double infinity = std::numeric_limits<double>::infinity();
    const Points good = {{10, 3}, {20, 0}, {30, 4}};
    for (const QPointF &point : Points{{nan, 1}, {1, infinity}, {-infinity, nan}}) {
        onForeignThread([&] { screen.line.addPoint(point); });
    }
    for (const QPointF &point : good) {
        screen.add(point);
        onForeignThread([&] { screen.line.addPoint({infinity, nan}); });
    }
    EXPECT_EQ(screen.line.data().size(), 9) << "the record is complete";
    screen.look(0, 60);
    EXPECT_EQ(screen.difference(), 0.0);
    EXPECT_GT(screen.inked(), 100);
}

TEST_P(Picture, OfHugeNumbersComesToAnEnd)
{
    for (const QPointF &point :
         Points{{-1e300, 1}, {10, 2}, {20, -1e300}, {30, 1e300}, {1e300, 1}, {40, 1e-300}}) {
        screen.add(point);
    }
    for (const Window &window : windows) {
        screen.look(window.from, window.to);
        screen.difference();
    }
    screen.replace(points);
    expectSamePictures(screen);
}

TEST_P(Picture, OfABurstFromAThread)
{
    const Points burst = record(GetParam(), 10'000);
    const std::unique_ptr<QThread> backend(QThread::create([&] {
        for (const QPointF &point : burst) {
            screen.line.addPoint(point);
        }
    }));
    backend->start();
    while (!backend->isFinished()) {
        QCoreApplication::processEvents();
    }
    Screen::settle();
    PointByPoint reference(GetParam());
    for (const QPointF &point : burst) {
        reference.add(point);
    }
    EXPECT_EQ(screen.trace().lastX(), reference.points().last().x());
    screen.look(4000, 4030);
    const Points shown = screen.shown();
    for (const QPointF &point : reference.points()) {
        EXPECT_TRUE(point.x() < 4000 || point.x() > 4030 || shown.contains(point));
    }
}

INSTANTIATE_TEST_SUITE_P(All, Picture,
                         testing::Values(TraceKind::Measured, TraceKind::Actuator, TraceKind::Step),
                         [](const auto &row) {
                             return QMetaEnum::fromType<TraceKind>().valueToKey(static_cast<int>(row.param));
                         });
