#include "native/change_recorder.h"

#include "native/thread_name.h"

#include <QMutexLocker>

namespace {

QVariant argument(const QMetaType &type, const void *value)
{
    const bool isVariant = type == QMetaType::fromType<QVariant>();
    return isVariant ? *static_cast<const QVariant *>(value) : QVariant(type, value);
}

QMetaProperty propertyToldBy(const QMetaObject &meta, const QMetaMethod &signal)
{
    for (int index = 0; index < meta.propertyCount(); ++index) {
        if (meta.property(index).notifySignalIndex() == signal.methodIndex()) {
            return meta.property(index);
        }
    }
    return {};
}

QVariantList argumentsOf(const QMetaMethod &signal, void **arguments)
{
    QVariantList values;
    for (int index = 0; index < signal.parameterCount(); ++index) {
        values.append(argument(signal.parameterMetaType(index), arguments[index + 1]));
    }
    return values;
}

} // namespace

void ChangeRecorder::watch(QObject &object, const std::string &name)
{
    const QMetaObject &meta = *object.metaObject();
    for (int index = QObject::staticMetaObject.methodCount(); index < meta.methodCount(); ++index) {
        const QMetaMethod signal = meta.method(index);
        // A signal with a default argument counts once more without it.
        const bool isClone = (signal.attributes() & QMetaMethod::Cloned) != 0;
        if (signal.methodType() != QMetaMethod::Signal || isClone) {
            continue;
        }
        const int slot = QObject::staticMetaObject.methodCount() + static_cast<int>(m_watched.size());
        m_watched.push_back({&object, name, signal, propertyToldBy(meta, signal)});
        QMetaObject::connect(&object, index, this, slot, Qt::DirectConnection);
    }
}

std::vector<ChangeRecorder::Change> ChangeRecorder::changes(std::size_t from) const
{
    const QMutexLocker lock(&m_mutex);
    const std::size_t begin = std::min(from, m_changes.size());
    return {m_changes.begin() + static_cast<std::ptrdiff_t>(begin), m_changes.end()};
}

void ChangeRecorder::clear()
{
    const QMutexLocker lock(&m_mutex);
    m_changes.clear();
}

int ChangeRecorder::qt_metacall(QMetaObject::Call call, int id, void **arguments)
{
    const int slot = QObject::qt_metacall(call, id, arguments);
    if (call != QMetaObject::InvokeMetaMethod || slot < 0) {
        return slot;
    }
    const Watched &watched = m_watched.at(static_cast<std::size_t>(slot));
    const bool ofProperty = watched.property.isValid();
    // The writer holds the object's mutex, so nobody changes the property again before it is read.
    QVariantList values = ofProperty ? QVariantList{watched.property.read(watched.object)}
                                     : argumentsOf(watched.signal, arguments);
    const std::string thread = pythonThreadName();
    const QMutexLocker lock(&m_mutex);
    m_changes.push_back({watched.name, watched.signal.name().toStdString(),
                         ofProperty ? watched.property.name() : "", thread, std::move(values)});
    return -1;
}
