// The chart on a real window: what a point, a move of the view and a load cost the GUI thread, and the memory
// of a long recording. Needs a display.

#include "brovik/chart/axis_range.h"
#include "brovik/chart/chart.h"
#include "brovik/chart/trace_schedule.h"

#include <benchmark/benchmark.h>

#include <QApplication>
#include <QElapsedTimer>
#include <QQmlApplicationEngine>
#include <QQuickStyle>
#include <QQuickWindow>
#include <QStringList>
#include <QValueAxis>

#include <algorithm>
#include <cmath>
#include <ctime>
#include <fstream>
#include <string>
#include <thread>
#include <vector>

namespace {

constexpr double secondsPerPoint = 0.5;
constexpr qsizetype pointsOfADay = 172'800;
constexpr qsizetype pointsOfALoad = 36'000;

QQuickWindow *window = nullptr;

/// A part of the page by its name.
QObject &part(const char *name)
{
    auto *found = window->findChild<QObject *>(QString::fromLatin1(name));
    if (found == nullptr) {
        qFatal("the chart page has no %s", name);
    }
    return *found;
}

Chart &chart()
{
    return Chart::instance();
}

/// Steps of ten minutes, each at a height of its own that is reached within a minute, and the noise of a
/// sensor.
QPointF pointAt(qsizetype index)
{
    constexpr double stepSeconds = 600;
    constexpr double riseSeconds = 60;
    const double x = static_cast<double>(index) * secondsPerPoint;
    const auto heightOf = [](double step) { return 2.0 + std::fmod(step * 3.0, 7.0); };
    const double step = std::floor(x / stepSeconds);
    const double reached = std::min((x - step * stepSeconds) / riseSeconds, 1.0);
    const double noise = static_cast<double>(index * 7919 % 13) * 0.01;
    return {x, heightOf(step) * reached + heightOf(step - 1) * (1.0 - reached) + noise};
}

ChartLine::Points record(qsizetype count)
{
    ChartLine::Points points;
    points.reserve(count);
    for (qsizetype index = 0; index < count; ++index) {
        points.append(pointAt(index));
    }
    return points;
}

/// An output that goes on and off every minute of so many points.
ChartLine::Points switching(qsizetype count)
{
    ChartLine::Points points;
    const double end = static_cast<double>(count) * secondsPerPoint;
    for (double second = 10; second < end; second += 60) {
        points.append({second, 3});
        points.append({second + 30, 0});
    }
    return points;
}

double milliseconds(const QElapsedTimer &timer)
{
    return static_cast<double>(timer.nsecsElapsed()) * 1e-6;
}

/// What this thread has used of the processor: other programs do not count.
double busyMilliseconds()
{
    timespec used{};
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &used);
    return static_cast<double>(used.tv_sec) * 1e3 + static_cast<double>(used.tv_nsec) * 1e-6;
}

/// Times of single events, in milliseconds, of which the median counts.
class Samples
{
public:
    explicit Samples(benchmark::State &state)
        : m_state(state)
    {}

    ~Samples()
    {
        const auto middle = m_times.begin() + static_cast<std::ptrdiff_t>(m_times.size() / 2);
        std::nth_element(m_times.begin(), middle, m_times.end());
        m_state.counters["median_ms"] = *middle;
    }

    void take(double milliseconds)
    {
        m_times.push_back(milliseconds);
        m_state.SetIterationTime(milliseconds * 1e-3);
    }

private:
    benchmark::State &m_state;
    std::vector<double> m_times;
};

void handleAll()
{
    for (int round = 0; round < 5; ++round) {
        QCoreApplication::processEvents();
    }
}

/// Handles events until what has happened so far is on the screen.
void awaitFrame()
{
    bool swapped = false;
    const auto connection =
        QObject::connect(window, &QQuickWindow::frameSwapped, window, [&] { swapped = true; });
    window->update();
    while (!swapped) {
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    }
    QObject::disconnect(connection);
}

void fill(qsizetype count)
{
    chart().clear();
    chart().p()->setData(record(count));
    chart().lw()->setData(record(count));
    handleAll();
    awaitFrame();
}

void clearChart()
{
    chart().clear();
    handleAll();
    awaitFrame();
}

