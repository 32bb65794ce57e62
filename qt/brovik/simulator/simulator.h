#pragma once

#include "shared/shared_object.h"
#include "shared/shared_property.h"

#include <QJSValue>
#include <QtQml/qqmlregistration.h>

// clang-format off
/// Three kinds of rows: a value with bounds and default, a value with default, a plain value. Each: type, QML name, setter,
/// Python name, (lowest, highest,) initial value, meaning.
#define SIMULATOR_PROPERTIES(RANGED, DEFAULTED, PLAIN) \
    DEFAULTED(bool,   enabled,        setEnabled,        "enabled",              false, "The simulation is on.") \
    RANGED   (int,    simAIn0,        setSimAIn0,        "a_in_0",       0, 100, 0,     "Analogue input 0, the pressure channel, percent.") \
    RANGED   (int,    simAIn1,        setSimAIn1,        "a_in_1",       0, 100, 0,     "Analogue input 1, the conductivity channel, percent.") \
    DEFAULTED(double, simScaleFactor, setSimScaleFactor, "scale_factor",         1.0,   "Scale of the left column of the simulator's window.") \
    PLAIN    (double, pIncRate,       setPIncRate,       "p_inc_rate",           0.05,  "Rise of the pressure in the leak test, bar/s.") \
    PLAIN    (double, pDecRate,       setPDecRate,       "p_dec_rate",           0.1,   "Fall of the pressure in the leak test, bar/s.")
// clang-format on

/// Values of the simulated hardware. Simulates nothing itself: the backend does. Lives on the GUI thread;
/// written from any Python thread, and from the GUI thread by its slots and by the sensors, under its mutex.
class Simulator : public SharedObject, public SharedSingleton<Simulator>
{
    Q_OBJECT
    QML_ELEMENT
    QML_SINGLETON

public:
    enum SimEnum : int { SimEnabled, SimAIn0, SimAIn1, SimLw };
    Q_ENUM(SimEnum)

    SIMULATOR_PROPERTIES(SHARED_RANGED, SHARED_DEFAULTED, SHARED_PROPERTY)

public:
    /// As a write from Python: no bounds.
    Q_INVOKABLE void changePIncRate(double rate) { setPIncRate(rate); }
    /// As a write from Python: no bounds.
    Q_INVOKABLE void changePDecRate(double rate) { setPDecRate(rate); }

Q_SIGNALS:
    /// A value that the operator sets.
    void toPy(Simulator::SimEnum what, const QJSValue &value);
    /// Part of the interface to the outside; raised by nothing in this program.
    void setLwFreq(int frequency);

private:
    friend class SharedSingleton<Simulator>;
    Simulator() = default;
};
