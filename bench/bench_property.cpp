// A Python write of a shared property, against a plain property of an empty class; with a binding, against a
// signal of a class of its own.

#include "brovik/auto/auto.h"
#include "src/py/brovik_module.h"

#include <benchmark/benchmark.h>
#include <pybind11/embed.h>

#include <QElapsedTimer>
#include <QGuiApplication>
#include <QQmlComponent>
#include <QQmlEngine>

#include <atomic>
#include <memory>
#include <thread>

namespace py = pybind11;

namespace {

constexpr int writesPerCall = 10000;

class Plain
{
public:
    int progress() const { return m_progress; }
    void setProgress(int value) { m_progress = value; }

private:
    int m_progress = 0;
};

/// The least that a binding can follow from another thread.
class Notifying : public QObject
{
    Q_OBJECT
    Q_PROPERTY(int progress READ progress NOTIFY progressChanged)

public:
    int progress() const { return m_progress; }
    void setProgress(int value)
    {
        if (m_progress.exchange(value) != value) {
            Q_EMIT progressChanged();
        }
    }

Q_SIGNALS:
    void progressChanged();

private:
    std::atomic<int> m_progress = 0;
};

Notifying &notifying()
{
    static Notifying object;
    return object;
}

/// Runs loops of writes, written in Python like the backend's.
class Writer
{
public:
    Writer()
    {
        py::exec(R"(
            def write_unchanged(target, count):
                for _ in range(count):
                    target.progress = 7

            def write_changed(target, count):
                for value in range(count):
                    target.progress = value
        )",
                 m_scope);
    }

    void run(const char *loop, const py::object &target, int count) const { m_scope[loop](target, count); }

private:
    py::dict m_scope{py::globals()};
};

py::object sharedTarget()
{
    return py::module_::import("brovik").attr("auto").attr("Auto");
}

py::object notifyingTarget()
{
    return py::module_::import("_bench").attr("notifying");
}

py::object plainTarget()
{
    return py::module_::import("_bench").attr("Plain")();
}

void write(benchmark::State &state, const char *loop, const py::object &target)
{
    const Writer writer;
    for (auto _ : state) {
        writer.run(loop, target, writesPerCall);
    }
    state.SetItemsProcessed(state.iterations() * writesPerCall);
}

void plainUnchanged(benchmark::State &state)
{
    write(state, "write_unchanged", plainTarget());
}

void sharedUnchanged(benchmark::State &state)
{
    write(state, "write_unchanged", sharedTarget());
}

void plainChanged(benchmark::State &state)
{
    write(state, "write_changed", plainTarget());
}

void sharedChanged(benchmark::State &state)
{
    write(state, "write_changed", sharedTarget());
}

/// One binding on the GUI thread while another thread writes. Counts the time until the binding has seen the
/// last value, and of that the part after the last write.
void writeBound(benchmark::State &state, const QByteArray &imported, const QByteArray &source,
                const py::object &target)
{
    QQmlEngine engine;
    engine.addImportPath(QStringLiteral(":/"));
    QQmlComponent component(&engine);
    component.setData("import QtQml\nimport " + imported + "\nQtObject { property int seen: " + source +
                          ".progress }\n",
                      {});
    const std::unique_ptr<QObject> bound(component.create());
    const Writer writer;
    qint64 delayNs = 0;
    for (auto _ : state) {
        QElapsedTimer sinceLastWrite;
        std::atomic<bool> written = false;
        const py::gil_scoped_release release;
        std::thread backend([&] {
            const py::gil_scoped_acquire gil;
            writer.run("write_changed", target, writesPerCall);
            sinceLastWrite.start();
            written = true;
        });
        while (!written || bound->property("seen").toInt() != writesPerCall - 1) {
            QCoreApplication::processEvents();
        }
        delayNs += sinceLastWrite.nsecsElapsed();
        backend.join();
    }
    state.SetItemsProcessed(state.iterations() * writesPerCall);
    state.counters["delay_us"] =
        static_cast<double>(delayNs) / 1000.0 / static_cast<double>(state.iterations());
}

void notifyingBound(benchmark::State &state)
{
    writeBound(state, "bench 1.0", "Notifying", notifyingTarget());
}

void sharedBound(benchmark::State &state)
{
    writeBound(state, "brovik.auto", "Auto_", sharedTarget());
}

BENCHMARK(plainUnchanged)->Name("write_unchanged/bare");
BENCHMARK(sharedUnchanged)->Name("write_unchanged/shared");
BENCHMARK(plainChanged)->Name("write_changed/bare");
BENCHMARK(sharedChanged)->Name("write_changed/shared");
BENCHMARK(notifyingBound)->Name("write_bound/bare")->MeasureProcessCPUTime()->UseRealTime();
BENCHMARK(sharedBound)->Name("write_bound/shared")->MeasureProcessCPUTime()->UseRealTime();

} // namespace

PYBIND11_EMBEDDED_MODULE(_bench, module)
{
    py::class_<Plain>(module, "Plain")
        .def(py::init<>())
        .def_property("progress", &Plain::progress, &Plain::setProgress);
    py::class_<Notifying, std::unique_ptr<Notifying, py::nodelete>>(module, "Notifying")
        .def_property("progress", &Notifying::progress, &Notifying::setProgress);
    module.attr("notifying") = py::cast(&notifying(), py::return_value_policy::reference);
}

// NOLINTNEXTLINE(bugprone-exception-escape): a benchmark without an interpreter may end like that
int main(int argc, char **argv)
{
    const QGuiApplication application(argc, argv);
    benchmark::Initialize(&argc, argv);
    registerBuiltInModules();
    qmlRegisterSingletonInstance("bench", 1, 0, "Notifying", &notifying());
    const py::scoped_interpreter interpreter;
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}

#include "bench_property.moc"
