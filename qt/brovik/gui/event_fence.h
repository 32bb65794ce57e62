#pragma once

#include "shared/gui_thread.h"

#include <QObject>
#include <QtQml/qqmlregistration.h>

/// A mark in the event queue of the GUI thread: what other threads have raised before it arrives before it.
/// Lives and is used on the GUI thread alone.
class EventFence : public QObject
{
    Q_OBJECT
    QML_ELEMENT

public:
    using QObject::QObject;

    /// Puts the mark into the queue, behind all that waits now.
    Q_INVOKABLE void enqueue()
    {
        Q_ASSERT(onGuiThread());
        QMetaObject::invokeMethod(this, &EventFence::passed, Qt::QueuedConnection);
    }

Q_SIGNALS:
    /// All that waited at enqueue() has arrived.
    void passed();
};
