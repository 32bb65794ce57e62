#pragma once

#include <QObject>
#include <QtQml/qqmlregistration.h>

/// Gives memory back to the system that the screens have let go of, which the script engine and the allocator
/// would keep. Lives and is used on the GUI thread alone, which it takes some milliseconds.
class MemoryReturn : public QObject
{
    Q_OBJECT
    QML_ELEMENT

public:
    using QObject::QObject;

    Q_INVOKABLE void giveBack();
};
