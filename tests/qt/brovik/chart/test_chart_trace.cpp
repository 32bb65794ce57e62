#include "brovik/chart/axis_range.h"
#include "brovik/chart/chart_trace.h"
#include "log_capture.h"
#include "qml_binding.h"
#include "signal_log.h"
#include "traced_screen.h"

#include <gmock/gmock.h>

#include <QChart>
#include <QLineSeries>
#include <QQmlEngine>
#include <QThread>

#include <limits>
#include <memory>

using testing::ElementsAre;
using testing::IsEmpty;

namespace {

using Points = ChartLine::Points;
using Screen = TracedScreen;

/// How often the chart gets a line to draw.
class Drawings
{
public:
    explicit Drawings(Screen &screen)
    {
        QObject::connect(&screen.trace(), &ChartTrace::drawn, &m_context,
                         [this, &screen] { m_count += screen.shown().isEmpty() ? 0 : 1; });
    }

    int count() const { return m_count; }

private:
    int m_count = 0;
    QObject m_context;
};

class Trace : public testing::Test
{
protected:
    Screen screen{TraceKind::Measured};
};

} // namespace

TEST_F(Trace, HighestValueGrowsUntilTheDataIsReplaced)
{
    const SignalLog log(screen.trace(), {"maxYChanged"});
    EXPECT_EQ(screen.trace().maxY(), 0.5);
    screen.add({1, 0.4});
    Screen::settle();
    EXPECT_EQ(screen.trace().maxY(), 0.5);
    screen.add({2, 7});
    screen.add({3, 3});
    Screen::settle();
    EXPECT_EQ(screen.trace().maxY(), 7);
    EXPECT_EQ(log.emissions().size(), 1U);
    screen.replace({{0, 2}});
    Screen::settle();
    EXPECT_EQ(screen.trace().maxY(), 2);
    screen.replace({});
    Screen::settle();
    EXPECT_EQ(screen.trace().maxY(), 0.5);
}

TEST_F(Trace, AnotherKindTurnsThePointsIntoAnotherLine)
{
    screen.replace({{1, 2}, {3, 4}});
    Screen::settle();
    const QPointF corner(3, 2);
    EXPECT_FALSE(screen.shown().contains(corner));
    screen.trace().setKind(TraceKind::Step);
    Screen::settle();
    EXPECT_TRUE(screen.shown().contains(corner));
}

TEST_F(Trace, TakesAnotherLineInstead)
{
    screen.replace({{1, 2}, {3, 4}});
    Screen::settle();
    ChartLine other(QStringLiteral("other"), nullptr);
    const LogCapture noSeriesYet;
    other.addPoint({7, 1});
    const SignalLog log(screen.trace(), {"lineChanged"});
    screen.trace().setLine(&screen.line);
    EXPECT_THAT(log.names(), IsEmpty());
    other.registerQmlLine(&screen.series(), &screen.value());
    screen.trace().setLine(&other);
    screen.add({5, 6});
    Screen::settle();
    EXPECT_THAT(log.names(), ElementsAre("lineChanged"));
    EXPECT_THAT(screen.shown(), ElementsAre(QPointF(7, 1)));
    EXPECT_EQ(screen.trace().lastX(), 7);
    screen.trace().setLine(&screen.line);
}

TEST_F(Trace, WhatIsNoNumberIsNotDrawn)
{
    constexpr double none = std::numeric_limits<double>::quiet_NaN();
    constexpr double endless = std::numeric_limits<double>::infinity();
    screen.line.setData({{none, 1}, {1, 2}, {2, none}});
    Screen::settle();
    EXPECT_THAT(screen.shown(), ElementsAre(QPointF(1, 2)));
    const SignalLog log(screen.trace(), {"pointsDrawn"});
    screen.line.addPoint({3, -endless});
    screen.line.addPoint({endless, 3});
    Screen::settle();
    EXPECT_THAT(log.names(), IsEmpty());
    screen.line.addPoint({4, 3});
    Screen::settle();
    EXPECT_THAT(screen.shown(), ElementsAre(QPointF(1, 2), QPointF(4, 3)));
    EXPECT_EQ(screen.trace().maxY(), 3);
}

TEST_F(Trace, LastXFollowsTheLine)
{
    EXPECT_EQ(screen.trace().lastX(), 0);
    screen.add({4, 1});
    Screen::settle();
    EXPECT_EQ(screen.trace().lastX(), 4);
    screen.replace({});
    Screen::settle();
    EXPECT_EQ(screen.trace().lastX(), 0);
}

