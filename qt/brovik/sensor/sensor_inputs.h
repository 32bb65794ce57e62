#pragma once

#include "brovik/sensor/sensor_enums.h"
#include "shared/shared_object.h"
#include "shared/shared_property.h"

#include <QtQml/qqmlregistration.h>

// clang-format off
#define DIN_PROPERTIES(P) \
    P(QString, name,  setName,  "name",  QString(), "Name of the input.") \
    P(bool,    state, setState, "state", false,     "State of the input, as the backend reads it.") \
    P(int,     num,   setNum,   "num",   -1,        "Number of the input, given by the backend; -1 until then.")

#define AIN_PROPERTIES(P) \
    P(QString, name,  setName,  "name",  QString(), "Name of the input.") \
    P(double,  value, setValue, "value", 0.0,       "Value of the input, percent of its range, as the backend reads it.") \
    P(int,     num,   setNum,   "num",   -1,        "Number of the input.")
// clang-format on

/// One digital input. Lives on the GUI thread; written from any Python thread under its own mutex.
class DIn : public SharedObject
{
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("The inputs belong to Sensor")

public:
    DIn(SensorEnum input, const QString &name, int num)
        : m_name(name)
        , m_num(num)
        , m_input(input)
    {
        QJSEngine::setObjectOwnership(this, QJSEngine::CppOwnership);
    }

    DIN_PROPERTIES(SHARED_PROPERTY)

public:
    SensorEnum input() const { return m_input; }

private:
    const SensorEnum m_input;
};

/// One analogue input. Lives on the GUI thread; written from any Python thread under its own mutex.
class AIn : public SharedObject
{
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("The inputs belong to Sensor")

public:
    AIn(SensorEnum input, const QString &name, int num)
        : m_name(name)
        , m_num(num)
        , m_input(input)
    {
        QJSEngine::setObjectOwnership(this, QJSEngine::CppOwnership);
    }

    AIN_PROPERTIES(SHARED_PROPERTY)

public:
    SensorEnum input() const { return m_input; }

private:
    const SensorEnum m_input;
};
