#include "input.h"

#include <QCoreApplication>
#include <QQuickItem>
#include <QQuickWindow>
#include <QWheelEvent>

bool Input::turnWheel(QQuickItem *item, const QPoint &pixels)
{
    QQuickWindow *window = item->window();
    const QPointF position = item->mapToScene(QPointF(item->width(), item->height()) / 2);
    QWheelEvent event(position, window->mapToGlobal(position), pixels, pixels, Qt::NoButton, Qt::NoModifier,
                      Qt::NoScrollPhase, false);
    event.setAccepted(false);
    QCoreApplication::sendEvent(window, &event);
    return event.isAccepted();
}
