#pragma once

#include <QObject>
#include <QtQml/qqmlregistration.h>

// clang-format off
/// The outputs, in the order of their numbers. Each: enumerator, QML name, Python name, name on screens, name in logs,
/// kind. The heater has no name in logs.
#define ACTUATOR_OUTPUTS(P) \
    P(MvLaugeIn,  mvLaugeIn,  "mv_lauge_in",  "Lauge IN",    "l_in",  TypeMv)      \
    P(MvSaureIn,  mvSaureIn,  "mv_saure_in",  "Säure IN",    "s_in",  TypeMv)      \
    P(MvKalt,     mvKalt,     "mv_kalt",      "Wasser kalt", "kalt",  TypeMv)      \
    P(MvHeiss,    mvHeiss,    "mv_heiss",     "Wasser Heiß", "heiss", TypeMv)      \
    P(MvKreis,    mvKreis,    "mv_kreis",     "Kreislauf",   "kreis", TypeMv)      \
    P(MvSaureOut, mvSaureOut, "mv_saure_out", "Säure OUT",   "s_out", TypeMv)      \
    P(MvLaugeOut, mvLaugeOut, "mv_lauge_out", "Lauge OUT",   "l_out", TypeMv)      \
    P(MvLuft,     mvLuft,     "mv_luft",      "Luft",        "luft",  TypeMv)      \
    P(MvCo2,      mvCo2,      "mv_co2",       "CO2",         "co2",   TypeMv)      \
    P(MvKanal,    mvKanal,    "mv_kanal",     "Kanal",       "kanal", TypePv3)     \
    P(Pumpe,      pumpe,      "pumpe",        "Pumpe",       "pumpe", TypePump)    \
    P(Heat1,      heat1,      "heat_1",       "Heizung",     "",      TypeHeating) \
    P(MvSteam,    mvSteam,    "mv_steam",     "Dampf",       "steam", TypeMv)
// clang-format on

namespace ActuatorEnums {
Q_NAMESPACE
QML_NAMED_ELEMENT(ActuatorEnums)
QML_UNCREATABLE("Error: only enums")

#define ACTUATOR_ENUMERATOR(output, ...) output,
/// The outputs, and one further request that is no output.
enum ActuatorEnum : int { ACTUATOR_OUTPUTS(ACTUATOR_ENUMERATOR) ToggleManualHeating };
#undef ACTUATOR_ENUMERATOR
Q_ENUM_NS(ActuatorEnum)
} // namespace ActuatorEnums

using ActuatorEnums::ActuatorEnum;
