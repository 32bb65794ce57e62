// Counting one edge of the conductivity sensor, as the GPIO thread does it: copy the callback, call the copy.

#include "brovik/sensor/sensor.h"

#include <benchmark/benchmark.h>

#include <QGuiApplication>
#include <QMutex>

namespace {

void countEdges(benchmark::State &state, const gpio_callback_func &callback)
{
    for ([[maybe_unused]] const auto _ : state) {
        const gpio_callback_func copy = callback;
        copy(5, false);
    }
    state.SetItemsProcessed(state.iterations());
}

void bareEdge(benchmark::State &state)
{
    QMutex mutex;
    qint64 ticks = 0;
    countEdges(state, [&mutex, &ticks](uint /*line*/, bool /*rising*/) {
        const QMutexLocker lock(&mutex);
        benchmark::DoNotOptimize(++ticks);
    });
}

void sensorEdge(benchmark::State &state)
{
    countEdges(state, Sensor::instance().edgeCounter());
}

} // namespace

int main(int argc, char **argv)
{
    Sensor::instance();
    const QGuiApplication application(argc, argv);
    benchmark::RegisterBenchmark("count_edge/bare", bareEdge);
    benchmark::RegisterBenchmark("count_edge/sensor", sensorEdge);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
