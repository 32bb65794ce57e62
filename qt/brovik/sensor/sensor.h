#pragma once

#include "sensor_enums.h"
#include "sensor_inputs.h"
#include "shared_object.h"
#include "shared_property.h"

#include <QElapsedTimer>
#include <QJSValue>
#include <QMutex>
#include <QTimer>
#include <QtQml/qqmlregistration.h>

#include <array>
#include <atomic>
#include <functional>

// clang-format off
/// Each: enumerator, QML name, Python name, name, number at start.
#define SENSOR_DINS(P) \
    P(StartBtn,    start, "start", "start",  -1) \
    P(StopBtn,     stop,  "stop",  "stop",   -1) \
    P(SensorLevel, level, "level", "level",  -1)

#define SENSOR_AINS(P) \
    P(AIn1,        aIn1,  "ain1",  "A-In-1", 0) \
    P(AIn2,        aIn2,  "ain2",  "A-In-2", 1)

/// What is measured; read-only for Python.
#define SENSOR_VALUES(P) \
    P(double, leitwert,    setLeitwert,    "leitwert",     0.0, "Conductivity after the offset, mS/cm.") \
    P(double, druck,       setDruck,       "druck",        0.0, "Pressure after the offset, bar.") \
    P(double, rawLeitwert, setRawLeitwert, "raw_leitwert", 0.0, "Conductivity before the offset, mS/cm.") \
    P(double, rawDruck,    setRawDruck,    "raw_druck",    0.0, "Pressure before the offset, bar.")

#define SENSOR_STATE(P) \
    P(SensorEnums::SensorLwEnum, lwType, setLwType, "lw_type", SensorEnums::ILFS_02_TK2,   "Kind of the conductivity sensor.") \
    P(SensorEnums::SensorPEnum,  pType,  setPType,  "p_type",  SensorEnums::SMC_PSE564_02, "Kind of the pressure sensor.") \
    P(bool, lwSensorDefective, setLwSensorDefective, "lw_sensor_defective", false, "The conductivity sensor gave no pulses in the last period.")
// clang-format on

/// An input as a member of its owner.
#define SENSOR_INPUT(class, input, name, text, num)                                                          \
public:                                                                                                      \
    Q_PROPERTY(class *name READ name CONSTANT)                                                               \
    class *name()                                                                                            \
    {                                                                                                        \
        return &m_##name;                                                                                    \
    }                                                                                                        \
                                                                                                             \
private:                                                                                                     \
    class m_##name                                                                                           \
    {                                                                                                        \
        SensorEnums::input, QStringLiteral(text), num                                                        \
    };

#define SENSOR_DIN(input, name, pyName, text, num) SENSOR_INPUT(DIn, input, name, text, num)
#define SENSOR_AIN(input, name, pyName, text, num) SENSOR_INPUT(AIn, input, name, text, num)

/// The inputs of the machine, and the conductivity that it measures itself from the pulses of a sensor.
///
/// Lives on the GUI thread, where also the measurement is computed; written from any Python thread under its
/// mutex. The pulses are counted on the GPIO thread under a mutex of their own. No function holds both.
class Sensor : public SharedObject, public SharedSingleton<Sensor>
{
    Q_OBJECT
    QML_ELEMENT
    QML_SINGLETON

    SENSOR_DINS(SENSOR_DIN)
    SENSOR_AINS(SENSOR_AIN)
    SENSOR_VALUES(SHARED_PROPERTY)
    SENSOR_STATE(SHARED_PROPERTY)

Q_SIGNALS:
    /// An operator asks the backend for another state of an input.
    void stateChangeRequested(SensorEnums::SensorEnum input, bool state);
    void _initLwTimerSignal();

private:
    friend class SharedSingleton<Sensor>;
    Sensor() = default;
};