TEST_F(Trace, SaysHowFarItHasDrawn)
{
    const SignalLog log(screen.trace(), {"pointsDrawn"});
    const auto drawnTo = [&log] {
        std::vector<double> all;
        for (const SignalLog::Emission &emission : log.emissions()) {
            all.push_back(emission.values[0].toDouble());
        }
        return all;
    };
    for (const QPointF &point : Points{{4, 1}, {5, 1}, {3, 1}}) {
        screen.add(point);
        Screen::settle();
    }
    screen.replace({{0, 1}, {8, 1}});
    Screen::settle();
    screen.replace({});
    Screen::settle();
    EXPECT_THAT(drawnTo(), ElementsAre(4, 5, 3, 8, 1));
    for (double x : {10, 11, 12}) {
        screen.add({x, 1});
    }
    Screen::settle();
    EXPECT_EQ(drawnTo().back(), 12);
    screen.trace().redraw();
    screen.look(5, 6);
    EXPECT_EQ(drawnTo().size(), 6U) << "points of one turn are drawn together, and a moved view is no news";
}

TEST_F(Trace, OnlyMeasuredLinesMoveTheView)
{
    Screen other(TraceKind::Actuator);
    const SignalLog log(other.trace(), {"pointsDrawn", "maxYChanged"});
    other.replace({{0, 1}, {8, 0}});
    other.add({9, 20});
    Screen::settle();
    EXPECT_THAT(log.names(), IsEmpty());
}

TEST_F(Trace, TheLastPointOfAllLinesMovesTheViewLast)
{
    Screen other(TraceKind::Measured);
    QList<double> moves;
    QObject view;
    for (ChartTrace *trace : {&screen.trace(), &other.trace()}) {
        QObject::connect(trace, &ChartTrace::pointsDrawn, &view, [&](double x) { moves.append(x); });
    }
    screen.add({1, 1});
    other.add({1.5, 1});
    screen.add({2, 1});
    Screen::settle();
    EXPECT_THAT(moves, ElementsAre(1.5, 2));
}

TEST_F(Trace, APointThatComesWhileTheViewMovesIsNotLost)
{
    QObject view;
    QObject::connect(&screen.trace(), &ChartTrace::pointsDrawn, &view, [this](double x) {
        if (x < 5) {
            screen.line.addPoint({x + 1, 2});
        }
    });
    screen.line.addPoint({1, 2});
    Screen::settle();
    EXPECT_EQ(screen.trace().lastX(), 5);
    EXPECT_EQ(screen.shown().size(), 5);
}

TEST_F(Trace, DrawsTheLineOncePerTurn)
{
    screen.replace(record(TraceKind::Measured, 100));
    Screen::settle();
    const SignalLog others(screen.series(),
                           {"pointAdded", "pointRemoved", "pointsRemoved", "pointsReplaced"});
    const Drawings drawings(screen);
    for (int index = 100; index < 200; ++index) {
        screen.add({index * 0.5, 4});
    }
    Screen::settle();
    EXPECT_EQ(drawings.count(), 1);
    QObject page;
    QObject::connect(&screen.trace(), &ChartTrace::pointsDrawn, &page, [this](double x) {
        screen.time().setMin(x - 30);
        screen.time().setMax(x);
    });
    screen.add({100, 4});
    Screen::settle();
    EXPECT_EQ(drawings.count(), 2) << "the view moves first";
    screen.time().setRange(10, 90);
    screen.time().setRange(20, 90);
    Screen::settle();
    EXPECT_EQ(drawings.count(), 3);
    screen.time().setRange(20, 90);
    screen.trace().redraw();
    Screen::settle();
    EXPECT_EQ(drawings.count(), 3) << "nothing has changed";
    EXPECT_THAT(others.names(), IsEmpty()) << "the chart would stroke the line";
}

TEST_F(Trace, FollowsTheColourOfTheSeries)
{
    screen.replace(record(TraceKind::Measured, 100));
    screen.difference();
    EXPECT_GT(screen.inked(), 100);
    screen.series().setColor(Qt::red);
    EXPECT_EQ(screen.difference(), 1.0) << "the reference is still green";
    EXPECT_EQ(screen.inked(), 0);
}

TEST_F(Trace, GoesWithItsSeriesAndComesBackWithAnother)
{
    screen.replace(record(TraceKind::Measured, 100));
    screen.difference();
    EXPECT_GT(screen.inked(), 100);
    QChart &chart = *screen.series().chart();
    const QPen pen = screen.series().pen();
    delete &screen.series();
    EXPECT_EQ(screen.difference(), 1.0) << "the reference is still there";
    EXPECT_EQ(screen.inked(), 0);
    auto *const another = new QLineSeries(&chart);
    another->setPen(pen);
    chart.addSeries(another);
    another->attachAxis(&screen.time());
    another->attachAxis(&screen.value());
    screen.line.registerQmlLine(another, &screen.value());
    EXPECT_EQ(screen.difference(), 0.0);
    EXPECT_GT(screen.inked(), 100);
}

