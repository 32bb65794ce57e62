#pragma once

#include <QJSEngine>
#include <QMutexLocker>
#include <QObject>
#include <QRecursiveMutex>

#include <utility>

class QQmlEngine;

#if defined(__SANITIZE_THREAD__)
#include <sanitizer/tsan_interface.h>
#endif

/// The recursive mutex of a shared object. Tells the thread sanitizer what Qt's futex code hides from it.
class SharedMutex
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
    QRecursiveMutex m_mutex;
};

using SharedLocker = QMutexLocker<SharedMutex>;

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
    template <typename T>
    T read(const T &member) const
    {
        const SharedLocker lock(&m_mutex);
        return member;
    }

    /// The change pattern: lock, compare, store, notify. Returns whether the member changed.
    template <typename T, typename Notify>
    bool change(T &member, const T &value, const Notify &notify)
    {
        const SharedLocker lock(&m_mutex);
        if (member == value) {
            return false;
        }
        member = value;
        notify();
        return true;
    }

    mutable SharedMutex m_mutex;
};

/// Gives a class its one object: made on first use, alive until the process ends, owned neither by QML nor by
/// Python. The class befriends it and keeps its constructor private, else QML would make a second object.
template <typename Object>
class SharedSingleton
{
public:
    static Object &instance()
    {
        static Object object;
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
