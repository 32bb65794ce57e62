// A press of the operator: from QML into a Python function and back, against the least that such a road
// needs: from C++, and from QML.

#include "brovik/auto/auto.h"
#include "pinning.h"
#include "src/py/bridge.h"

#include <benchmark/benchmark.h>
#include <pybind11/embed.h>

#include <QGuiApplication>
#include <QQmlComponent>
#include <QQmlEngine>

#include <memory>

namespace py = pybind11;

namespace {

constexpr int guiCpu = 0;
constexpr int sameCpu = 0;
constexpr int otherCpu = 1;
constexpr int pressesPerCall = 1000;

/// What the backend of the benchmark tells from the interpreter thread.
struct Registered
{
    QThread *thread = nullptr;
    pthread_t handle = {};
    PyObject *function = nullptr; // never released: the interpreter is gone before
};

Registered registered;

/// The least road: a blocking hop to the interpreter thread, the GIL, one call.
class BareWorker : public QObject
{
public:
    void call()
    {
        const py::gil_scoped_acquire gil;
        PyObject *arguments = PyTuple_Pack(2, Py_None, Py_None);
        Py_XDECREF(PyObject_CallObject(registered.function, arguments));
        Py_DECREF(arguments);
    }

    void callWith(int what, const QJSValue &value)
    {
        const py::gil_scoped_acquire gil;
        const auto function = py::reinterpret_borrow<py::function>(registered.function);
        function(what, value.isNull() ? py::object(py::none()) : py::object(py::str("a value")));
    }
};

class BareSender : public QObject
{
    Q_OBJECT

Q_SIGNALS:
    void press();
    void toPy(int /*what*/, const QJSValue & /*value*/);
};

/// An object whose signals wait for a worker on the interpreter's thread.
struct BareBackend
{
    BareBackend() { worker->moveToThread(registered.thread); }
    ~BareBackend() { worker->deleteLater(); }
    Q_DISABLE_COPY_MOVE(BareBackend)

    template <typename Signal, typename Slot> void connect(Signal signal, Slot slot)
    {
        QObject::connect(&sender, signal, worker, slot, Qt::BlockingQueuedConnection);
    }

    BareWorker *const worker = new BareWorker; // deleted on its thread
    BareSender sender;
};

void barePress(benchmark::State &state)
{
    pinThread(registered.handle, static_cast<int>(state.range(0)));
    BareBackend bare;
    bare.connect(&BareSender::press, &BareWorker::call);
    for (auto _ : state) {
        for (int press = 0; press < pressesPerCall; ++press) {
            Q_EMIT bare.sender.press();
        }
    }
    state.SetItemsProcessed(state.iterations() * pressesPerCall);
}

/// Presses from a script: `press` is a call, `imported` what it needs.
void pressFromQml(benchmark::State &state, const QByteArray &imported, const QByteArray &press)
{
    QQmlEngine engine;
    engine.addImportPath(QStringLiteral(":/"));
    QQmlComponent component(&engine);
    component.setData("import QtQml\n"
                      "import " +
                          imported +
                          "\n"
                          "QtObject {\n"
                          "    function press(count) {\n"
                          "        for (let i = 0; i < count; ++i)\n"
                          "            " +
                          press +
                          "\n"
                          "    }\n"
                          "}\n",
                      {});
    const std::unique_ptr<QObject> presser(component.create());
    for (auto _ : state) {
        QMetaObject::invokeMethod(presser.get(), "press", Q_ARG(QVariant, pressesPerCall));
    }
    state.SetItemsProcessed(state.iterations() * pressesPerCall);
}

/// A signal that blocks, pybind11, and nothing of this program.
void bareQmlPress(benchmark::State &state)
{
    pinThread(registered.handle, static_cast<int>(state.range(0)));
    BareBackend bare;
    bare.connect(&BareSender::toPy, &BareWorker::callWith);
    const int type = qmlRegisterSingletonInstance("bench", 1, 0, "Bare", &bare.sender);
    pressFromQml(state, "bench 1.0", "Bare.toPy(0, null)");
    QQmlPrivate::qmlunregister(QQmlPrivate::TypeRegistration, static_cast<quintptr>(type));
}

void qmlPress(benchmark::State &state)
{
    pinThread(registered.handle, static_cast<int>(state.range(0)));
    pressFromQml(state, "brovik.auto", "Auto_.toPy(Auto_.ToggleAuto, null)");
}

BENCHMARK(barePress)->Name("round_trip/bare")->ArgName("cpu")->Arg(sameCpu)->Arg(otherCpu)->UseRealTime();
BENCHMARK(bareQmlPress)
    ->Name("round_trip/bare_qml")
    ->ArgName("cpu")
    ->Arg(sameCpu)
    ->Arg(otherCpu)
    ->UseRealTime();
BENCHMARK(qmlPress)->Name("round_trip/qml")->ArgName("cpu")->Arg(sameCpu)->Arg(otherCpu)->UseRealTime();

} // namespace

PYBIND11_EMBEDDED_MODULE(_bench, module)
{
    module.def("register", [](const py::function &function) {
        registered = {QThread::currentThread(), pthread_self(), function.inc_ref().ptr()};
    });
}

int main(int argc, char **argv)
{
    const QGuiApplication application(argc, argv);
    benchmark::Initialize(&argc, argv);
    Bridge bridge({QStringLiteral("bench")}, false, QStringLiteral(KUBELOR_BENCH_BACKEND));
    // The first press waits until the backend is up.
    Q_EMIT Auto::instance().toPy(Auto::ToggleAuto, QJSValue());
    pinThread(pthread_self(), guiCpu);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}

#include "bench_round_trip.moc"
