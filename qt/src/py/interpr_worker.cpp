#include "src/py/interpr_worker.h"

#include "shared/log.h"
#include "shared/notification_brake.h"
#include "src/py/backend_activity.h"
#include "src/py/bridge.h"
#include "src/py/brovik_module.h"
#include "src/py/daemon_threads.h"
#include "src/py/end_signals.h"
#include "src/py/exceptions.h"
#include "src/py/interpreter_thread.h"
#include "src/py/python_stacks.h"
#include "src/py/signature_check.h"
#include "src/py/slow_calls.h"
#include "src/py/types.h"
#include "src/py/uncaught_errors.h"

#include <pybind11/embed.h>

#include <QThread>

#include <datetime.h>

namespace py = pybind11;

namespace {

/// The one worker of the process; only the worker's destructor looks at it.
PyWorker *_pyWorker = nullptr;

// An array, not a pointer: exec() takes the indentation off a literal.
constexpr char streamCatcher[] = R"(
    import sys
    import _std_redirects

    class _StdxxxCatcher:
        def __init__(self, stream):
            self._my_stream = stream

        def write(self, s):
            self._my_stream(s)

        def flush(self):
            pass

    sys.stdout = _StdxxxCatcher(_std_redirects.stdout_redirect)
    sys.stderr = _StdxxxCatcher(_std_redirects.stderr_redirect)
)";

/// Calls tell() with the names of the threads that Python waits for at its end, until the answer is false. On
/// a thread that Python does not wait for, and that has begun when the function returns: one that begins
/// while Python ends would find its state gone.
constexpr char threadTeller[] = R"(
    import sys
    import time

    def tell_awaited(tell):
        threading = sys.modules.get("threading")
        if threading is None:
            return

        def awaited():
            main = threading.main_thread()
            return [thread.name for thread in threading.enumerate() if not thread.daemon and thread is not main]

        def run():
            while tell(awaited()):
                time.sleep(0.2)

        if awaited():
            threading.Thread(target=run, name="Kubelor", daemon=True).start()
)";

// How a missing function's line shows a value.

QString printable(const QJSValue &value)
{
    return value.toString();
}

QVariant printable(const QVariant &value)
{
    return value;
}

const char *printable(bool value)
{
    return value ? "true" : "false";
}

/// What is queued when the interpreter is told to stop is dropped, even if the event loop has already taken
/// it.
bool isStopping()
{
    return QThread::currentThread()->isInterruptionRequested();
}

/// The exit function that is registered last runs first, and the other way round.
void registerAtExit(const char *activity)
{
    const auto become = [activity] { BackendActivity::become(activity); };
    py::module_::import("atexit").attr("register")(py::cpp_function(become));
}

constexpr const char *endOfPython = "das Ende von Python";
constexpr const char *exitFunctions = "die atexit-Funktionen des Backends";

/// Lets the activity name what the end of Python waits for.
void tellWhatTheEndAwaits()
{
    registerAtExit(exitFunctions);
    py::dict scope;
    py::exec(threadTeller, scope);
    scope["tell_awaited"](py::cpp_function(
        [](const QStringList &names) { return BackendActivity::setAwaitedThreads(endOfPython, names); }));
}

template <typename Enum, typename... Printed>
void logMissing(const char *function, const char *slot, Enum action, const Printed &...printed)
{
    const QByteArray text = QByteArray("Python-Funktion ") + function + "() nicht gefunden - ";
    QDebug stream = criticalStream();
    stream << text.constData() << slot << "(" << action;
    ((stream << "," << printed), ...);
    stream << ").";
}

/// Before a press gets the GIL, each busy thread of the backend has a turn with it. Python's own turns of 5
/// ms would be felt; a backend that has chosen others keeps them.
void shortenTurns()
{
    constexpr double ownSecs = 0.005;
    constexpr double shortSecs = 0.0005;
    const auto sys = py::module_::import("sys");
    if (qFuzzyCompare(sys.attr("getswitchinterval")().cast<double>(), ownSecs)) {
        sys.attr("setswitchinterval")(shortSecs);
    }
}

} // namespace

PyWorker::PyWorker(Bridge *bridge)
    : m_bridge(bridge)
{
    connectFamilies();
    _pyWorker = this;
}

// NOLINTNEXTLINE(bugprone-exception-escape): without an end of the interpreter the process cannot go on
PyWorker::~PyWorker()
{
    if (_pyWorker == this) {
        _pyWorker = nullptr;
    } else {
        logCritical("[~PyWorker()] _pyWorker != this");
    }
    // Without a saved thread state this interpreter is another's.
    if (Py_IsInitialized() == 0 || m_threadState == nullptr) {
        return;
    }
    {
        const py::gil_scoped_acquire gil;
        m_module = py::object();
        for (EntryFunction *function : m_entryFunctions) {
            function->handle = py::object();
        }
    }
    PyEval_RestoreThread(m_threadState);
    SlowCalls::stop();
    const BackendActivity activity(endOfPython);
    EndSignals::claimForGood();
    guarded(tellWhatTheEndAwaits);
    py::finalize_interpreter();
}

