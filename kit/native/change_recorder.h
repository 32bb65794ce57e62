#pragma once

#include <QMetaMethod>
#include <QMetaProperty>
#include <QMutex>
#include <QObject>
#include <QVariantList>

#include <string>
#include <vector>

/// Records what shared objects tell of: each signal in its order, with its thread, and each change with the
/// value that the property had at that moment.
///
/// Made and destroyed on the thread of the objects; records on any thread, under a mutex of its own. It calls
/// no Python code, for whoever tells of something may hold the object's mutex.
class ChangeRecorder : public QObject
{
public:
    struct Change
    {
        std::string object; ///< As watch() was told.
        std::string signal;
        /// The property that the signal tells of; empty if it tells of none.
        std::string property;
        std::string thread; ///< Python's name of it.
        /// The property's value, or the arguments of the signal.
        QVariantList values;
    };

    /// Records all signals of an object from now on.
    void watch(QObject &object, const std::string &name);
    /// What was recorded, but for the first so many.
    std::vector<Change> changes(std::size_t from) const;
    void clear();

    int qt_metacall(QMetaObject::Call call, int id, void **arguments) override;

private:
    struct Watched
    {
        QObject *object;
        std::string name;
        QMetaMethod signal;
        /// Invalid if the signal tells of none.
        QMetaProperty property;
    };

    std::vector<Watched> m_watched;
    mutable QMutex m_mutex;
    std::vector<Change> m_changes;
};
