#pragma once

#include "brovik/actuator/actuator.h"
#include "brovik/auto/auto.h"
#include "brovik/chart/chart.h"
#include "brovik/gui/gui.h"
#include "brovik/sensor/sensor.h"
#include "brovik/settings/settings.h"
#include "brovik/shell/shell.h"
#include "brovik/simulator/simulator.h"
#include "brovik/wifi/wifi.h"
#include "src/py/converter.h"

#include <pybind11/pybind11.h>

#include <QHash>

#include <type_traits>

// What the host calls in the backend, and with what. Everything that is no constant runs with the GIL held.

/// What the slot of the simulator's actions calls their enum.
using SimulatorEnum = Simulator::SimEnum;

/// Name of the Python package that is the backend.
inline constexpr const char *backendModule = "controller";
/// Its function that is called once, after the import.
inline constexpr const char *backendInit = "init";

/// The value of a family that has none.
struct NoValue
{};

// clang-format off
/// The functions that are called for what the operator does: family, enum, type of the value, function.
#define ENTRY_FUNCTIONS(F)                                                       \
    F(actuator,  ActuatorEnums::ActuatorEnum, NoValue,  "actuator_toggle_from_cpp") \
    F(auto,      Auto::AutoEnum,              QJSValue, "auto_value_from_cpp")      \
    F(chart,     Chart::ChartEnum,            QJSValue, "chart_action_from_cpp")    \
    F(gui,       Gui::GuiValueEnum,           QJSValue, "gui_value_from_cpp")       \
    F(sensor,    SensorEnums::SensorEnum,     bool,     "sensor_value_from_cpp")    \
    F(shell,     Shell::ShellAction,          QJSValue, "shell_action_from_cpp")    \
    F(simulator, SimulatorEnum,               QJSValue, "simulator_value_from_cpp") \
    F(settings,  Settings::SettingsEnum,      QJSValue, "settings_from_cpp")        \
    F(wifi,      Wifi::WifiAction,            QJSValue, "wifi_action_from_cpp")
// clang-format on

/// How many arguments a function is called with: the enum and, if its family has one, the value.
template <typename Value> inline constexpr int argumentCount = std::is_same_v<Value, NoValue> ? 1 : 2;

/// What Python calls the enumerators. Throws if Python does not know the enum.
template <typename Enum> QHash<int, QString> enumeratorNames()
{
    QHash<int, QString> names;
    const pybind11::dict members = pybind11::type::of<Enum>().attr("__members__");
    for (const auto &[name, member] : members) {
        names.insert(static_cast<int>(member.template cast<Enum>()), castPy2Qt<QString>(name));
    }
    return names;
}

namespace entry_detail {

/// Enums and what pybind11 knows by itself; all else by the conversion's rules.
template <typename Value> pybind11::object argumentOf(const Value &value)
{
    if constexpr (std::is_enum_v<Value>) {
        return pybind11::cast(value, pybind11::return_value_policy::copy);
    } else {
        return castQt2Py(value);
    }
}

} // namespace entry_detail

/// A function of the backend. Throws if there is none of that name, or something else.
inline pybind11::function entryFunction(const pybind11::object &backend, const char *name)
{
    return backend.attr(name);
}

/// Calls a function of the backend and drops what it returns. What it raises is thrown.
template <typename Enum, typename... Values>
void callEntryFunction(const pybind11::object &function, Enum action, const Values &...values)
{
    const pybind11::tuple arguments =
        pybind11::make_tuple(entry_detail::argumentOf(action), entry_detail::argumentOf(values)...);
    const auto result =
        pybind11::reinterpret_steal<pybind11::object>(PyObject_CallObject(function.ptr(), arguments.ptr()));
    if (!result) {
        throw pybind11::error_already_set();
    }
}
