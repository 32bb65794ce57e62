#pragma once

#include "shared_object.h"
#include "shared_property.h"

#include <QJSValue>
#include <QtQml/qqmlregistration.h>

/// The equipment of this machine. Lives on the GUI thread; written from any Python thread under its mutex.
class Config : public SharedObject, public SharedSingleton<Config>
{
    Q_OBJECT
    QML_ELEMENT
    QML_SINGLETON

private:
    friend class SharedSingleton<Config>;
    Config() = default;
};
