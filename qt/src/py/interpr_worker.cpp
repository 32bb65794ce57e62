#include "interpr_worker.h"

#include "backend_activity.h"
#include "converter.h"
#include "end_signals.h"
#include "exceptions.h"
#include "log.h"
#include "notification_brake.h"
#include "python_stacks.h"
#include "types.h"

#include <pybind11/embed.h>

#include <QUuid>

#include <datetime.h>

namespace py = pybind11;

namespace {

/// The one worker of the process; only the worker's destructor looks at it.
PyWorker *_pyWorker = nullptr;

constexpr const char *backendModule = "controller";

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

/// An argument of a Python call. Enums and what pybind11 knows by itself; all else by the conversion's rules.
template <typename Value> py::object pythonArgumentOf(const Value &value)
{
    if constexpr (std::is_enum_v<Value>) {
        return py::cast(value, py::return_value_policy::copy);
    } else {
        return castQt2Py(value);
    }
}

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

} // namespace

const std::vector<PyWorker::EntryFunction> PyWorker::entryFunctions = {
    {"actuator_toggle_from_cpp", &PyWorker::actuatorFn},  {"auto_value_from_cpp", &PyWorker::autoFn},
    {"chart_action_from_cpp", &PyWorker::chartFn},        {"gui_value_from_cpp", &PyWorker::guiFn},
    {"sensor_value_from_cpp", &PyWorker::sensorFn},       {"shell_action_from_cpp", &PyWorker::shellFn},
    {"simulator_value_from_cpp", &PyWorker::simulatorFn}, {"settings_from_cpp", &PyWorker::settingsFn},
    {"wifi_action_from_cpp", &PyWorker::wifiFn},
};

PyWorker::PyWorker(Bridge *bridge)
    : _bridge(bridge)
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
    if (Py_IsInitialized() == 0 || threadState == nullptr) {
        return;
    }
    {
        const py::gil_scoped_acquire gil;
        module = py::object();
        for (const EntryFunction &function : entryFunctions) {
            this->*function.handle = py::object();
        }
    }
    PyEval_RestoreThread(threadState);
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
bool PyWorker::call(const py::object &function, const char *name, Enum action, const Values &...values)
{
    if (isStopping()) {
        return true;
    }
    if (!function) {
        return false;
    }
    const py::gil_scoped_acquire gil;
    const BackendRuns runs;
    const BackendActivity activity(name, action);
    const py::tuple tuple = py::make_tuple(pythonArgumentOf(action), pythonArgumentOf(values)...);
    const auto result = py::reinterpret_steal<py::object>(PyObject_CallObject(function.ptr(), tuple.ptr()));
    if (!result) {
        throw py::error_already_set();
    }
    EndSignals::claimBack();
    return true;
}

template <typename Enum, typename... Values>
void PyWorker::callOrLog(const py::object &function, const char *name, const char *slot, Enum action,
                         const Values &...values)
{
    if (!call(function, name, action, values...)) {
        logMissing(name, slot, action, printable(values)...);
    }
}

void PyWorker::pyActuatorToggle(ActuatorEnums::ActuatorEnum output)
{
    callOrLog(actuatorFn, "actuator_toggle_from_cpp", "pyActuatorToggle", output);
}

void PyWorker::pyAutoValueQJs(Auto::AutoEnum action, const QJSValue &value)
{
    callOrLog(autoFn, "auto_value_from_cpp", "pyAutoValueQJs", action, value);
}

void PyWorker::pyChartActionQJs(Chart::ChartEnum action, const QJSValue &value)
{
    // A chart's value may be a whole record: the log goes without it.
    const char *function = "chart_action_from_cpp";
    if (!call(chartFn, function, action, value)) {
        logMissing(function, "pyChartActionQJs", action);
    }
}

void PyWorker::pyDInStateChange(SensorEnums::SensorEnum input, bool state)
{
    callOrLog(sensorFn, "sensor_value_from_cpp", "pyDInStateChange", input, state);
}

void PyWorker::pyGuiValueQJs(Gui::GuiValueEnum what, const QJSValue &value)
{
    callOrLog(guiFn, "gui_value_from_cpp", "pyGuiValueQJs", what, value);
}

void PyWorker::pyGuiValueQVar(Gui::GuiValueEnum what, const QVariant &value)
{
    callOrLog(guiFn, "gui_value_from_cpp", "pyGuiValueQVar", what, value);
}

void PyWorker::pyShellValueQJs(Shell::ShellAction action, const QJSValue &value)
{
    const char *function = "shell_action_from_cpp";
    if (action != Shell::ToggleTesting) {
        callOrLog(shellFn, function, "pyShellValueQJs", action, value);
    } else if (!call(shellFn, function, action, value)) {
        // The value is a password.
        logMissing(function, "pyShellValueQJs", action);
    }
}

void PyWorker::pySimulatorValueQJs(SimulatorEnum what, const QJSValue &value)
{
    callOrLog(simulatorFn, "simulator_value_from_cpp", "pySimulatorValueQJs", what, value);
}

