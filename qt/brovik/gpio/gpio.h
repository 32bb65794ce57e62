#pragma once

#include "shared_object.h"
#include "shared_property.h"

#include <QJSValue>
#include <QtQml/qqmlregistration.h>

/// Edge detection on input lines. Lives on the GUI thread; written from any Python thread under its mutex.
class GPIO : public SharedObject, public SharedSingleton<GPIO>
{
    Q_OBJECT
    QML_ELEMENT
    QML_SINGLETON

public:
    /// Ends the thread that waits for edges.
    void stopThread() {}

private:
    friend class SharedSingleton<GPIO>;
    GPIO() = default;
};
