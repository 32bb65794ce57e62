#pragma once

#include "signal_receiver.h"

#include <QMetaProperty>
#include <QVariant>

#include <map>
#include <mutex>
#include <string>
#include <vector>

/// Records each signal of some properties of a shared object: which property, its value at that moment, and
/// who has changed it.
///
/// Who emits reads, and so with the object's mutex held: the order is that of the changes, and the values are
/// those that were stored. Any thread.
class ChangeLog : public SignalReceiver
{
public:
    struct Change
    {
        std::string property;
        qint64 thread; ///< As the kernel numbers it.
        QVariant value;
    };

    /// Throws std::out_of_range for a name that is no property with a signal.
    ChangeLog(QObject &object, const std::vector<std::string> &properties);

    std::size_t size() const;
    std::vector<Change> changes() const;
    void clear();

private:
    void received(std::size_t index, void **arguments) override;

    const QObject &m_object;
    std::vector<QMetaProperty> m_properties;
    mutable std::mutex m_mutex;
    std::vector<Change> m_changes;
};

/// What a screen shows of these properties: the GUI thread reads each of them when it comes to hear of a
/// change. To be deleted on the GUI thread; else any thread.
class ShownValues : public SignalReceiver
{
public:
    ShownValues(QObject &object, const std::vector<std::string> &properties);

    /// By the names of the properties, of those that have changed.
    std::map<std::string, QVariant> values() const;

private:
    void received(std::size_t index, void **arguments) override;

    const QObject &m_object;
    std::vector<QMetaProperty> m_properties;
    mutable std::mutex m_mutex;
    std::map<std::string, QVariant> m_values;
};