/// A QJSValue may be read only while the GUI thread stands still, so what carries one blocks.
template <typename Sender, typename Enum>
void PyWorker::connectBlocking(Sender &sender, void (Sender::*signal)(Enum, const QJSValue &),
                               void (PyWorker::*slot)(Enum, const QJSValue &))
{
    const auto callAndWait = [this, slot](Enum what, const QJSValue &value) {
        const GuiThreadWaits waits(GuiThreadWaits::CallOfBackend);
        QMetaObject::invokeMethod(
            this, [&] { (this->*slot)(what, value); }, Qt::BlockingQueuedConnection);
    };
    connect(&sender, signal, this, callAndWait, Qt::DirectConnection);
}

void PyWorker::connectFamilies()
{
    connect(&Actuator::instance(), &Actuator::toggle, this, &PyWorker::pyActuatorToggle);
    connectBlocking(Auto::instance(), &Auto::toPy, &PyWorker::pyAutoValueQJs);
    connectBlocking(Chart::instance(), &Chart::toPy, &PyWorker::pyChartActionQJs);
    connectBlocking(Gui::instance(), &Gui::toPy, &PyWorker::pyGuiValueQJs);
    connect(&Gui::instance(), &Gui::_toPyQVar, this, &PyWorker::pyGuiValueQVar);
    connect(&Sensor::instance(), &Sensor::stateChangeRequested, this, &PyWorker::pyDInStateChange);
    connectBlocking(Settings::instance(), &Settings::toPy, &PyWorker::pySettingsQJs);
    connectBlocking(Shell::instance(), &Shell::toPy, &PyWorker::pyShellValueQJs);
    connectBlocking(Simulator::instance(), &Simulator::toPy, &PyWorker::pySimulatorValueQJs);
    connectBlocking(Wifi::instance(), &Wifi::toPy, &PyWorker::pyWifiValue);
}

template <typename Enum, typename... Values>
bool PyWorker::call(const EntryFunction &function, Enum action, const Values &...values)
{
    Q_ASSERT(thread() == QThread::currentThread());
    if (isStopping()) {
        return true;
    }
    if (!function.handle) {
        return false;
    }
    const py::gil_scoped_acquire gil;
    const BackendRuns runs;
    const int number = static_cast<int>(action);
    const BackendActivity activity(function.name, function.actions.value(number, QString::number(number)));
    const WatchedCall watched;
    callEntryFunction(function.handle, action, values...);
    EndSignals::claimBack();
    return true;
}

template <typename Enum, typename... Values>
void PyWorker::callOrLog(const EntryFunction &function, const char *slot, Enum action,
                         const Values &...values)
{
    if (!call(function, action, values...)) {
        logMissing(function.name, slot, action, printable(values)...);
    }
}

void PyWorker::pyActuatorToggle(ActuatorEnums::ActuatorEnum output)
{
    callOrLog(m_actuator, __func__, output);
}

void PyWorker::pyAutoValueQJs(Auto::AutoEnum action, const QJSValue &value)
{
    callOrLog(m_auto, __func__, action, value);
}

void PyWorker::pyChartActionQJs(Chart::ChartEnum action, const QJSValue &value)
{
    // A chart's value may be a whole record: the log goes without it.
    if (!call(m_chart, action, value)) {
        logMissing(m_chart.name, __func__, action);
    }
}

void PyWorker::pyDInStateChange(SensorEnums::SensorEnum input, bool state)
{
    callOrLog(m_sensor, __func__, input, state);
}

void PyWorker::pyGuiValueQJs(Gui::GuiValueEnum what, const QJSValue &value)
{
    callOrLog(m_gui, __func__, what, value);
}

void PyWorker::pyGuiValueQVar(Gui::GuiValueEnum what, const QVariant &value)
{
    callOrLog(m_gui, __func__, what, value);
}

void PyWorker::pyShellValueQJs(Shell::ShellAction action, const QJSValue &value)
{
    if (action != Shell::ToggleTesting) {
        callOrLog(m_shell, __func__, action, value);
    } else if (!call(m_shell, action, value)) {
        // The value is a password.
        logMissing(m_shell.name, __func__, action);
    }
}

void PyWorker::pySimulatorValueQJs(SimulatorEnum what, const QJSValue &value)
{
    callOrLog(m_simulator, __func__, what, value);
}

