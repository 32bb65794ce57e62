#include "signal_receiver.h"

int SignalReceiver::qt_metacall(QMetaObject::Call call, int id, void **arguments)
{
    const int slot = QObject::qt_metacall(call, id, arguments);
    if (call != QMetaObject::InvokeMetaMethod || slot < 0) {
        return slot;
    }
    {
        // What take() has done is seen from here on.
        const std::lock_guard taken(m_mutex);
    }
    received(static_cast<std::size_t>(slot), arguments);
    return -1;
}

QMetaMethod SignalReceiver::signalAt(std::size_t index) const
{
    const std::lock_guard lock(m_mutex);
    return m_signals.at(index);
}

void SignalReceiver::take(QObject &sender, const QMetaMethod &signal, Qt::ConnectionType type)
{
    const std::lock_guard lock(m_mutex);
    const int slot = QObject::staticMetaObject.methodCount() + static_cast<int>(m_signals.size());
    m_signals.push_back(signal);
    QMetaObject::connect(&sender, signal.methodIndex(), this, slot, type);
}
