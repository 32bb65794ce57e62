#pragma once

#include "shared/shared_object.h"
#include "shared/shared_property.h"

#include <QJSValue>
#include <QtQml/qqmlregistration.h>

// clang-format off
/// The keys, in the declared order of their properties and signals. All else that lists keys follows from here: enumerators,
/// Python attributes and Python's lists of keys. Four kinds of rows:
///   RANGED  number, enumerator, type, QML name, setter, Python name, lowest, highest, default, meaning
///   SWITCH, NAME
///           number, enumerator, type, QML name, setter, Python name, default, meaning
///   OFFSET  as SWITCH, but with two enumerators, the actions <enumerator>Set and, one number on, <enumerator>Reset
#define SETTINGS_KEYS(RANGED, SWITCH, NAME, OFFSET) \
    RANGED( 1, IntenseFactor,            double,  intenseFactor,            setIntenseFactor,            "intense_factor",              1.5,  10.0, 3.0,  "Factor by which intensive cleaning lengthens the lye and acid circuits.") \
    SWITCH( 2, IntenseCleaning,          bool,    intenseCleaning,          setIntenseCleaning,          "intense_cleaning",                        false, "Clean intensively.") \
    RANGED( 3, ThresholdPBlow,           double,  thresholdPBlow,           setThresholdPBlow,           "threshold_p_blow",            0.01, 0.2,  0.05, "Pressure threshold of the blowing steps, bar.") \
    RANGED( 4, ThresholdLwEmpty,         double,  thresholdLwEmpty,         setThresholdLwEmpty,         "threshold_lw_empty",          0.01, 1.0,  0.07, "Conductivity under which the medium counts as air, mS/cm.") \
    RANGED( 5, ThresholdLwWater,         double,  thresholdLwWater,         setThresholdLwWater,         "threshold_lw_water",          0.05, 1.3,  0.1,  "Conductivity from which the medium counts as water, mS/cm.") \
    RANGED( 6, ThresholdLwElectrolyte,   double,  thresholdLwElectrolyte,   setThresholdLwElectrolyte,   "threshold_lw_electrolyte",    0.1,  5.0,  1.5,  "Conductivity from which the medium counts as lye or acid, mS/cm.") \
    RANGED( 7, SecsBlowMin,              int,     secsBlowMin,              setSecsBlowMin,              "secs_blow_min",               1,    20,   5,    "Blowing out before the conductivity counts, seconds.") \
    RANGED( 8, SecsPump,                 int,     secsPump,                 setSecsPump,                 "secs_pump",                   5,    20,   5,    "Rinsing per pass, seconds.") \
    RANGED( 9, SecsBlowAfterPump,        int,     secsBlowAfterPump,        setSecsBlowAfterPump,        "secs_blow_after_pump",        1,    20,   3,    "Blowing out per pass after rinsing, seconds.") \
    RANGED(10, LeakagePFill,             double,  leakagePFill,             setLeakagePFill,             "leakage_p_fill",              0.3,  1.0,  0.5,  "Pressure that the leak test reaches, bar.") \
    RANGED(11, LeakagePIncRate,          double,  leakagePIncRate,          setLeakagePIncRate,          "leakage_p_inc_rate",          0.01, 0.2,  0.03, "Least rise of the pressure in the leak test, bar/s.") \
    RANGED(12, LeakagePHoldSecs,         int,     leakagePHoldSecs,         setLeakagePHoldSecs,         "leakage_p_hold_secs",         1,    20,   3,    "Holding the pressure in the leak test, seconds.") \
    RANGED(13, LeakagePMaxLoss,          double,  leakagePMaxLoss,          setLeakagePMaxLoss,          "leakage_p_max_loss",          0.01, 0.2,  0.07, "Greatest loss of pressure while it is held, bar.") \
    RANGED(14, BlowAfterEmptySecs,       int,     blowAfterEmptySecs,       setBlowAfterEmptySecs,       "blow_after_empty_secs",       1,    60,   10,   "Further blowing after the barrel is empty, to drive out CO2, seconds.") \
    RANGED(15, LaugeKreisSecs,           int,     laugeKreisSecs,           setLaugeKreisSecs,           "lauge_kreis_secs",            10,   600,  100,  "Lye circuit, seconds.") \
    RANGED(18, SaureKreisSecs,           int,     saureKreisSecs,           setSaureKreisSecs,           "saure_kreis_secs",            10,   600,  100,  "Acid circuit, seconds.") \
    SWITCH(23, DoSteamStep,              bool,    doSteamStep,              setDoSteamStep,              "do_steam_step",                           true,  "Sterilise with steam.") \
    RANGED(24, SteamSterilizationSecs,   int,     steamSterilizationSecs,   setSteamSterilizationSecs,   "steam_sterilization_secs",    15,   180,  40,   "Sterilising with steam, seconds.") \
    RANGED(25, SteamCo2BlowSecs,         int,     steamCo2BlowSecs,         setSteamCo2BlowSecs,         "steam_co2_blow_secs",         1,    20,   3,    "Blowing out with CO2 after sterilising, seconds.") \
    RANGED(21, Co2BlowAfterEmptySecs,    int,     co2BlowAfterEmptySecs,    setCo2BlowAfterEmptySecs,    "co2_blow_after_empty_secs",   1,    60,   5,    "Further clocked blowing with CO2 after the barrel is empty, seconds.") \
    RANGED(22, VorspannenP,              double,  vorspannenP,              setVorspannenP,              "vorspannen_p",                0.1,  2.0,  0.7,  "Pressure under which the barrel is left, bar.") \
    RANGED(16, HotKreisFillSecsLegacy,   int,     hotKreisFillSecsLegacy,   setHotKreisFillSecsLegacy,   "hot_kreis_fill_secs_legacy",  1,    20,   6,    "Filling the circuit with hot water, seconds. Legacy machine.") \
    RANGED(17, HotKreisCleanSecsLegacy,  int,     hotKreisCleanSecsLegacy,  setHotKreisCleanSecsLegacy,  "hot_kreis_clean_secs_legacy", 1,    20,   6,    "Pumping the hot water round, seconds. Legacy machine.") \
    RANGED(19, ColdKreisFillSecsLegacy,  int,     coldKreisFillSecsLegacy,  setColdKreisFillSecsLegacy,  "cold_kreis_fill_secs_legacy", 1,    20,   6,    "Filling the circuit with cold water, seconds. Legacy machine.") \
    RANGED(20, ColdKreisCleanSecsLegacy, int,     coldKreisCleanSecsLegacy, setColdKreisCleanSecsLegacy, "cold_kreis_clean_secs_legacy", 1,   20,   6,    "Pumping the cold water round, seconds. Legacy machine.") \
    RANGED(26, LwTestHoldSecs,           int,     lwTestHoldSecs,           setLwTestHoldSecs,           "lw_test_hold_secs",           5,    30,   20,   "Holding the set point until a bath test is done, seconds.") \
    RANGED(27, LwSaureMin,               int,     lwSaureMin,               setLwSaureMin,               "lw_saure_min",                1,    50,   10,   "Least conductivity of the acid, mS/cm.") \
    RANGED(28, LwSaureSp,                int,     lwSaureSp,                setLwSaureSp,                "lw_saure_sp",                 2,    100,  20,   "Set point of refreshing the acid, mS/cm.") \
    NAME  (29, LwSaureName,              QString, lwSaureName,              setLwSaureName,              "lw_saure_name", QStringLiteral("SANAL®-SA 3"),      "Product name of the acid.") \
    RANGED(30, LwLaugeMin,               int,     lwLaugeMin,               setLwLaugeMin,               "lw_lauge_min",                1,    50,   30,   "Least conductivity of the lye, mS/cm.") \
    RANGED(31, LwLaugeSp,                int,     lwLaugeSp,                setLwLaugeSp,                "lw_lauge_sp",                 2,    100,  60,   "Set point of refreshing the lye, mS/cm.") \
    NAME  (32, LwLaugeName,              QString, lwLaugeName,              setLwLaugeName,              "lw_lauge_name", QStringLiteral("RIMALKAN®-HAT 26"), "Product name of the lye.") \
    SWITCH(33, TestLeakageP,             bool,    testLeakageP,             setTestLeakageP,             "test_leakage_p",                          true,  "Start the automatic run with a leak test.") \
    SWITCH(34, TestLwWaterCold,          bool,    testLwWaterCold,          setTestLwWaterCold,          "test_lw_water_cold",                      true,  "Check for cold water while rinsing.") \
    SWITCH(35, TestLwWaterHot,           bool,    testLwWaterHot,           setTestLwWaterHot,           "test_lw_water_hot",                       true,  "Check for hot water while rinsing.") \
    SWITCH(36, TestLwKreisSaure,         bool,    testLwKreisSaure,         setTestLwKreisSaure,         "test_lw_kreis_saure",                     true,  "Check for acid in the acid circuit.") \
    SWITCH(37, TestLwKreisLauge,         bool,    testLwKreisLauge,         setTestLwKreisLauge,         "test_lw_kreis_lauge",                     true,  "Check for lye in the lye circuit.") \
    SWITCH(38, TestLaugeLevel,           bool,    testLaugeLevel,           setTestLaugeLevel,           "test_lauge_level",                        true,  "Check the level of the lye tank for the automatic heating.") \
    OFFSET(39, POffset,                  double,  pOffset,                  setPOffset,                  "p_offset",                                0.0,   "Offset that is subtracted from the raw pressure, bar.") \
    OFFSET(41, LwOffset,                 double,  lwOffset,                 setLwOffset,                 "lw_offset",                               0.0,   "Offset that is subtracted from the raw conductivity, mS/cm.") \
    SWITCH(43, UseCO2AfterSaure,         bool,    useCO2AfterSaure,         setUseCO2AfterSaure,         "use_co2_after_saure",                     true,  "Use CO2 after the acid. Read by the backend alone.")

