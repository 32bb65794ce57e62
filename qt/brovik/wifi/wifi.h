#pragma once

#include "shared_object.h"
#include "shared_property.h"

#include <QJSValue>
#include <QtQml/qqmlregistration.h>

/// State of the network. Lives on the GUI thread; written from any Python thread under its mutex.
class Wifi : public SharedObject, public SharedSingleton<Wifi>
{
    Q_OBJECT
    QML_ELEMENT
    QML_SINGLETON

public:
    enum WifiAction : int { Scan, IPData, Connect, Disconnect, Login, RestartWireguard };
    Q_ENUM(WifiAction)

Q_SIGNALS:
    /// A request of the operator.
    void toPy(Wifi::WifiAction action, const QJSValue &value);

private:
    friend class SharedSingleton<Wifi>;
    Wifi() = default;
};
