// The network page on a real window: how fast the list of what a scan has found is there. Needs a display.

#include "brovik/wifi/wifi.h"
#include "screen.h"

#include <benchmark/benchmark.h>

#include <QQuickItem>

#include <thread>

namespace {

QQuickWindow *window = nullptr;

QVariantMap networks(int count)
{
    QVariantMap results;
    for (int index = 0; index < count; ++index) {
        const QVariantMap network{{QStringLiteral("quality"), index % 101},
                                  {QStringLiteral("is5GHz"), index % 2 == 0}};
        results.insert(QStringLiteral("Netz %1").arg(index), network);
    }
    return results;
}

/// Lets a backend's thread end a scan, and waits until the page shows what it has found.
void show(const QVariantMap &results)
{
    std::thread([&] { Wifi::instance().takeScanResults(results); }).join();
    const auto &list = *window->findChild<QQuickItem *>(QStringLiteral("networks"));
    while (list.childItems().size() != results.size()) {
        QCoreApplication::processEvents();
    }
    screen::awaitFrame(*window);
}

/// From the end of a scan to the frame that shows so many networks.
void listNetworks(benchmark::State &state)
{
    const QVariantMap results = networks(static_cast<int>(state.range(0)));
    for ([[maybe_unused]] const auto _ : state) {
        QElapsedTimer timer;
        timer.start();
        show(results);
        state.counters["median_ms"] = screen::milliseconds(timer);
        state.SetIterationTime(screen::milliseconds(timer) * 1e-3);
        show({});
    }
}

BENCHMARK(listNetworks)
    ->Name("network_list")
    ->UseManualTime()
    ->Unit(benchmark::kMillisecond)
    ->Iterations(1)
    ->Arg(20)
    ->Arg(200);

} // namespace

int main(int argc, char **argv)
{
    Wifi::instance();
    return screen::runBenchmarks(argc, argv, QStringLiteral(KUBELOR_BENCH_BACKEND "/NetworkWindow.qml"),
                                 window);
}
