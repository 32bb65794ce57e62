#pragma once

#include "backend_run.h"
#include "brovik/gui/gui.h"
#include "signal_log.h"

#include <gmock/gmock.h>

#include <QQmlEngine>
#include <QStringList>

/// A test of the bridge with a backend of its own: a screen that acts, and the singleton that it is seen by.
/// Lives on the GUI thread.
class BridgeTest : public testing::Test
{
protected:
    BridgeTest()
    {
        GTEST_FLAG_SET(death_test_style, "threadsafe");
        engine.addImportPath(QStringLiteral(":/"));
        gui.deliverPending();
    }

    void act(const char *module, const char *statement)
    {
        actOnScreen(engine, QString::fromUtf8(module), QString::fromUtf8(statement));
    }

    QQmlEngine engine;
    Gui &gui = Gui::instance();
};

/// What an operator does, and what comes of it.
struct Press
{
    const char *module;
    const char *statement;
    /// What the entry function is called with.
    const char *told;
    /// What is logged if there is no entry function.
    const char *missing;
};

/// At least one press of each family, in the order in which they are connected.
inline constexpr Press presses[] = {
    {"brovik.actuator", "Actuator.toggle(ActuatorEnums.MvKalt)",
     "main actuator_toggle_from_cpp <ActuatorEnum.MvKalt: 2>",
     "Python-Funktion actuator_toggle_from_cpp() nicht gefunden -  pyActuatorToggle ( ActuatorEnums::MvKalt "
     ")."},
    {"brovik.auto", "Auto_.toPy(Auto_.ToggleLwTestSaure, null)",
     "main auto_value_from_cpp <AutoEnum.ToggleLwTestSaure: 1> None",
     "Python-Funktion auto_value_from_cpp() nicht gefunden -  pyAutoValueQJs ( Auto::ToggleLwTestSaure , "
     "\"null\" )."},
    {"brovik.chart", "Chart.toPy(Chart.ChartRename, ['alt', 'neu'])",
     "main chart_action_from_cpp <ChartEnum.Rename: 4> ['alt', 'neu']",
     "Python-Funktion chart_action_from_cpp() nicht gefunden -  pyChartActionQJs ( Chart::ChartRename )."},
    {"brovik.gui", "Gui.toPy(Gui.PopupOpened, true)", "main gui_value_from_cpp <GuiEnum.PopupOpened: 3> True",
     "Python-Funktion gui_value_from_cpp() nicht gefunden -  pyGuiValueQJs ( Gui::PopupOpened , \"true\" )."},
    {"brovik.gui", "Gui.deleteWarnings()", "main gui_value_from_cpp <GuiEnum.DeleteWarnings: 1> None",
     "Python-Funktion gui_value_from_cpp() nicht gefunden -  pyGuiValueQVar ( Gui::DeleteWarnings , "
     "QVariant(Invalid) )."},
    {"brovik.sensor", "Sensor.stateChangeRequested(SensorEnums.StopBtn, true)",
     "main sensor_value_from_cpp <SensorEnum.Stop: 1> True",
     "Python-Funktion sensor_value_from_cpp() nicht gefunden -  pyDInStateChange ( SensorEnums::StopBtn , "
     "true )."},
    {"brovik.sensor", "Sensor.stateChangeRequested(SensorEnums.SensorLevel, false)",
     "main sensor_value_from_cpp <SensorEnum.Level: 2> False",
     "Python-Funktion sensor_value_from_cpp() nicht gefunden -  pyDInStateChange ( SensorEnums::SensorLevel "
     ", false "
     ")."},
    {"brovik.settings", "BrovikSettings.toPy(BrovikSettings.SettingsEnumInvalid, 'x')",
     "main settings_from_cpp <SettingsEnum.Invalid: 0> 'x'",
     "Python-Funktion settings_from_cpp() nicht gefunden -  pySettingsQJs ( Settings::SettingsEnumInvalid , "
     "\"x\" "
     ")."},
    {"brovik.shell", "Shell.toPy(Shell.Changelog, undefined)",
     "main shell_action_from_cpp <ShellActionEnum.Changelog: 2> None",
     "Python-Funktion shell_action_from_cpp() nicht gefunden -  pyShellValueQJs ( Shell::Changelog , "
     "\"undefined\" )."},
    // Passwords are not logged.
    {"brovik.shell", "Shell.toPy(Shell.ToggleTesting, 'geheim')",
     "main shell_action_from_cpp <ShellActionEnum.ToggleTesting: 6> 'geheim'",
     "Python-Funktion shell_action_from_cpp() nicht gefunden -  pyShellValueQJs ( Shell::ToggleTesting )."},
    {"brovik.simulator", "Simulator.toPy(Simulator.SimLw, 1)",
     "main simulator_value_from_cpp <SimuEnum.Lw: 3> 1.0",
     "Python-Funktion simulator_value_from_cpp() nicht gefunden -  pySimulatorValueQJs ( Simulator::SimLw , "
     "\"1\" "
     ")."},
    {"brovik.wifi", "Wifi.toPy(Wifi.Login, {name: 'a', key: 'b'})",
     "main wifi_action_from_cpp <WifiActionEnum.Login: 4> {'name': 'a', 'key': 'b'}",
     "Python-Funktion wifi_action_from_cpp() nicht gefunden -  pyWifiValue ( Wifi::Login , \"[object "
     "Object]\" )."},
    {"brovik.wifi", "Wifi.toPy(Wifi.Connect, ['Halle', 'geheim'])",
     "main wifi_action_from_cpp <WifiActionEnum.Connect: 2> ['Halle', 'geheim']",
     "Python-Funktion wifi_action_from_cpp() nicht gefunden -  pyWifiValue ( Wifi::Connect , \"Halle\" )."},
};

/// The types of the exceptions that were shown.
QStringList typesOf(const SignalLog &exceptions);

/// What the backend `recording` tells of all presses.
QStringList expectedTellings();

/// What is logged of all presses if there are no entry functions.
QStringList expectedCriticals();