#define SETTINGS_ENUMERATOR(number, enumerator, ...) enumerator = number,
#define SETTINGS_ACTIONS(number, enumerator, ...) enumerator##Set = number, enumerator##Reset = number + 1,

#define SETTINGS_RANGED(number, enumerator, ...) SHARED_RANGED(__VA_ARGS__)
#define SETTINGS_DEFAULTED(number, enumerator, ...) SHARED_DEFAULTED(__VA_ARGS__)
// clang-format on

/// The parameters of the process: value, bounds and default per key. A mirror, not an owner: the backend
/// keeps and writes them. Lives on the GUI thread; written from any Python thread under its mutex.
class Settings : public SharedObject, public SharedSingleton<Settings>
{
    Q_OBJECT
    QML_NAMED_ELEMENT(BrovikSettings)
    QML_SINGLETON

public:
    /// What a screen asks to be changed, or an action of the calibration.
    enum SettingsEnum : int {
        SettingsEnumInvalid,
        SETTINGS_KEYS(SETTINGS_ENUMERATOR, SETTINGS_ENUMERATOR, SETTINGS_ENUMERATOR, SETTINGS_ACTIONS)
    };
    Q_ENUM(SettingsEnum)

    SETTINGS_KEYS(SETTINGS_RANGED, SETTINGS_DEFAULTED, SETTINGS_DEFAULTED, SETTINGS_DEFAULTED)

Q_SIGNALS:
    /// A change that the operator asks for, with the value of the control; null for the actions.
    void toPy(Settings::SettingsEnum key, const QJSValue &value);

private:
    friend class SharedSingleton<Settings>;
    Settings() = default;
};
