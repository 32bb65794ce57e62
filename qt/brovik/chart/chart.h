#pragma once

#include "shared_object.h"
#include "shared_property.h"

#include <QJSValue>
#include <QtQml/qqmlregistration.h>

/// The chart in memory and the list of saved charts. Lives on the GUI thread; written from any Python thread
/// under its mutex.
class Chart : public SharedObject, public SharedSingleton<Chart>
{
    Q_OBJECT
    QML_ELEMENT
    QML_SINGLETON

public:
    enum ChartEnum : int { ChartInvalid, ChartSave, ChartLoad, ChartDelete, ChartRename, ChartHand };
    Q_ENUM(ChartEnum)

Q_SIGNALS:
    /// A request of the operator.
    void toPy(Chart::ChartEnum action, const QJSValue &value);

private:
    friend class SharedSingleton<Chart>;
    Chart() = default;
};
