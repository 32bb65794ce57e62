#pragma once

#include "shared/notification_brake.h"

#include <QElapsedTimer>
#include <QJSValue>
#include <QObject>
#include <QTimer>
#include <QtQml/qqmlregistration.h>

#include <chrono>
#include <deque>

/// Keeps the screens answering while they do what the backend asks for without a pause: open dialogs, call
/// the backend back. What it is given runs at once, but in one turn of the event loop for no longer than
/// `longestTurn`. The rest waits, one after the other, until the loop has come to timers and to what the
/// operator does. Lives and is used on the GUI thread alone, one for each engine.
class InTurn : public QObject
{
    Q_OBJECT
    QML_ELEMENT
    QML_SINGLETON

public:
    static constexpr std::chrono::milliseconds longestTurn{50};

    explicit InTurn(QObject *parent = nullptr);

    /// Calls the function, now or in a later turn; the order is kept. What it needs may be gone by then. An
    /// exception is logged.
    Q_INVOKABLE void run(const QJSValue &function);

    /// What waits for a later turn.
    Q_INVOKABLE int waiting() const;

private:
    void begin();
    bool isOver() const;
    void runWaiting();
    void reportBacklog();
    static void call(const QJSValue &function);

    std::deque<QJSValue> m_waiting;
    NotificationBacklog m_backlog;
    QTimer m_next;        ///< Runs until the loop has come to its timers.
    QElapsedTimer m_turn; ///< Since the first call of this turn.
};
