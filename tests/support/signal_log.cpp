#include "signal_log.h"

#include <QCoreApplication>
#include <QMutexLocker>
#include <QThread>

#include <algorithm>
#include <stdexcept>

namespace {

QMetaMethod signalNamed(const QMetaObject &meta, const std::string &name)
{
    for (int index = 0; index < meta.methodCount(); ++index) {
        const QMetaMethod method = meta.method(index);
        if (method.methodType() == QMetaMethod::Signal && method.name() == name.c_str()) {
            return method;
        }
    }
    throw std::out_of_range(name);
}

QVariant argument(const QMetaType &type, const void *value)
{
    const bool isVariant = type == QMetaType::fromType<QVariant>();
    return isVariant ? *static_cast<const QVariant *>(value) : QVariant(type, value);
}

} // namespace

SignalLog::SignalLog(QObject &object, const std::vector<std::string> &names)
{
    for (const std::string &name : names) {
        take(object, signalNamed(*object.metaObject(), name), Qt::DirectConnection);
    }
}

SignalLog::SignalLog(QObject &object)
{
    const QMetaObject &meta = *object.metaObject();
    for (int index = meta.methodOffset(); index < meta.methodCount(); ++index) {
        if (meta.method(index).methodType() == QMetaMethod::Signal) {
            take(object, meta.method(index), Qt::DirectConnection);
        }
    }
}

void SignalLog::received(std::size_t index, void **arguments)
{
    const QMetaMethod signal = signalAt(index);
    QVariantList values;
    for (int place = 0; place < signal.parameterCount(); ++place) {
        values.append(argument(signal.parameterMetaType(place), arguments[place + 1]));
    }
    const QMutexLocker lock(&m_mutex);
    const bool onGuiThread = QThread::currentThread() == QCoreApplication::instance()->thread();
    m_emissions.push_back({signal.name().toStdString(), onGuiThread, values});
}

std::vector<SignalLog::Emission> SignalLog::emissions() const
{
    const QMutexLocker lock(&m_mutex);
    return m_emissions;
}

std::vector<std::string> SignalLog::names() const
{
    std::vector<std::string> result;
    std::ranges::transform(emissions(), std::back_inserter(result), &Emission::name);
    return result;
}

void SignalLog::clear()
{
    const QMutexLocker lock(&m_mutex);
    m_emissions.clear();
}
