#pragma once

#include "shared_object.h"
#include "shared_property.h"

#include <QJSValue>
#include <QtQml/qqmlregistration.h>

namespace SensorEnums {
Q_NAMESPACE
QML_NAMED_ELEMENT(SensorEnums)

/// The inputs and measured values.
enum SensorEnum : int { StartBtn, StopBtn, SensorLevel, SensorLw, AIn1, AIn2, SensorP };
Q_ENUM_NS(SensorEnum)
} // namespace SensorEnums

using SensorEnums::SensorEnum;

/// The inputs of the machine. Lives on the GUI thread; written from any Python thread under its mutex.
class Sensor : public SharedObject, public SharedSingleton<Sensor>
{
    Q_OBJECT
    QML_ELEMENT
    QML_SINGLETON

Q_SIGNALS:
    /// An operator asks for another state of an input.
    void stateChangeRequested(SensorEnums::SensorEnum input, bool state);

private:
    friend class SharedSingleton<Sensor>;
    Sensor() = default;
};
