#pragma once

#include "shared_object.h"
#include "shared_property.h"

#include <QJSValue>
#include <QtQml/qqmlregistration.h>

namespace ActuatorEnums {
Q_NAMESPACE
QML_NAMED_ELEMENT(ActuatorEnums)

/// The outputs, and one further request that is no output.
enum ActuatorEnum : int {
    MvLaugeIn, MvSaureIn, MvKalt, MvHeiss, MvKreis, MvSaureOut, MvLaugeOut, MvLuft, MvCo2, MvKanal, Pumpe, Heat1,
    MvSteam, ToggleManualHeating
};
Q_ENUM_NS(ActuatorEnum)
} // namespace ActuatorEnums

using ActuatorEnums::ActuatorEnum;

/// The thirteen digital outputs. Lives on the GUI thread; written from any Python thread under its mutex.
class Actuator : public SharedObject, public SharedSingleton<Actuator>
{
    Q_OBJECT
    QML_ELEMENT
    QML_SINGLETON

Q_SIGNALS:
    /// A request of the operator.
    void toggle(ActuatorEnums::ActuatorEnum output);

private:
    friend class SharedSingleton<Actuator>;
    Actuator() = default;
};