void PyWorker::pySettingsQJs(Settings::SettingsEnum key, const QJSValue &value)
{
    callOrLog(m_settings, __func__, key, value);
}

void PyWorker::pyWifiValue(Wifi::WifiAction action, const QJSValue &value)
{
    if (!call(m_wifi, action, value)) {
        // The network's password, which follows its name, is not for the log.
        const QJSValue logged = action == Wifi::Connect ? value.property(0) : value;
        logMissing(m_wifi.name, __func__, action, printable(logged));
    }
}

void PyWorker::startInterpreter()
{
    becomeInterpreterThread();
    const BackendActivity activity("den Start von Python");
    QList<QByteArray> kept;
    std::vector<const char *> arguments;
    for (const QString &argument : m_bridge->pythonArguments()) {
        kept.append(argument.toUtf8());
        arguments.push_back(kept.constLast().isNull() ? "" : kept.constLast().constData());
    }
    registerBuiltInModules();
    parkDaemonThreadsAtEnd();
    // Not the library's own configuration: that one is isolated from the locale and would read file names as
    // ASCII.
    PyConfig config;
    PyConfig_InitPythonConfig(&config);
    config.parse_argv = 0;
    config.install_signal_handlers = 1;
    py::initialize_interpreter(&config, static_cast<int>(arguments.size()), arguments.data(), true);
    PyDateTime_IMPORT;
    // The first one is called after all that the backend registers.
    guarded([] { py::module_::import("atexit").attr("register")(py::cpp_function(keepThreadStates)); });
    guarded([] { registerAtExit(endOfPython); });
    PythonStacks::arm();
    EndSignals::claim();
}

void PyWorker::extendSysPath()
{
    auto path = py::module_::import("sys").attr("path").cast<py::list>();
    for (const char *directory : m_sysPathBack) {
        path.append(directory);
    }
    for (const char *directory : m_sysPathFront) {
        path.insert(0, directory);
    }
}

bool PyWorker::bringUpBackend()
{
    const bool prepared = guarded([this] { extendSysPath(); }) && guarded([] { py::exec(streamCatcher); });
    // Makes the enums of the operator's actions known to Python, also to a backend that never imports the
    // module.
    const bool known = prepared && guarded([] { py::module_::import("brovik"); });
    if (known && !m_bridge->stubMode()) {
        guarded(showUncaughtErrors); // the backend may do without
    }
    const bool imported = known && guarded([this] { importBackend(); });
    if (!imported || m_bridge->stubMode()) {
        return imported;
    }
    guarded(SlowCalls::start);
    return guarded([this] { callInit(); });
}

void PyWorker::importBackend()
{
    const BackendActivity activity("den Import des Backends");
    m_module = py::module_::import(m_moduleName.c_str());
}

void PyWorker::callInit()
{
    const BackendActivity activity("init()");
    const WatchedCall watched;
    m_module.attr(backendInit)(Bridge::debug());
}

void PyWorker::findEntryFunctions()
{
    for (EntryFunction *function : m_entryFunctions) {
        guarded([&] { function->handle = entryFunction(m_module, function->name); });
    }
#define NAME_ACTIONS(family, Enum, ...) guarded([this] { m_##family.actions = enumeratorNames<Enum>(); });
    ENTRY_FUNCTIONS(NAME_ACTIONS)
#undef NAME_ACTIONS
}

/// What is wrong stays in place: the call fails as it would without the check.
void PyWorker::checkEntryFunctions() const
{
    QStringList refusals;
    for (const EntryFunction *function : m_entryFunctions) {
        if (function->handle) {
            refusals += refusalOf(function->handle, QLatin1String(function->name), function->arguments);
        }
    }
    reportRefusals(refusals);
}

bool PyWorker::initInterpreter()
{
    Q_ASSERT(thread() == QThread::currentThread());
    Gui &gui = Gui::instance();
    if (Py_IsInitialized() != 0) {
        gui.showMessage(QStringLiteral("Python Interpreter"),
                        QStringLiteral("Interpreter wurde bereits initialisiert"), QStringLiteral("warning"));
        return false;
    }
    if (m_bridge->stubMode()) {
        qputenv("BROVIK_MAKE_PY_STUBS", "1");
    }
    startInterpreter();
    const bool up = bringUpBackend();
    EndSignals::claimBack();
    if (up && !m_bridge->stubMode()) {
        guarded(shortenTurns);
        findEntryFunctions();
        guarded([this] { checkEntryFunctions(); });
    }
    if (!up) {
        m_module = py::object();
    }
    m_threadState = PyEval_SaveThread();
    if (up && m_bridge->stubMode()) {
        return true;
    }
    gui.setControlsEnabled(up);
    if (up) {
        logDebug("Interpreter mit Modul '%s' initialisiert", m_moduleName.c_str());
    }
    return up;
}
