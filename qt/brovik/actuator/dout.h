#pragma once

#include "brovik/actuator/actuator_enums.h"
#include "shared/shared_object.h"
#include "shared/shared_property.h"

#include <QtQml/qqmlregistration.h>

#include <atomic>

class Actuator;

// clang-format off
#define DOUT_NAMES(P) \
    P(QString, name,    setName,    "name",     QString(), "Name that the operator sees.") \
    P(QString, logName, setLogName, "log_name", QString(), "Short name for logs and charts; may be empty.")

#define DOUT_MARKS(P) \
    P(bool,    blocked, setBlocked, "blocked",  false,     "The operator may not switch the output. No screen shows it: the backend refuses.") \
    P(int,     num,     setNum,     "num",      -1,        "Number of the output, given by the backend; -1 until then.")
// clang-format on

/// One digital output, as the backend reports it: switches nothing itself. Lives on the GUI thread; written
/// from any Python thread under its own mutex.
class DOut : public SharedObject
{
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("The outputs belong to Actuator")

public:
    enum DOutTypeEnum : int { TypeMv, TypeSv, TypePv3, TypeLed, TypeHeating, TypeSpare, TypePump };
    Q_ENUM(DOutTypeEnum)

    DOut(ActuatorEnum output, const QString &name, const QString &logName, DOutTypeEnum type,
         Actuator &actuator);

    DOUT_NAMES(SHARED_PROPERTY)

public:
    Q_PROPERTY(bool state READ state NOTIFY stateChanged)
    /// The output is on. Takes no lock, so that a look at all outputs waits for none of them.
    bool state() const { return m_state; }
    void setState(bool state);

Q_SIGNALS:
    void stateChanged();

    DOUT_MARKS(SHARED_PROPERTY)

public:
    ActuatorEnum output() const { return m_output; }
    DOutTypeEnum type() const { return m_type; }

    /// Asks the backend to switch the output over, whatever its state, and even if it is blocked.
    Q_INVOKABLE void toggle();

private:
    std::atomic<bool> m_state = false;
    const ActuatorEnum m_output;
    const DOutTypeEnum m_type;
    Actuator &m_actuator;
};
