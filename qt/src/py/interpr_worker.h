#pragma once

#include "src/py/entry_functions.h"

#include <pybind11/pybind11.h>

#include <QHash>
#include <QVariantMap>

#include <array>
#include <string>
#include <vector>

class Bridge;

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
    void addSysPathFront(const char *directory) { m_sysPathFront.push_back(directory); }
    /// A directory for the end of `sys.path`; kept by pointer.
    void addSysPathBack(const char *directory) { m_sysPathBack.push_back(directory); }
    void setModuleName(std::string name) { m_moduleName = std::move(name); }

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
    /// A function of the backend; null as long as it was not found.
    struct EntryFunction
    {
        const char *name;
        /// How many arguments it is called with.
        int arguments;
        pybind11::object handle = {};
        /// Python's names of the enumerators that it is called with.
        QHash<int, QString> actions = {};
    };

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
    void checkEntryFunctions() const;
    /// Calls an entry function, unless the interpreter is being stopped. False if the function is missing.
    template <typename Enum, typename... Values>
    bool call(const EntryFunction &function, Enum action, const Values &...values);
    /// The same; `slot` is named to the log, with the values, if the function is missing.
    template <typename Enum, typename... Values>
    void callOrLog(const EntryFunction &function, const char *slot, Enum action, const Values &...values);

    std::vector<const char *> m_sysPathBack;
    std::vector<const char *> m_sysPathFront;
    Bridge *m_bridge;
    PyThreadState *m_threadState = nullptr;
    std::string m_moduleName;
    pybind11::object m_module;
#define ENTRY_MEMBER(family, Enum, Value, function) EntryFunction m_##family{function, argumentCount<Value>};
    ENTRY_FUNCTIONS(ENTRY_MEMBER)
#undef ENTRY_MEMBER
#define ENTRY_POINTER(family, ...) &m_##family,
    const std::array<EntryFunction *, 9> m_entryFunctions{ENTRY_FUNCTIONS(ENTRY_POINTER)};
#undef ENTRY_POINTER
};
