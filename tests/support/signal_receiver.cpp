#include "signal_receiver.h"

int SignalReceiver::qt_metacall(QMetaObject::Call call, int id, void **arguments)
{
    const int slot = QObject::qt_metacall(call, id, arguments);
    if (call != QMetaObject::InvokeMetaMethod || slot < 0) {
        return slot;
    }
    received(static_cast<std::size_t>(slot), arguments);
    return -1;
}

void SignalReceiver::take(QObject &sender, const QMetaMethod &signal, Qt::ConnectionType type)
{
    const int slot = QObject::staticMetaObject.methodCount() + static_cast<int>(m_signals.size());
    m_signals.push_back(signal);
    QMetaObject::connect(&sender, signal.methodIndex(), this, slot, type);
}
