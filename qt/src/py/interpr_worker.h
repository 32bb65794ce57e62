#pragma once

#include "actuator.h"
#include "auto.h"
#include "backend_control.h"
#include "chart.h"
#include "gui.h"
#include "sensor.h"
#include "settings.h"
#include "shell.h"
#include "simulator.h"
#include "wifi.h"

#include <pybind11/pybind11.h>

#include <QPointer>
#include <QStringList>
#include <QThread>
#include <QVariantMap>

#include <functional>
#include <string>
#include <vector>

class Bridge;

/// What the slot of the simulator's actions calls their enum.
using SimulatorEnum = Simulator::SimEnum;

/// Holds the interpreter and carries every action of the operator into the backend.
///
/// Lives on the interpreter thread, which is Python's main thread. All slots run there, one after the other
/// in the order of posting; each takes the GIL for its call. Exceptions of an entry function leave the slot
/// and end the process: the backend catches everything itself.
class PyWorker : public QObject
{
    Q_OBJECT

public:
    explicit PyWorker(Bridge *bridge);
    // NOLINTNEXTLINE(bugprone-exception-escape): without an end of the interpreter the process cannot go on
    ~PyWorker() override;

    // Before the thread starts.

    /// A directory for the front of `sys.path`; kept by pointer.
    void addSysPathFront(const char *directory) { sysPathFront.push_back(directory); }
    /// A directory for the end of `sys.path`; kept by pointer.
    void addSysPathBack(const char *directory) { sysPathBack.push_back(directory); }
    void setModuleName(std::string name) { moduleName = std::move(name); }

Q_SIGNALS:
    void exception(const QVariantMap &error);

public Q_SLOTS:
    void pyActuatorToggle(ActuatorEnums::ActuatorEnum output);
    void pyAutoValueQJs(Auto::AutoEnum action, const QJSValue &value);
    void pyChartActionQJs(Chart::ChartEnum action, const QJSValue &value);
    void pyDInStateChange(SensorEnums::SensorEnum input, bool state);
    void pyGuiValueQJs(Gui::GuiValueEnum what, const QJSValue &value);
    void pyGuiValueQVar(Gui::GuiValueEnum what, const QVariant &value);
    void pyShellValueQJs(Shell::ShellAction action, const QJSValue &value);
    void pySimulatorValueQJs(SimulatorEnum what, const QJSValue &value);
    void pySettingsQJs(Settings::SettingsEnum key, const QJSValue &value);
    void pyWifiValue(Wifi::WifiAction action, const QJSValue &value);
    /// Brings up Python and the backend. True if the backend is up, or if stub mode reached its end.
    bool initInterpreter();

private:
    struct EntryFunction
    {
        const char *name;
        pybind11::object PyWorker::*handle;
    };
    static const std::vector<EntryFunction> entryFunctions;

    void connectFamilies();
    template <typename Sender, typename Enum>
    void connectBlocking(Sender &sender, void (Sender::*signal)(Enum, const QJSValue &),
                         void (PyWorker::*slot)(Enum, const QJSValue &));
    void startInterpreter();
    bool bringUpBackend();
    void extendSysPath();
    void importBackend();
    void callInit();
    void findEntryFunctions();
    /// Calls an entry function, unless the interpreter is being stopped. False if the function is missing.
    template <typename Enum, typename... Values>
    bool call(const pybind11::object &function, const char *name, Enum action, const Values &...values);
    template <typename Enum, typename... Values>
    void callOrLog(const pybind11::object &function, const char *name, const char *slot, Enum action,
                   const Values &...values);

    std::vector<const char *> sysPathBack;
    std::vector<const char *> sysPathFront;
    Bridge *_bridge;
    PyThreadState *threadState = nullptr;
    std::string moduleName;
    pybind11::object module;
    pybind11::object actuatorFn;
    pybind11::object autoFn;
    pybind11::object chartFn;
    pybind11::object guiFn;
    pybind11::object sensorFn;
    pybind11::object settingsFn;
    pybind11::object shellFn;
    pybind11::object simulatorFn;
    pybind11::object wifiFn;
};

/// Owns the interpreter thread. Lives on the GUI thread; running from its construction until stopPython().
class Bridge : public QObject, public BackendControl
{
    Q_OBJECT
    Q_PROPERTY(bool debug READ debug CONSTANT)
    Q_PROPERTY(bool serverConnected READ isServerConnected NOTIFY serverConnectionStateChanged)
    Q_PROPERTY(QString platform READ platform CONSTANT)

public:
    /// `pythonArgs` is Python's argument vector, the interpreter's path first. With `stubs` the backend is
    /// only imported. `backendDir` holds the package `controller`.
    Bridge(QStringList pythonArgs, bool stubs, const QString &backendDir);
    ~Bridge() override;

    /// False if the interpreter is already running.
    bool startPython();
    bool stopPython() override;

    /// Runs first in every stopPython(), in order of registration.
    void addPreStopHook(std::function<void()> hook) { preStopHooks.push_back(std::move(hook)); }
    /// Runs last in every stopPython(), in order of registration.
    void addPostStopHook(std::function<void()> hook) { postStopHooks.push_back(std::move(hook)); }

    static bool debug() { return false; }
    static QString platform() { return QStringLiteral("raspi"); }
    const QStringList &pythonArguments() const { return pyArgs; }
    bool stubMode() const { return makeStubs; }

    Q_INVOKABLE bool isServerConnected() const { return false; }
    Q_INVOKABLE QString createUuid() const;

Q_SIGNALS:
    void serverConnectionStateChanged(bool state);

private:
    bool makeStubs;
    std::vector<std::function<void()>> preStopHooks;
    std::vector<std::function<void()>> postStopHooks;
    QThread thread;
    QPointer<PyWorker> pyWorker;
    QStringList pyArgs;
    QByteArray m_backendDir;
};
