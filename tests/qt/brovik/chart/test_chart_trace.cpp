#include "brovik/chart/axis_range.h"
#include "brovik/chart/chart_trace.h"
#include "log_capture.h"
#include "point_by_point.h"
#include "qml_binding.h"
#include "signal_log.h"

#include <gmock/gmock.h>

#include <QApplication>
#include <QLineSeries>
#include <QMetaEnum>
#include <QQmlEngine>
#include <QQuickItem>
#include <QQuickView>
#include <QTest>
#include <QThread>

#include <cmath>
#include <limits>
#include <memory>

using testing::ElementsAre;
using testing::IsEmpty;

namespace {

using Points = ChartLine::Points;

/// A chart on a screen, with one line of one kind.
class Screen
{
public:
    explicit Screen(TraceKind kind)
        : m_reference(kind)
    {
        m_view.engine()->addImportPath(QStringLiteral(":/"));
        m_view.setInitialProperties({{QStringLiteral("line"), QVariant::fromValue(&line)},
                                     {QStringLiteral("kind"), static_cast<int>(kind)}});
        m_view.setSource(QUrl::fromLocalFile(QStringLiteral(KUBELOR_TEST_DIR "/TracedChart.qml")));
        m_view.show();
        EXPECT_TRUE(QTest::qWaitForWindowExposed(&m_view));
        EXPECT_NE(m_view.rootObject(), nullptr);
    }

    /// Writes the point as a backend does, and shows it to the reference.
    void add(const QPointF &point)
    {
        m_reference.add(point);
        onForeignThread([&] { line.addPoint(point); });
    }

    void replace(const Points &points)
    {
        m_reference.replace(points);
        onForeignThread([&] { line.setData(points); });
    }

    void look(double from, double to)
    {
        time().setRange(from, to);
        settle();
    }

    /// Handles all that is queued.
    static void settle()
    {
        for (int round = 0; round < 5; ++round) {
            QCoreApplication::processEvents();
        }
    }

    ChartTrace &trace() { return *m_view.rootObject()->property("trace").value<ChartTrace *>(); }
    QLineSeries &series() { return *m_view.rootObject()->property("drawn").value<QLineSeries *>(); }
    QValueAxis &time() { return *m_view.rootObject()->property("time").value<QValueAxis *>(); }
    Points shown() { return series().points(); }

    /// Share of the line's pixels that have no ink next to them on the other picture, be it the traced one or
    /// the one drawn point by point. That is more than antialiasing can do.
    double difference()
    {
        m_view.rootObject()->property("reference").value<QLineSeries *>()->replace(m_reference.points());
        settle();
        const QImage both = m_view.grabWindow().convertToFormat(QImage::Format_RGB32);
        const int width = both.width() / 2;
        m_drawn = both.copy(0, 0, width, both.height());
        m_expected = both.copy(width, 0, width, both.height());
        return std::max(strangers(m_drawn, m_expected), strangers(m_expected, m_drawn));
    }

    /// Number of the pixels that belong to the line, as it is traced and as it is drawn point by point.
    int inked() const { return inked(m_drawn); }
    int expectedInk() const { return inked(m_expected); }

    ChartLine line{QStringLiteral("test"), nullptr};

private:
    // Of the 128 that green differs from red in the line's colour.
    static constexpr int muchInk = 80;
    static constexpr int someInk = 24;

    static int ink(QRgb pixel) { return qGreen(pixel) - qRed(pixel); }

    template <typename Visit> static void forEachPixel(const QImage &image, const Visit &visit)
    {
        for (int y = 0; y < image.height(); ++y) {
            for (int x = 0; x < image.width(); ++x) {
                visit(x, y);
            }
        }
    }

    static int inked(const QImage &image)
    {
        int count = 0;
        forEachPixel(image, [&](int x, int y) { count += ink(image.pixel(x, y)) > muchInk ? 1 : 0; });
        return count;
    }

    static bool hasInkNear(const QImage &image, int x, int y)
    {
        for (int nextY = std::max(y - 1, 0); nextY <= std::min(y + 1, image.height() - 1); ++nextY) {
            for (int nextX = std::max(x - 1, 0); nextX <= std::min(x + 1, image.width() - 1); ++nextX) {
                if (ink(image.pixel(nextX, nextY)) > someInk) {
                    return true;
                }
            }
        }
        return false;
    }

    static double strangers(const QImage &image, const QImage &other)
    {
        int inked = 0;
        int alone = 0;
        forEachPixel(image, [&](int x, int y) {
            if (ink(image.pixel(x, y)) > muchInk) {
                ++inked;
                alone += hasInkNear(other, x, y) ? 0 : 1;
            }
        });
        return inked == 0 ? 0.0 : double(alone) / inked;
    }

    QQuickView m_view;
    PointByPoint m_reference;
    QImage m_drawn;
    QImage m_expected;
};

/// How often the chart gets a line to draw.
class Drawings
{
public:
    explicit Drawings(Screen &screen)
    {
        QObject::connect(&screen.series(), &QLineSeries::pointsReplaced, &m_context,
                         [this, &screen] { m_count += screen.shown().isEmpty() ? 0 : 1; });
    }

    int count() const { return m_count; }

private:
    int m_count = 0;
    QObject m_context;
};

/// A record of a kind, of so many points, half a second apart.
Points record(TraceKind kind, int count)
{
    Points points;
    for (int index = 0; index < count; ++index) {
        const double x = index * 0.5;
        if (kind == TraceKind::Measured) {
            points.append({x, 5 + 3 * std::sin(x * 0.02) + index * 7919 % 13 * 0.1});
        } else if (index % 20 == 7) {
            const double step = index / 20 % 13 + 1;
            points.append({x, kind == TraceKind::Step ? step : index / 20 % 2 == 0 ? 6.0 : 0.0});
        }
    }
    return points;
}

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

class Trace : public testing::Test
{
protected:
    Screen screen{TraceKind::Measured};
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
    const SignalLog others(screen.series(), {"pointAdded", "pointRemoved", "pointsRemoved"});
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
    EXPECT_THAT(others.names(), IsEmpty());
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

/// Charts are drawn by widgets' code, and without a display.
int main(int argc, char **argv)
{
    QQuickWindow::setGraphicsApi(QSGRendererInterface::Software);
    const QApplication application(argc, argv);
    testing::InitGoogleMock(&argc, argv);
    return RUN_ALL_TESTS();
}
