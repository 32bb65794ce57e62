#pragma once

#include "record_list.h"

#include <QJSEngine>
#include <QObject>
#include <QQmlListProperty>

#include <memory>
#include <utility>

/// Owns what QML got of a list. The engine would collect a copy that a delegate still shows, were it the
/// owner; so the copies belong to a generation, and one change of the list after the next the screens have
/// let go of it. Lives on the GUI thread and is used there alone.
class QmlGenerations : public QObject
{
public:
    /// `listChanged` is the signal by which the owner tells of a change; from any thread.
    template <typename Owner> QmlGenerations(const Owner &owner, void (Owner::*listChanged)())
    {
        connect(&owner, listChanged, this, &QmlGenerations::retire);
    }

    void adopt(QObject &copy)
    {
        copy.setParent(m_copies.get());
        QJSEngine::setObjectOwnership(&copy, QJSEngine::CppOwnership);
    }

private:
    /// Views may take their new copies before the queued call or after it, and drop the old ones in their
    /// next frame.
    void retire()
    {
        if (std::exchange(m_retiring, true)) {
            return;
        }
        const auto replace = [this] {
            m_retiring = false;
            m_oldCopies = std::exchange(m_copies, std::make_unique<QObject>());
        };
        QMetaObject::invokeMethod(this, replace, Qt::QueuedConnection);
    }

    std::unique_ptr<QObject> m_copies = std::make_unique<QObject>();
    std::unique_ptr<QObject> m_oldCopies;
    bool m_retiring = false;
};

/// Shows a RecordList to QML: count and element only, each element a copy made at the moment of reading. GUI
/// thread.
template <typename Record> class QmlRecords
{
public:
    template <typename Owner>
    QmlRecords(const RecordList<Record> &records, const Owner &owner, void (Owner::*listChanged)())
        : m_records(records)
        , m_generations(owner, listChanged)
    {}

    QQmlListProperty<Record> property(QObject *owner) { return {owner, this, &count, &copyAt}; }

private:
    using Property = QQmlListProperty<Record>;

    static QmlRecords &self(const Property *property) { return *static_cast<QmlRecords *>(property->data); }

    static qsizetype count(Property *property) { return self(property).m_records.size(); }

    /// Null for a record that went between the count and this.
    static Record *copyAt(Property *property, qsizetype index)
    {
        const auto record = self(property).m_records.at(index);
        if (record == nullptr) {
            return nullptr;
        }
        auto copy = std::make_unique<Record>(*record);
        self(property).m_generations.adopt(*copy);
        return copy.release();
    }

    const RecordList<Record> &m_records;
    QmlGenerations m_generations;
};
