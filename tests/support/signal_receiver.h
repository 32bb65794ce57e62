#pragma once

#include <QMetaMethod>
#include <QObject>

#include <mutex>
#include <vector>

/// Takes signals that are known only when the program runs.
class SignalReceiver : public QObject
{
public:
    int qt_metacall(QMetaObject::Call call, int id, void **arguments) override;

protected:
    /// To be called for all signals before the first of them comes.
    void take(QObject &sender, const QMetaMethod &signal, Qt::ConnectionType type);

    /// The signal that was taken as number `index` has come, with these arguments, as QMetaObject hands them
    /// over. On the thread of who emits, several at once; of what is queued, on the receiver's own.
    virtual void received(std::size_t index, void **arguments) = 0;

    QMetaMethod signalAt(std::size_t index) const;

private:
    // Qt's way from the thread that makes a receiver to the one that it lives on is hidden from the thread
    // sanitizer.
    mutable std::mutex m_mutex;
    std::vector<QMetaMethod> m_signals;
};
