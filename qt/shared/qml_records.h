#pragma once

#include "shared/gui_thread.h"
#include "shared/record_list.h"

#include <QBasicTimer>
#include <QJSEngine>
#include <QObject>
#include <QQmlListProperty>

#include <atomic>
#include <memory>
#include <utility>
#include <vector>

/// Owns what QML got of a list. The engine would collect a copy that a delegate still shows, were it the
/// owner; so the copies belong to a generation, which ends with a change of the list. The screens may show
/// an ended one until they have taken the change and drawn, so it rests before it goes. Lives on the GUI
/// thread and is used there alone; the list may change on any thread.
class QmlGenerations : public QObject
{
public:
    /// Milliseconds. An ended generation rests up to twice as long, and over two turns of the event loop.
    static constexpr int restMs = 100;

    /// `listChanged` is the signal by which the owner tells of a change; from any thread.
    template <typename Owner> QmlGenerations(const Owner &owner, void (Owner::*listChanged)())
    {
        connect(&owner, listChanged, this, &QmlGenerations::noteChange, Qt::DirectConnection);
    }

    void adopt(QObject &copy)
    {
        Q_ASSERT(onGuiThread());
        endGenerationOfOldList();
        copy.setParent(m_copies.get());
        QJSEngine::setObjectOwnership(&copy, QJSEngine::CppOwnership);
    }

protected:
    void timerEvent(QTimerEvent * /*event*/) override
    {
        Q_ASSERT(onGuiThread());
        m_going = std::exchange(m_resting, {});
        // Whoever read the list before may have gone.
        endGenerationOfOldList();
        if (m_going.empty() && m_resting.empty()) {
            m_timer.stop();
        }
    }

private:
    using Generation = std::unique_ptr<QObject>;

    /// On the thread of the change. What is read from now on belongs to the next generation, even before the
    /// GUI thread hears of the change.
    void noteChange()
    {
        if (!m_changed.exchange(true)) {
            QMetaObject::invokeMethod(this, &QmlGenerations::letRest, Qt::QueuedConnection);
        }
    }

    void letRest()
    {
        Q_ASSERT(onGuiThread());
        if (!m_timer.isActive()) {
            m_timer.start(restMs, this);
        }
    }

    void endGenerationOfOldList()
    {
        if (m_changed.exchange(false)) {
            m_resting.push_back(std::exchange(m_copies, std::make_unique<QObject>()));
        }
    }

    std::atomic<bool> m_changed = false;
    Generation m_copies = std::make_unique<QObject>();
    std::vector<Generation> m_resting;
    std::vector<Generation> m_going;
    QBasicTimer m_timer;
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

    QQmlListProperty<Record> property(QObject *owner)
    {
        Q_ASSERT(onGuiThread());
        return {owner, this, &count, &copyAt};
    }

private:
    using Property = QQmlListProperty<Record>;

    static QmlRecords &self(const Property *property)
    {
        Q_ASSERT(onGuiThread());
        return *static_cast<QmlRecords *>(property->data);
    }

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
