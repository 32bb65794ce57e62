#include "src/py/slow_calls.h"

#include "shared/log.h"
#include "src/py/backend_activity.h"
#include "src/py/interpreter_thread.h"
#include "src/py/python_stacks.h"

#include <pybind11/pybind11.h>

#include <QString>

#include <cstdint>
#include <optional>

namespace py = pybind11;

namespace {

struct SlowCall
{
    std::uint64_t number;
    QString text;
};

/// The call that runs, and the watcher's part in it. Any thread.
class CallRecord
{
public:
    void setClock(const CallClock &clock)
    {
        const std::lock_guard lock(m_mutex);
        m_clock = &clock;
    }

    void begin()
    {
        const std::lock_guard lock(m_mutex);
        ++m_number;
        m_state = Runs;
        m_due = m_clock->now() + SlowCalls::patience;
        // Else the watcher has a time to wake up at, and looks then what runs.
        if (m_watcher == Idle) {
            m_changed.notify_all();
        }
    }

    void end()
    {
        const std::lock_guard lock(m_mutex);
        m_state = None;
    }

    bool isRunning(const SlowCall &call) const
    {
        const std::lock_guard lock(m_mutex);
        return m_number == call.number && m_state != None;
    }

    void waitForWatcher()
    {
        std::unique_lock lock(m_mutex);
        m_changed.wait(lock, [this] { return m_watcher != Absent; });
    }

    void stop()
    {
        std::unique_lock lock(m_mutex);
        if (m_watcher == Absent) {
            return;
        }
        m_stops = true;
        m_changed.notify_all();
        m_changed.wait(lock, [this] { return m_watcher == Absent; });
        m_stops = false;
    }

    void lookAgain()
    {
        // Who has looked at the clock already waits before this mutex is to be had.
        const std::lock_guard lock(m_mutex);
        m_changed.notify_all();
    }

    /// For the watcher: waits for a call that has been running for too long, each once; none if there is no
    /// more to watch.
    std::optional<SlowCall> next()
    {
        std::unique_lock lock(m_mutex);
        if (m_watcher == Absent) {
            m_watcher = Idle;
            m_changed.notify_all();
        }
        while (!m_stops) {
            if (m_state != Runs) {
                m_watcher = Idle;
                m_changed.wait(lock);
            } else if (m_clock->now() < m_due) {
                m_watcher = Waits;
                m_clock->wait(m_changed, lock, m_due);
            } else {
                m_state = RunsSlowly;
                // The call cannot end before the mutex is free, so this is its name.
                return SlowCall{.number = m_number, .text = BackendActivity::text()};
            }
        }
        m_watcher = Absent;
        m_changed.notify_all();
        return std::nullopt;
    }

private:
    enum State { None, Runs, RunsSlowly };
    enum Watcher { Absent, Idle, Waits };

    mutable std::mutex m_mutex;
    std::condition_variable m_changed;
    const CallClock m_systemClock{};
    const CallClock *m_clock = &m_systemClock;
    CallClock::Time m_due;
    std::uint64_t m_number = 0; ///< Of the call that runs or has run.
    State m_state = None;
    Watcher m_watcher = Absent;
    bool m_stops = false;
};

CallRecord &record()
{
    static CallRecord calls;
    return calls;
}

/// Any thread, without the GIL.
std::optional<SlowCall> nextSlowCall()
{
    auto call = record().next();
    if (call) {
        logWarning("%s läuft seit %lld s", qUtf8Printable(call->text),
                   static_cast<long long>(SlowCalls::patience.count()));
    }
    return call;
}

void writeStacks(const SlowCall &call)
{
    const QByteArray stacks = record().isRunning(call) ? PythonStacks::text() : QByteArray();
    if (!stacks.isEmpty()) {
        // Nobody may wait for the reader of the log with the GIL.
        const py::gil_scoped_release free;
        logWarning("Die Python-Threads:\n%s", stacks.trimmed().constData());
    }
}

/// The watcher's thread. Begins and ends with the GIL.
void watch()
{
    for (;;) {
        std::optional<SlowCall> call;
        {
            const py::gil_scoped_release free;
            call = nextSlowCall();
        }
        if (!call) {
            return;
        }
        writeStacks(*call);
    }
}

} // namespace

CallClock::~CallClock() = default;

CallClock::Time CallClock::now() const
{
    return std::chrono::steady_clock::now();
}

void CallClock::wait(std::condition_variable &changed, std::unique_lock<std::mutex> &lock, Time until) const
{
    changed.wait_until(lock, until);
}

void SlowCalls::start()
{
    Q_ASSERT(onInterpreterThread());
    py::module_::import("_thread").attr("start_new_thread")(py::cpp_function(watch), py::tuple());
    // The thread needs the GIL to begin, and the first call may keep it.
    const py::gil_scoped_release free;
    record().waitForWatcher();
}

void SlowCalls::stop()
{
    Q_ASSERT(onInterpreterThread());
    const py::gil_scoped_release free;
    record().stop();
}

void SlowCalls::setClock(const CallClock &clock)
{
    record().setClock(clock);
}

void SlowCalls::lookAgain()
{
    record().lookAgain();
}

WatchedCall::WatchedCall()
{
    Q_ASSERT(onInterpreterThread());
    record().begin();
}

WatchedCall::~WatchedCall()
{
    record().end();
}
