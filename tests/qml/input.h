#pragma once

#include <QObject>
#include <QPoint>

class QQuickItem;

/// The QML singleton `Input` of kubelor.test: events that Qt Quick Test cannot make. Lives on the GUI thread.
class Input : public QObject
{
    Q_OBJECT

public:
    using QObject::QObject;

    /// Turns a wheel that knows pixels, over the middle of an item. Returns whether somebody took the event.
    Q_INVOKABLE bool turnWheel(QQuickItem *item, const QPoint &pixels);
};