/// One point on p and one on lw, from another thread: until the series have them, without the frame.
void addPoint(benchmark::State &state, bool showAll)
{
    qsizetype index = state.range(0);
    fill(index);
    part("swShowAll").setProperty("checked", showAll);
    double frames = 0;
    Samples samples(state);
    for ([[maybe_unused]] const auto _ : state) {
        std::thread([&] {
            chart().p()->addPoint(pointAt(index));
            chart().lw()->addPoint(pointAt(index));
        }).join();
        ++index;
        const double before = busyMilliseconds();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::MetaCall); // the points
        QCoreApplication::sendPostedEvents(&TraceSchedule::instance());
        samples.take(busyMilliseconds() - before);
        QElapsedTimer timer;
        timer.start();
        awaitFrame();
        frames += milliseconds(timer);
    }
    state.counters["frame_ms"] = frames / static_cast<double>(state.iterations());
    clearChart();
    part("swShowAll").setProperty("checked", false);
    part("swAutoScroll").setProperty("checked", true);
}

void addPointFollowing(benchmark::State &state)
{
    addPoint(state, false);
}

void addPointShowingAll(benchmark::State &state)
{
    addPoint(state, true);
}

/// Moves the window of so many seconds over 100,000 points by `move`, until the frame.
template <typename Move> void moveView(benchmark::State &state, const Move &move)
{
    fill(100'000);
    auto &time = *part("chartView").property("axisTime").value<QValueAxis *>();
    double from = 1000;
    double to = from + static_cast<double>(state.range(0));
    Samples samples(state);
    for ([[maybe_unused]] const auto _ : state) {
        move(from, to);
        QElapsedTimer timer;
        timer.start();
        AxisRange().set(&time, from, to);
        awaitFrame();
        samples.take(milliseconds(timer));
    }
    clearChart();
}

void pan(benchmark::State &state)
{
    moveView(state, [](double &from, double &to) {
        const double step = (to - from) / 100;
        from += step;
        to += step;
    });
}

void zoom(benchmark::State &state)
{
    bool in = false;
    moveView(state, [&in](double &from, double &to) {
        in = !in;
        const double step = (to - from) / 100 * (in ? 1 : -1);
        from += step;
        to -= step;
    });
}

void load()
{
    for (ChartLine *line : chart().lines()) {
        const bool isMeasured = line == chart().p() || line == chart().lw();
        line->setData(isMeasured ? record(pointsOfALoad) : switching(pointsOfALoad));
    }
}

void loadChart(benchmark::State &state)
{
    Samples samples(state);
    for ([[maybe_unused]] const auto _ : state) {
        QElapsedTimer timer;
        timer.start();
        load();
        handleAll();
        awaitFrame();
        samples.take(milliseconds(timer));
        clearChart();
    }
}

double residentMib()
{
    std::ifstream status("/proc/self/status");
    for (std::string line; std::getline(status, line);) {
        if (line.starts_with("VmRSS:")) {
            return std::stod(line.substr(6)) / 1024;
        }
    }
    return 0;
}

/// Memory that 100 loads and clears leave behind, after some to warm up.
void loadsAndClears(benchmark::State &state)
{
    const auto loadAndClear = [] {
        load();
        handleAll();
        awaitFrame();
        clearChart();
    };
    for ([[maybe_unused]] const auto _ : state) {
        for (int round = 0; round < 10; ++round) {
            loadAndClear();
        }
        const double before = residentMib();
        for (int round = 0; round < 100; ++round) {
            loadAndClear();
        }
        state.counters["growth_mib"] = residentMib() - before;
    }
}

void recordADay()
{
    std::jthread backend([] {
        for (qsizetype index = 0; index < pointsOfADay; ++index) {
            chart().p()->addPoint(pointAt(index));
            chart().lw()->addPoint(pointAt(index));
        }
    });
    while (chart().lw()->data().size() < pointsOfADay) {
        QCoreApplication::processEvents();
    }
}

/// Memory of a day of recording, live.
void dayOfRecording(benchmark::State &state)
{
    for ([[maybe_unused]] const auto _ : state) {
        clearChart();
        const double before = residentMib();
        recordADay();
        handleAll();
        awaitFrame();
        state.counters["memory_mib"] = residentMib() - before;
        clearChart();
    }
}

void click(const char *button)
{
    QMetaObject::invokeMethod(&part(button), "click");
}

Chart::MetaDataList savedCharts(int count)
{
    Chart::MetaDataList list;
    for (int index = 0; index < count; ++index) {
        list.append({QStringLiteral("Fass %1 vom Dienstag").arg(index), QStringLiteral("success"),
                     QStringLiteral("Reinigung mit Lauge und Säure beendet"),
                     QStringLiteral("21.11.2026 16:30:00"), 60 * index});
    }
    return list;
}

/// So many saved charts: from the press on the button to the frame that shows their list.
void openList(benchmark::State &state)
{
    Samples samples(state);
    for ([[maybe_unused]] const auto _ : state) {
        chart().setMetaDataList(savedCharts(static_cast<int>(state.range(0))));
        handleAll();
        awaitFrame();
        QElapsedTimer timer;
        timer.start();
        click("btnBrowser");
        awaitFrame();
        samples.take(milliseconds(timer));
        click("back");
        chart().setMetaDataList({});
        awaitFrame();
    }
}

/// A list of so many saved charts that shows, from the signal of a change to the frame.
void changeList(benchmark::State &state)
{
    chart().setMetaDataList(savedCharts(static_cast<int>(state.range(0))));
    handleAll();
    click("btnBrowser");
    awaitFrame();
    Samples samples(state);
    for ([[maybe_unused]] const auto _ : state) {
        QElapsedTimer timer;
        timer.start();
        chart().emitMetaDataListChanged();
        awaitFrame();
        samples.take(milliseconds(timer));
    }
    click("back");
    chart().setMetaDataList({});
    awaitFrame();
}

/// The frames of a flick through so many saved charts, from the first to the last, as far as half the list is
/// high for each: faster than any finger. The GUI thread's time.
void scrollList(benchmark::State &state)
{
    constexpr double pixelsPerFrame = 600;
    chart().setMetaDataList(savedCharts(static_cast<int>(state.range(0))));
    handleAll();
    click("btnBrowser");
    awaitFrame();
    auto &list = part("list");
    double longest = 0;
    double frames = 0;
    qsizetype count = 0;
    Samples samples(state);
    for ([[maybe_unused]] const auto _ : state) {
        QMetaObject::invokeMethod(&list, "positionViewAtBeginning");
        awaitFrame();
        for (; !list.property("atYEnd").toBool(); ++count) {
            QElapsedTimer timer;
            timer.start();
            const double before = busyMilliseconds();
            list.setProperty("contentY", list.property("contentY").toDouble() + pixelsPerFrame);
            awaitFrame();
            const double busy = busyMilliseconds() - before;
            longest = std::max(longest, busy);
            samples.take(busy);
            frames += milliseconds(timer);
        }
    }
    state.counters["frame_ms"] = frames / static_cast<double>(count);
    state.counters["longest_ms"] = longest;
    click("back");
    chart().setMetaDataList({});
    awaitFrame();
}

/// Timed by itself, in milliseconds. The number of rounds is fixed, since most of their time is not counted.
#define CHART_BENCHMARK(function, name, rounds)                                                              \
    BENCHMARK(function)->Name(name)->UseManualTime()->Unit(benchmark::kMillisecond)->Iterations(rounds)

CHART_BENCHMARK(addPointFollowing, "chart_add_point/following", 50)->Arg(1000)->Arg(10000)->Arg(100000);
CHART_BENCHMARK(addPointShowingAll, "chart_add_point/all", 50)->Arg(1000)->Arg(10000)->Arg(100000);
CHART_BENCHMARK(pan, "chart_pan", 20)->Arg(60)->Arg(3600)->Arg(45000);
CHART_BENCHMARK(zoom, "chart_zoom", 20)->Arg(60)->Arg(3600)->Arg(45000);
CHART_BENCHMARK(loadChart, "chart_load", 5);
CHART_BENCHMARK(openList, "chart_list_open", 10)->Arg(10)->Arg(1000);
CHART_BENCHMARK(changeList, "chart_list_change", 10)->Arg(10)->Arg(1000);
CHART_BENCHMARK(scrollList, "chart_list_scroll", 1)->Arg(1000);
BENCHMARK(loadsAndClears)->Name("chart_100_loads")->Iterations(1)->Unit(benchmark::kMillisecond);
BENCHMARK(dayOfRecording)->Name("chart_day")->Iterations(1)->Unit(benchmark::kMillisecond);

} // namespace

int main(int argc, char **argv)
{
    chart();
    QApplication application(argc, argv);
    QQuickStyle::setStyle(QStringLiteral("Material"));
    chart().setActuatorNames(QStringList(12, QStringLiteral("Ventil")));
    chart().setStepNames(QStringList(13, QStringLiteral("Schritt")));
    benchmark::Initialize(&argc, argv);
    QQmlApplicationEngine engine;
    engine.addImportPath(QStringLiteral(":/"));
    engine.load(QUrl::fromLocalFile(QStringLiteral(KUBELOR_BENCH_BACKEND "/ChartWindow.qml")));
    window = qobject_cast<QQuickWindow *>(engine.rootObjects().value(0));
    if (window == nullptr) {
        return 1;
    }
    for (const char *group : {"optsValves", "optsSteps"}) {
        part(group).setProperty("showLine", true);
    }
    awaitFrame();
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
