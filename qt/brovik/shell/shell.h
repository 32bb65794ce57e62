#pragma once

#include "shared_object.h"
#include "shared_property.h"

#include <QJSValue>
#include <QtQml/qqmlregistration.h>

/// State of the update facility. Lives on the GUI thread; written from any Python thread under its mutex.
class Shell : public SharedObject, public SharedSingleton<Shell>
{
    Q_OBJECT
    QML_ELEMENT
    QML_SINGLETON

public:
    enum ShellAction : int { Update, Upgrade, Changelog, LocalChangelog, ClearCache, TestConsole, ToggleTesting };
    Q_ENUM(ShellAction)

Q_SIGNALS:
    /// A request of the operator.
    void toPy(Shell::ShellAction action, const QJSValue &value);

private:
    friend class SharedSingleton<Shell>;
    Shell() = default;
};
