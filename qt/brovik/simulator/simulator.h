#pragma once

#include "shared_object.h"
#include "shared_property.h"

#include <QJSValue>
#include <QtQml/qqmlregistration.h>

/// Values of the simulated hardware. Lives on the GUI thread; written from any Python thread under its mutex.
class Simulator : public SharedObject, public SharedSingleton<Simulator>
{
    Q_OBJECT
    QML_ELEMENT
    QML_SINGLETON

public:
    enum SimEnum : int { SimEnabled, SimAIn0, SimAIn1, SimLw };
    Q_ENUM(SimEnum)

Q_SIGNALS:
    /// A value that the operator sets.
    void toPy(Simulator::SimEnum what, const QJSValue &value);

private:
    friend class SharedSingleton<Simulator>;
    Simulator() = default;
};
