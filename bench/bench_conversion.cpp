// What it costs to turn the value of a screen into a Python object, per element.

#include "src/py/converter.h"

#include <benchmark/benchmark.h>
#include <pybind11/embed.h>

#include <QCoreApplication>
#include <QJSEngine>

namespace py = pybind11;

namespace {

constexpr int listLength = 1000;
constexpr int mapLength = 100;

QJSValue evaluated(QJSEngine &engine, const char *script)
{
    return engine.evaluate(QString::fromLatin1(script));
}

void convert(benchmark::State &state, const QJSValue &value, int elements)
{
    for (auto _ : state) {
        benchmark::DoNotOptimize(castQt2Py(value));
    }
    state.SetItemsProcessed(state.iterations() * elements);
}

void list(benchmark::State &state)
{
    QJSEngine engine;
    convert(state, evaluated(engine, "Array.from({length: 1000}, (_, i) => i + 0.5)"), listLength);
}

void map(benchmark::State &state)
{
    QJSEngine engine;
    convert(state,
            evaluated(
                engine,
                "(() => { const map = {}; for (let i = 0; i < 100; ++i) map['key' + i] = i; return map })()"),
            mapLength);
}

/// The same list built of C++ numbers.
void bareList(benchmark::State &state)
{
    for (auto _ : state) {
        py::list result;
        for (int index = 0; index < listLength; ++index) {
            result.append(py::float_(index + 0.5));
        }
        benchmark::DoNotOptimize(result);
    }
    state.SetItemsProcessed(state.iterations() * listLength);
}

/// The same map built of C++ values.
void bareMap(benchmark::State &state)
{
    for (auto _ : state) {
        py::dict result;
        for (int index = 0; index < mapLength; ++index) {
            result[py::str("key" + std::to_string(index))] = py::float_(static_cast<double>(index));
        }
        benchmark::DoNotOptimize(result);
    }
    state.SetItemsProcessed(state.iterations() * mapLength);
}

BENCHMARK(bareList)->Name("convert_list/bare");
BENCHMARK(list)->Name("convert_list/script");
BENCHMARK(bareMap)->Name("convert_map/bare");
BENCHMARK(map)->Name("convert_map/script");

} // namespace

// NOLINTNEXTLINE(bugprone-exception-escape): a benchmark without an interpreter may end like that
int main(int argc, char **argv)
{
    const QCoreApplication application(argc, argv);
    benchmark::Initialize(&argc, argv);
    const py::scoped_interpreter interpreter;
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
