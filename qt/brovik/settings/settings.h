#pragma once

#include "shared_object.h"
#include "shared_property.h"

#include <QJSValue>
#include <QtQml/qqmlregistration.h>

/// The parameters of the process. Lives on the GUI thread; written from any Python thread under its mutex.
class Settings : public SharedObject, public SharedSingleton<Settings>
{
    Q_OBJECT
    QML_NAMED_ELEMENT(BrovikSettings)
    QML_SINGLETON

public:
    enum SettingsEnum : int { SettingsEnumInvalid };
    Q_ENUM(SettingsEnum)

Q_SIGNALS:
    /// A change that the operator asks for.
    void toPy(Settings::SettingsEnum key, const QJSValue &value);

private:
    friend class SharedSingleton<Settings>;
    Settings() = default;
};