TEST_F(Trace, IsPaintedInItsPlotAlone)
{
    screen.replace({{-100, -5}, {30, 20}, {100, -5}});
    screen.value().setRange(1, 4);
    EXPECT_EQ(screen.difference(), 0.0);
    EXPECT_GT(screen.inked(), 100);
}

TEST_F(Trace, AMovedViewNeverDrawsTheOldPoints)
{
    screen.replace(record(TraceKind::Measured, 400));
    Screen::settle();
    QList<qsizetype> shown;
    QObject chart;
    QObject::connect(&screen.time(), &QValueAxis::rangeChanged, &chart,
                     [&] { shown.append(screen.shown().size()); });
    const Drawings drawings(screen);
    AxisRange().set(&screen.time(), 20, 60);
    EXPECT_EQ(screen.shown().first().x(), 19.5) << "drawn at once";
    QObject::connect(&screen.trace(), &ChartTrace::pointsDrawn, &chart,
                     [this](double x) { AxisRange().set(&screen.time(), x - 30, x); });
    screen.add({200, 4});
    Screen::settle();
    EXPECT_EQ(screen.shown().last(), QPointF(200, 4));
    EXPECT_THAT(shown, ElementsAre(0, 0));
    EXPECT_EQ(drawings.count(), 2);
}

TEST_F(Trace, TheSeriesStaysSmall)
{
    screen.replace(record(TraceKind::Measured, 100'000));
    screen.look(1000, 1060);
    EXPECT_LT(screen.shown().size(), 1000);
    screen.look(0, 50'000);
    EXPECT_LT(screen.shown().size(), 20'000);
}

TEST_F(Trace, AHiddenSeriesIsEmptyAndComesBack)
{
    screen.replace(record(TraceKind::Measured, 100));
    Screen::settle();
    screen.series().setVisible(false);
    Screen::settle();
    EXPECT_THAT(screen.shown(), IsEmpty());
    screen.add({55, 3});
    Screen::settle();
    EXPECT_THAT(screen.shown(), IsEmpty());
    screen.series().setVisible(true);
    Screen::settle();
    EXPECT_EQ(screen.difference(), 0.0);
    EXPECT_GT(screen.inked(), 100);
}

TEST_F(Trace, DrawsAtOnceWhenAsked)
{
    onForeignThread([this] { screen.line.addPoint({5, 3}); });
    EXPECT_THAT(screen.shown(), IsEmpty());
    screen.trace().redraw();
    EXPECT_THAT(screen.shown(), ElementsAre(QPointF(5, 3)));
    Screen::settle();
    EXPECT_THAT(screen.shown(), ElementsAre(QPointF(5, 3)));
}

TEST(LateTrace, HasNothingToDrawWithoutALine)
{
    ChartTrace trace;
    const SignalLog log(trace);
    trace.redraw();
    EXPECT_THAT(log.names(), IsEmpty());
}

TEST(LateTrace, FindsTheLineAsAWholeList)
{
    ChartLine line(QStringLiteral("test"), nullptr);
    const LogCapture log;
    line.addPoint({1, 3});
    line.addPoint({5, 0});
    QLineSeries series;
    QValueAxis axis;
    ChartTrace trace;
    trace.setKind(TraceKind::Actuator);
    trace.setLine(&line);
    line.registerQmlLine(&series, &axis);
    QCoreApplication::processEvents();
    EXPECT_THAT(series.points(), ElementsAre(QPointF(1, 0), QPointF(1, 3), QPointF(5, 3), QPointF(5, 0)));
}

TEST(LateTrace, OutlivesItsSeries)
{
    ChartLine line(QStringLiteral("test"), nullptr);
    const LogCapture log;
    ChartTrace trace;
    trace.setLine(&line);
    QValueAxis axis;
    {
        QLineSeries series;
        line.registerQmlLine(&series, &axis);
        line.addPoint({1, 3});
    }
    QCoreApplication::processEvents();
    line.addPoint({2, 3});
    QCoreApplication::processEvents();
    EXPECT_EQ(trace.lastX(), 2);
    QLineSeries another;
    line.registerQmlLine(&another, &axis);
    QCoreApplication::processEvents();
    EXPECT_THAT(another.points(), ElementsAre(QPointF(1, 3), QPointF(2, 3)));
}

TEST(LateTrace, MayGoWhileThereIsNews)
{
    ChartLine line(QStringLiteral("test"), nullptr);
    const LogCapture log;
    auto trace = std::make_unique<ChartTrace>();
    trace->setLine(&line);
    onForeignThread([&] { line.addPoint({1, 3}); });
    trace->redraw();
    line.addPoint({2, 3});
    trace.reset();
    QCoreApplication::processEvents();
    EXPECT_EQ(line.data().size(), 2);
}