void PyWorker::pySettingsQJs(Settings::SettingsEnum key, const QJSValue &value)
{
    callOrLog(settingsFn, "settings_from_cpp", "pySettingsQJs", key, value);
}

void PyWorker::pyWifiValue(Wifi::WifiAction action, const QJSValue &value)
{
    const char *function = "wifi_action_from_cpp";
    if (!call(wifiFn, function, action, value)) {
        // The network's password, which follows its name, is not for the log.
        const QJSValue logged = action == Wifi::Connect ? value.property(0) : value;
        logMissing(function, "pyWifiValue", action, printable(logged));
    }
}

void PyWorker::startInterpreter()
{
    const BackendActivity activity("den Start von Python");
    QList<QByteArray> kept;
    std::vector<const char *> arguments;
    for (const QString &argument : _bridge->pythonArguments()) {
        kept.append(argument.toUtf8());
        arguments.push_back(kept.constLast().isNull() ? "" : kept.constLast().constData());
    }
    // Not the library's own configuration: that one is isolated from the locale and would read file names as
    // ASCII.
    PyConfig config;
    PyConfig_InitPythonConfig(&config);
    config.parse_argv = 0;
    config.install_signal_handlers = 1;
    py::initialize_interpreter(&config, static_cast<int>(arguments.size()), arguments.data(), true);
    PyDateTime_IMPORT;
    guarded([] { registerAtExit(endOfPython); });
    PythonStacks::arm();
    EndSignals::claim();
}

void PyWorker::extendSysPath()
{
    auto path = py::module_::import("sys").attr("path").cast<py::list>();
    for (const char *directory : sysPathBack) {
        path.append(directory);
    }
    for (const char *directory : sysPathFront) {
        path.insert(0, directory);
    }
}

bool PyWorker::bringUpBackend()
{
    const bool prepared = guarded([this] { extendSysPath(); }) && guarded([] { py::exec(streamCatcher); });
    // Makes the enums of the presses known to Python, also to a backend that never imports the module.
    const bool known = prepared && guarded([] { py::module_::import("brovik"); });
    const bool imported = known && guarded([this] { importBackend(); });
    if (!imported || _bridge->stubMode()) {
        return imported;
    }
    return guarded([this] { callInit(); });
}

void PyWorker::importBackend()
{
    const BackendActivity activity("den Import des Backends");
    module = py::module_::import(moduleName.c_str());
}

void PyWorker::callInit()
{
    const BackendActivity activity("init()");
    module.attr("init")(Bridge::debug());
}

void PyWorker::findEntryFunctions()
{
    for (const EntryFunction &function : entryFunctions) {
        guarded([&] { this->*function.handle = py::function(module.attr(function.name)); });
    }
}

bool PyWorker::initInterpreter()
{
    Gui &gui = Gui::instance();
    if (Py_IsInitialized() != 0) {
        gui.showMessage(QStringLiteral("Python Interpreter"),
                        QStringLiteral("Interpreter wurde bereits initialisiert"), QStringLiteral("warning"));
        return false;
    }
    if (_bridge->stubMode()) {
        qputenv("BROVIK_MAKE_PY_STUBS", "1");
    }
    startInterpreter();
    const bool up = bringUpBackend();
    EndSignals::claimBack();
    if (up && !_bridge->stubMode()) {
        findEntryFunctions();
    }
    if (!up) {
        module = py::object();
    }
    threadState = PyEval_SaveThread();
    if (up && _bridge->stubMode()) {
        return true;
    }
    gui.setControlsEnabled(up);
    if (up) {
        logDebug("Interpreter mit Modul '%s' initialisiert", moduleName.c_str());
    }
    return up;
}

Bridge::Bridge(QStringList pythonArgs, bool stubs, const QString &backendDir)
    : makeStubs(stubs)
    , pyArgs(std::move(pythonArgs))
    , m_backendDir(backendDir.toUtf8())
{
    startPython();
}

Bridge::~Bridge()
{
    if (!stopPython()) {
        logWarning("Interpreter wurde im Bridge-Destruktor nicht erfolgreich gestoppt");
    }
}

bool Bridge::startPython()
{
    if (!pyWorker.isNull()) {
        return false;
    }
    pyWorker = new PyWorker(this); // deleted on its thread, when that ends
    infoStream() << "BROVIK_PY_DIR:" << m_backendDir.constData();
    pyWorker->addSysPathFront(m_backendDir.constData());
    pyWorker->setModuleName(backendModule);
    pyWorker->moveToThread(&thread);
    connect(&thread, &QThread::started, pyWorker, &PyWorker::initInterpreter);
    connect(&thread, &QThread::finished, pyWorker, &QObject::deleteLater);
    thread.start();
    return true;
}

bool Bridge::stopPython()
{
    const GuiThreadWaits waits;
    for (const auto &hook : preStopHooks) {
        hook();
    }
    const bool running = !pyWorker.isNull();
    if (running) {
        thread.requestInterruption();
        thread.quit();
        thread.wait();
        pyWorker.clear();
    }
    for (const auto &hook : postStopHooks) {
        hook();
    }
    return running;
}

QString Bridge::createUuid() const
{
    return QUuid::createUuid().toString();
}
