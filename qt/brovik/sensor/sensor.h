#pragma once

#include "brovik/gpio/gpio_worker.h"
#include "brovik/sensor/sensor_enums.h"
#include "brovik/sensor/sensor_inputs.h"
#include "shared/shared_object.h"
#include "shared/shared_property.h"

#include <QElapsedTimer>
#include <QJSValue>
#include <QTimer>
#include <QtQml/qqmlregistration.h>

#include <array>
#include <atomic>
#include <optional>

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

/// An input as a part of its owner.
#define SENSOR_INPUT(Input, input, name, text, num)                                                          \
    SHARED_PART(Input, name, SensorEnums::input, QStringLiteral(text), num)
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

public:
    using DIns = std::array<DIn *, 3>;

    /// `start`, `stop`, `level`.
    const DIns &allDins() const { return m_allDins; }
    /// Null for a value that is no digital input.
    DIn *dinFromEnum(SensorEnum input) const;
    /// Null for a value that is no analogue input.
    AIn *ainFromEnum(SensorEnum input);

    // What the backend has measured. Each stores the value before and the value after the offset, and the
    // functions that apply the offset return the latter.

    double setLwAndApplyOffset(double raw);
    double setPAndApplyOffset(double raw);
    void setLwWithoutOffset(double value) { storeLw(value, value); }
    void setPWithoutOffset(double value) { storeP(value, value); }

    /// Starts the measurement of conductivity; any thread. To be called once, or every second period finds no
    /// pulses.
    void initLwTimer() { announce(*this, &Sensor::_initLwTimerSignal); }
    /// Counts the falling edges of a line from now on.
    void setupLwEdgeDetect(uint channel);
    /// What counts an edge: one lock and one increment, no allocation. The callback lives as long as this
    /// object.
    gpio_callback_func edgeCounter();
    /// The edges since the last period. Takes no lock.
    qint64 lwTicks() const { return m_lwTicks; }
    /// Ends a period that took so many milliseconds: computes the conductivity from the edges counted in it.
    /// GUI thread.
    void calcLw(qint64 elapsedMs);

    /// The pressure, bar, that a simulated sensor shows: sets the simulated input as well.
    void pChangeFromSimulator(double bar);

    /// What the operator asks for in the simulator's window. Start and stop take a truth value, SensorLw
    /// mS/cm, SensorP bar; the level is switched over, whatever the value.
    Q_INVOKABLE void requestValueChange(SensorEnums::SensorEnum input, const QJSValue &value);

Q_SIGNALS:
    /// An operator asks the backend for another state of an input.
    void stateChangeRequested(SensorEnums::SensorEnum input, bool state);
    void _initLwTimerSignal();

private Q_SLOTS:
    void _calcLw();
    void _initLwTimer();

private:
    friend class SharedSingleton<Sensor>;
    Sensor();

    void storeLw(double value, double raw);
    void storeP(double value, double raw);
    std::optional<qint64> takeFrequency(qint64 elapsedMs);
    void lwChangeFromSimulator(double value);

    const DIns m_allDins{&m_start, &m_stop, &m_level};
    std::atomic<qint64> m_lwTicks = 0;
    /// Of the last period with edges, whole Hz.
    qint64 m_frequency = 0;
    InnerMutex m_tickMutex;
    QElapsedTimer m_elapsed;
    QTimer m_periodTimer{this};
};
