#pragma once

#include <QtGlobal>

#include <chrono>
#include <condition_variable>
#include <mutex>

/// The time that calls are measured with.
class CallClock
{
public:
    using Time = std::chrono::steady_clock::time_point;

    CallClock() = default;
    virtual ~CallClock();
    Q_DISABLE_COPY_MOVE(CallClock)

    virtual Time now() const;
    /// Waits until that time has come, or somebody notifies.
    virtual void wait(std::condition_variable &changed, std::unique_lock<std::mutex> &lock, Time until) const;
};

/// Tells the log of a call into the backend that does not come back: which one, once for each, and where all
/// Python threads stand.
///
/// The watcher is a daemon thread of Python's that `threading` does not know. It waits without the GIL, and
/// writes that line without it. Then it takes the GIL for the stacks; where native code keeps the GIL to
/// itself, the line stands alone. One mutex, with which nobody waits for the GIL or writes.
namespace SlowCalls {

/// Longer than that, and the operator wonders.
inline constexpr std::chrono::seconds patience{2};

/// Begins to watch. Interpreter thread, with the GIL, which others may have meanwhile. Throws if there is no
/// thread to be had.
void start();

/// Ends it, and waits until the watcher has let go. Interpreter thread, with the GIL, likewise. Does nothing
/// without a start.
void stop();

/// Another clock than that of the system, before the start; it lives until after the stop.
void setClock(const CallClock &clock);
/// Looks at the clock again. Any thread.
void lookAgain();

} // namespace SlowCalls

/// A call that is watched as long as it lives. Within a BackendActivity, which names it; interpreter thread,
/// one at a time.
class WatchedCall
{
public:
    WatchedCall();
    ~WatchedCall();

    Q_DISABLE_COPY_MOVE(WatchedCall)
};
