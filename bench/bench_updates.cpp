// The update pages on a real window: how long a burst of output keeps the window from answering, and how fast
// long tables open. Needs a display.

#include "brovik/shell/shell.h"
#include "screen.h"

#include <benchmark/benchmark.h>

#include <QQuickTextDocument>
#include <QTextDocument>
#include <QTimer>

#include <algorithm>
#include <thread>

namespace {

constexpr int consoleTab = 3;
constexpr int installedTab = 2;

QQuickWindow *window = nullptr;

QObject &part(const char *name)
{
    auto *found = window->findChild<QObject *>(QString::fromLatin1(name));
    if (found == nullptr) {
        qFatal("the update pages have no %s", name);
    }
    return *found;
}

/// Shows a tab, once it has slid to its place.
void openTab(int index)
{
    part("updates").setProperty("currentIndex", index);
    QElapsedTimer timer;
    timer.start();
    while (timer.elapsed() < 1000) {
        screen::awaitFrame(*window);
    }
}

/// The longest time in which the GUI thread handled no event of its own.
class Heartbeat
{
public:
    Heartbeat()
    {
        QObject::connect(&m_beat, &QTimer::timeout, &m_beat, [this] { take(); });
        m_beat.setTimerType(Qt::PreciseTimer);
        m_last.start();
        m_beat.start(1);
    }

    double longestMs() const { return m_longest; }

private:
    void take()
    {
        m_longest = std::max(m_longest, screen::milliseconds(m_last));
        m_last.start();
    }

    QTimer m_beat;
    QElapsedTimer m_last;
    double m_longest = 0;
};

QTextDocument &output()
{
    return *part("output").property("textDocument").value<QQuickTextDocument *>()->textDocument();
}

void print(int lines)
{
    Shell &shell = Shell::instance();
    const QString text =
        QStringLiteral("Hole:%1 http://archiv.example/debian bookworm/main arm64 paket-%1 [%1 kB]");
    for (int line = 0; line < lines; ++line) {
        const QString filled = text.arg(line);
        line % 10 == 0 ? shell.writeStderr(filled) : shell.writeStdout(filled);
    }
}

/// A burst of so many lines from another thread, on the console's tab.
void consoleBurst(benchmark::State &state)
{
    const int lines = static_cast<int>(state.range(0));
    openTab(consoleTab);
    for ([[maybe_unused]] const auto _ : state) {
        const double before = screen::residentMib();
        QElapsedTimer timer;
        timer.start();
        const Heartbeat heartbeat;
        std::jthread backend(print, lines);
        while (output().blockCount() < lines) {
            QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
        }
        screen::awaitFrame(*window);
        state.SetIterationTime(screen::milliseconds(timer) * 1e-3);
        state.counters["median_ms"] = screen::milliseconds(timer);
        state.counters["longest_ms"] = heartbeat.longestMs();
        state.counters["memory_mib"] = screen::residentMib() - before;
        QMetaObject::invokeMethod(&part("clear"), "clicked");
        screen::awaitFrame(*window);
        state.counters["growth_mib"] = screen::residentMib() - before;
    }
}

QList<QVariantMap> packages(int count)
{
    QList<QVariantMap> records;
    for (int index = 0; index < count; ++index) {
        const QString name = QStringLiteral("paket-%1").arg(index);
        records.append({{QStringLiteral("name"), name},
                        {QStringLiteral("version"), QStringLiteral("1.%1.0-1").arg(index)},
                        {QStringLiteral("arch"), QStringLiteral("arm64")},
                        {QStringLiteral("description"),
                         QStringLiteral("Teil der Bedienung, wie er auf jeder Maschine ist")},
                        {QStringLiteral("name2"), name}});
    }
    return records;
}

/// From the press on the tab of so many installed packages to the first frame of it.
void openInstalled(benchmark::State &state)
{
    Shell::instance().setInstalled(packages(static_cast<int>(state.range(0))));
    openTab(0);
    for ([[maybe_unused]] const auto _ : state) {
        QElapsedTimer timer;
        timer.start();
        part("updates").setProperty("currentIndex", installedTab);
        screen::awaitFrame(*window);
        state.SetIterationTime(screen::milliseconds(timer) * 1e-3);
        state.counters["median_ms"] = screen::milliseconds(timer);
        openTab(0);
    }
    Shell::instance().setInstalled({});
}

/// From the list of so many installed packages to the frame that shows it.
void fillInstalled(benchmark::State &state)
{
    const QList<QVariantMap> records = packages(static_cast<int>(state.range(0)));
    openTab(installedTab);
    for ([[maybe_unused]] const auto _ : state) {
        QElapsedTimer timer;
        timer.start();
        Shell::instance().setInstalled(records);
        screen::awaitFrame(*window);
        state.SetIterationTime(screen::milliseconds(timer) * 1e-3);
        state.counters["median_ms"] = screen::milliseconds(timer);
        Shell::instance().setInstalled({});
        screen::awaitFrame(*window);
    }
}

/// Timed by itself, once for each repetition.
#define UPDATES_BENCHMARK(function, name)                                                                    \
    BENCHMARK(function)->Name(name)->UseManualTime()->Unit(benchmark::kMillisecond)->Iterations(1)

UPDATES_BENCHMARK(consoleBurst, "updates_console_burst")->Arg(2000)->Arg(20000)->Arg(40000);
UPDATES_BENCHMARK(openInstalled, "updates_open_installed")->Arg(500);
UPDATES_BENCHMARK(fillInstalled, "updates_fill_installed")->Arg(500);

} // namespace

int main(int argc, char **argv)
{
    Shell::instance();
    return screen::runBenchmarks(argc, argv, QStringLiteral(KUBELOR_BENCH_BACKEND "/UpdatesWindow.qml"),
                                 window);
}
