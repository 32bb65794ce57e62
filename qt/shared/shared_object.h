#pragma once

#include "shared/announce.h"
#include "shared/log.h"
#include "shared/same_value.h"

#include <QJSEngine>
#include <QMetaMethod>
#include <QMutex>
#include <QMutexLocker>
#include <QObject>
#include <QRecursiveMutex>

#include <cmath>
#include <utility>

class QQmlEngine;

#if defined(__SANITIZE_THREAD__)
#include <sanitizer/tsan_interface.h>
#endif

/// A mutex that tells the thread sanitizer what Qt's futex code hides from it.
template <typename Mutex> class VisibleMutex
{
public:
    void lock()
    {
        m_mutex.lock();
#if defined(__SANITIZE_THREAD__)
        __tsan_acquire(&m_mutex);
#endif
    }

    void unlock()
    {
#if defined(__SANITIZE_THREAD__)
        __tsan_release(&m_mutex);
#endif
        m_mutex.unlock();
    }

private:
    Mutex m_mutex;
};

/// The mutex of a shared object.
using SharedMutex = VisibleMutex<QRecursiveMutex>;
using SharedLocker = QMutexLocker<SharedMutex>;

/// For what is guarded apart from the object, and never while a signal leaves.
using InnerMutex = VisibleMutex<QMutex>;
using InnerLocker = QMutexLocker<InnerMutex>;

/// An object that QML is bound to and Python writes to.
///
/// It lives on the GUI thread. Getters and setters run on any thread, each under the object's one recursive
/// mutex; change signals leave with the mutex held, on the thread of the writer.
class SharedObject : public QObject
{
    Q_OBJECT

public:
    using QObject::QObject;

protected:
    /// A copy of a member, taken under the mutex.
    template <typename T> T read(const T &member) const
    {
        const SharedLocker lock(&m_mutex);
        return member;
    }

    /// Holds the mutex over one change or several. A thread that tells too much is held back after the
    /// outermost hold, or the GUI thread would wait for that thread in a getter.
    class Hold
    {
    public:
        explicit Hold(SharedObject &object)
            : m_lock(&object.m_mutex)
        {}

    private:
        const AnnouncesLater m_later; // outlives the lock
        const SharedLocker m_lock;
    };

    /// The change pattern: lock, compare, store, announce the signal. Returns whether the member changed.
    template <typename T, typename Member, typename Class>
    bool change(Member &member, const T &value, void (Class::*signal)())
    {
        const Hold hold(*this);
        if (isSame(member, value)) {
            return false;
        }
        store(member, value, signal);
        return true;
    }

    /// As change(), but a value outside the bounds is logged and replaced by the bound. The comparison comes
    /// first: who asks for too much once more is notified once more, and so reads again what is stored.
    template <typename T, typename Class>
    void changeWithin(T &member, T value, const T &lowest, const T &highest, void (Class::*signal)())
    {
        const Hold hold(*this);
        if (member != value) {
            store(member, within(value, lowest, highest), signal);
        }
    }

    mutable SharedMutex m_mutex;

private:
    /// With the mutex held.
    template <typename Member, typename T, typename Class>
    void store(Member &member, const T &value, void (Class::*signal)())
    {
        member = value;
        announce(static_cast<Class &>(*this), signal);
    }

    /// The nearest value within the bounds; the lower one decides if they cross. A NaN counts as too small.
    template <typename T> T within(T value, T lowest, T highest) const
    {
        if (value < lowest || std::isnan(value)) {
            logReplaced("KLEIN", value, lowest);
            return lowest;
        }
        if (value > highest) {
            logReplaced("GROß", value, highest);
            return highest;
        }
        return value;
    }

    template <typename T> void logReplaced(const char *what, T value, T bound) const
    {
        const QString title = QStringLiteral("[%1 WERT ZU %2]").arg(metaObject()->className(), what);
        criticalStream() << qUtf8Printable(title) << value << "wird zu" << bound << "geändert.";
    }
};

/// Makes the types of a class's signals known by name. QML looks them up so when a signal comes from another
/// thread, and drops the signal if it does not find them.
inline bool registerArgumentTypes(const QMetaObject &type)
{
    for (int method = 0; method < type.methodCount(); ++method) {
        for (int parameter = 0; parameter < type.method(method).parameterCount(); ++parameter) {
            type.method(method).parameterMetaType(parameter).id(); // registers it
        }
    }
    return true;
}

/// Gives a class its one object: made on first use, alive until the process ends, owned neither by QML nor by
/// Python. The class befriends it and keeps its constructor private, else QML would make a second object.
template <typename Object> class SharedSingleton
{
public:
    static Object &instance()
    {
        static Object object;
        static const bool registered = registerArgumentTypes(Object::staticMetaObject);
        Q_UNUSED(registered)
        return object;
    }

    /// The factory that the QML engine calls.
    static Object *create(QQmlEngine * /*qmlEngine*/, QJSEngine * /*jsEngine*/)
    {
        Object &object = instance();
        QJSEngine::setObjectOwnership(&object, QJSEngine::CppOwnership);
        return &object;
    }
};
