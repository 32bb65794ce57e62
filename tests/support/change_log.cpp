#include "change_log.h"

#include <QCoreApplication>

#include <stdexcept>

#include <unistd.h>

namespace {

std::vector<QMetaProperty> propertiesOf(const QObject &object, const std::vector<std::string> &names)
{
    std::vector<QMetaProperty> found;
    for (const std::string &name : names) {
        found.push_back(object.metaObject()->property(object.metaObject()->indexOfProperty(name.c_str())));
        if (!found.back().hasNotifySignal()) {
            throw std::out_of_range(name);
        }
    }
    return found;
}

} // namespace

ChangeLog::ChangeLog(QObject &object, const std::vector<std::string> &properties)
    : m_object(object)
    , m_properties(propertiesOf(object, properties))
{
    for (const QMetaProperty &property : m_properties) {
        take(object, property.notifySignal(), Qt::DirectConnection);
    }
}

void ChangeLog::received(std::size_t index, void ** /*arguments*/)
{
    const QMetaProperty &property = m_properties.at(index);
    const QVariant value = property.read(&m_object);
    const std::lock_guard lock(m_mutex);
    m_changes.push_back({property.name(), gettid(), value});
}

std::size_t ChangeLog::size() const
{
    const std::lock_guard lock(m_mutex);
    return m_changes.size();
}

std::vector<ChangeLog::Change> ChangeLog::changes() const
{
    const std::lock_guard lock(m_mutex);
    return m_changes;
}

void ChangeLog::clear()
{
    const std::lock_guard lock(m_mutex);
    m_changes.clear();
}

ShownValues::ShownValues(QObject &object, const std::vector<std::string> &properties)
    : m_object(object)
    , m_properties(propertiesOf(object, properties))
{
    moveToThread(QCoreApplication::instance()->thread());
    for (const QMetaProperty &property : m_properties) {
        take(object, property.notifySignal(), Qt::QueuedConnection);
    }
}

void ShownValues::received(std::size_t index, void ** /*arguments*/)
{
    const QMetaProperty &property = m_properties.at(index);
    const QVariant value = property.read(&m_object);
    const std::lock_guard lock(m_mutex);
    m_values[property.name()] = value;
}

std::map<std::string, QVariant> ShownValues::values() const
{
    const std::lock_guard lock(m_mutex);
    return m_values;
}
