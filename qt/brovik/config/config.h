#pragma once

#include "shared/shared_object.h"
#include "shared/shared_property.h"

#include <QtQml/qqmlregistration.h>

// clang-format off
/// Type, QML name, setter, Python name, what Python reads under that name, initial value and default, meaning.
#define CONFIG_PROPERTIES(P) \
    P(MachineVersion, machineVersion, setMachineVersion, "machine_version",  machineVersion,       MachineVersion2024,        "Generation of the machine.") \
    P(DisplayType,    displayType,    setDisplayType,    "display_type",     displayType,          DisplayType_8_WSSKU_23741, "Mounted display. Read by the backend alone.") \
    P(bool,           hasLevelSwitch, setHasLevelSwitch, "has_level_switch", hasLevelSwitchDefault, true,                     "A level switch is fitted to the lye tank. Reads the default, whatever was written; the screens follow what was written.") \
    P(bool,           hasSteamValve,  setHasSteamValve,  "has_steam_valve",  hasSteamValve,        false,                     "A steam valve is fitted.") \
    P(bool, steamPressureSterilization, setSteamPressureSterilization, "steam_pressure_sterilization", steamPressureSterilization, false, "Steam sterilization runs under pressure.")

#define CONFIG_PROPERTY(type, name, setter, pyName, pyReads, initial, doc) \
    SHARED_DEFAULTED(type, name, setter, pyName, initial, doc)
// clang-format on

/// The equipment of this machine, as the backend knows it. Lives on the GUI thread; written from any Python
/// thread under its mutex. Computes nothing.
class Config : public SharedObject, public SharedSingleton<Config>
{
    Q_OBJECT
    QML_ELEMENT
    QML_SINGLETON

public:
    enum MachineVersion : int { MachineVersionLegacy, MachineVersion2024 };
    Q_ENUM(MachineVersion)

    enum DisplayType : int { DisplayType_7_WSSKU_14628, DisplayType_8_WSSKU_23741 };
    Q_ENUM(DisplayType)

    CONFIG_PROPERTIES(CONFIG_PROPERTY)

private:
    friend class SharedSingleton<Config>;
    Config() = default;
};
