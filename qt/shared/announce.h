#pragma once

#include "shared/gui_thread.h"

#include <QObject>
#include <QThread>

#include <type_traits>
#include <utility>

/// How long the GUI thread takes for one notification. The unit is the time of a light binding.
enum class Cost : int {
    Binding = 1,
    ConsoleLine = 10,
    Toast = 5,
    Rows = 100,    ///< Some rows of a page are made anew.
    Dialog = 1000, ///< A dialog is made and opened.
};

/// While one exists, its thread is not held back; once the outermost one goes, it is, if it told too much.
/// For a thread that holds a mutex: the GUI thread might wait for that.
class AnnouncesLater
{
public:
    AnnouncesLater() { ++t_depth; }

    ~AnnouncesLater()
    {
        if (--t_depth == 0 && t_cost != 0) {
            tellBrake(std::exchange(t_cost, 0));
        }
    }

    Q_DISABLE_COPY_MOVE(AnnouncesLater)

    /// Adds to what this thread has told. Tells the brake at once, unless an AnnouncesLater of this thread
    /// exists.
    static void add(int cost)
    {
        if (t_depth > 0) {
            t_cost += cost;
        } else {
            tellBrake(cost);
        }
    }

private:
    /// Holds this thread back if need be.
    static void tellBrake(int cost);

    static inline constinit thread_local int t_depth = 0;
    static inline constinit thread_local int t_cost = 0;
};

/// Whether a signal of this object, emitted here, is an event for the GUI thread. Without an application
/// nothing is queued yet, and what lives on another thread than the screens does not reach them.
inline bool isForGuiThread(const QObject &object)
{
    const QThread *const home = object.thread();
    return home != QThread::currentThread() && home != nullptr && home == guiThread();
}

/// The one way in which a shared object tells of anything: emits the signal, and holds back a thread that
/// tells the GUI thread of more than it can take. Any thread.
template <Cost cost = Cost::Binding, typename Object, typename Class, typename... Parameters,
          typename... Arguments>
void announce(Object &object, void (Class::*signal)(Parameters...), Arguments &&...arguments)
{
    (object.*signal)(std::forward<Arguments>(arguments)...);
    if (isForGuiThread(object)) {
        AnnouncesLater::add(static_cast<int>(cost));
    }
}
