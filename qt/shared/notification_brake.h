#pragma once

#include <QElapsedTimer>
#include <QObject>
#include <QTimer>

#include <chrono>
#include <condition_variable>
#include <mutex>

/// Holds back a thread that tells the GUI thread of more than it can take.
///
/// What another thread tells of is an event of the GUI thread. A backend that tells without a pause would
/// fill its queue without end, and no press would get through. So the brake keeps the account of what was
/// told and is not handled yet, and whoever adds to a full account waits until the GUI thread has gone on.
/// How much it may hold follows from how fast the GUI thread was so far.
///
/// Nobody waits for a GUI thread that cannot go on: before its event loop runs and after it has ended, while
/// it waits for another thread itself (GuiThreadWaits), and once it has stood still for `longestWait`, until
/// it moves again.
///
/// With one exception: until a call of the backend has the GIL, each thread that wants it as well has its
/// turn, and would fill it with hundreds of notifications. If each of them is a dialog, of which the backend
/// is told in calls again, the queue would grow faster than it is handled. So in such a turn one waits too,
/// which costs the call some turns, but not without end: the call may itself wait for that thread
/// (BackendRuns), so while it runs that takes an account of `farTooMuch`. The thread of the call never waits.
///
/// Any thread. Who waits holds no mutex but, in Python, the GIL.
class NotificationBrake
{
public:
    /// How much the account may hold, in the unit of `Cost`.
    static constexpr qint64 capacityAtStart = 1'000;
    static constexpr qint64 smallestCapacity = 1;
    static constexpr qint64 largestCapacity = 5'000;
    /// In this time the GUI thread shall be through with a full account.
    static constexpr std::chrono::milliseconds aimedDelay{100};
    /// The time for fewer than that says little about the time for one.
    static constexpr qint64 fewAtATime = 100;
    /// After it the event loop goes on to its other sources, before anything more is told.
    static constexpr std::chrono::milliseconds longestTurn{50};
    static constexpr std::chrono::seconds longestWait{1};
    /// Of a thread that tells too much of a GUI thread that stands still.
    static constexpr std::chrono::milliseconds shortestWait{1};
    static constexpr std::chrono::milliseconds longestWaitForItsCost{100};
    static constexpr qint64 farTooMuch = 10'000;
    /// In a turn with the GIL, from an account of `farTooMuch` on in proportion to it; and in all turns of
    /// one call.
    static constexpr std::chrono::milliseconds shortestWaitInTurn{1};
    static constexpr std::chrono::milliseconds longestWaitInTurn{10};
    static constexpr std::chrono::milliseconds allWaitsInTurns{1000};

    static NotificationBrake &instance();

    /// Adds what was told of to the account. Call it after the signal, without a lock, and not on the GUI
    /// thread.
    void told(int cost);

    /// Not handled yet, and how much of that there may be.
    qint64 waiting() const;
    qint64 capacity() const;
    /// The threads that are held back at present.
    int held() const;
    /// How often one was held back so far.
    int timesHeld() const;

private:
    friend class GuiThreadWaits;
    friend class BackendRuns;
    friend class NotificationBacklog;

    NotificationBrake();

    void addBacklog(qint64 cost);
    void guiThreadStops(std::chrono::milliseconds patience);
    void callBegins();
    void callEnds();
    void guiThreadGoesOn();
    void handled();
    qint64 account() const { return m_told - m_handled + m_backlog; }
    bool isFull() const { return m_loopRuns && !m_stuck && (m_turnIsLong || account() > m_capacity); }
    bool holdsBack() const { return isFull() && m_stops == 0; }
    void waitForGuiThread(std::unique_lock<std::mutex> &lock);
    void waitInTurn(std::unique_lock<std::mutex> &lock);
    std::chrono::nanoseconds waitOfTurn() const;
    void waitForItsCost(std::unique_lock<std::mutex> &lock, int cost);
    bool goesOnRegardless() const;
    void postMark();
    void followEndOfLoop();
    void turnEnds();
    void measure(qint64 cost);

    mutable std::mutex m_mutex;
    std::condition_variable m_moved;
    QObject m_receiver; ///< Of the mark, on the GUI thread.
    qint64 m_told = 0;
    qint64 m_handled = 0;
    qint64 m_markedUpTo = 0; ///< What was told of before the mark that waits.
    qint64 m_backlog = 0;
    qint64 m_capacity = capacityAtStart;
    QElapsedTimer m_sinceMark;
    bool m_markWaits = false;
    bool m_loopRuns = false;
    bool m_endFollowed = false;
    QTimer m_endOfTurn;   ///< On the GUI thread; runs until the event loop has come to its timers.
    QElapsedTimer m_turn; ///< Since the first mark after that.
    bool m_turnIsLong = false;
    bool m_stuck = false;
    int m_stops = 0;
    int m_calls = 0;                        ///< Of the backend, that run now.
    std::chrono::nanoseconds m_patience{0}; ///< What is left of allWaitsInTurns.
    std::chrono::nanoseconds m_debt{0};     ///< Time that is waited for together, once it is worth it.
    int m_held = 0;
    int m_timesHeld = 0;
};

/// What a screen has taken from the event queue and not handled yet. GUI thread.
class NotificationBacklog
{
public:
    NotificationBacklog() = default;
    ~NotificationBacklog() { set(0); }
    Q_DISABLE_COPY_MOVE(NotificationBacklog)

    /// So much is left of it, in place of what was said before.
    void set(qint64 cost);

private:
    qint64 m_cost = 0;
};

/// While one exists, the GUI thread waits for another thread, and no thread is held back. On any other
/// thread it does nothing. Whatever makes the GUI thread wait for what may run Python has one.
class GuiThreadWaits
{
public:
    enum For { Thread, CallOfBackend };

    explicit GuiThreadWaits(For what = Thread);
    ~GuiThreadWaits();

    Q_DISABLE_COPY_MOVE(GuiThreadWaits)

private:
    const bool m_onGuiThread;
};

/// Exists while a function of the backend runs, from when it has the GIL. Any thread.
class BackendRuns
{
public:
    BackendRuns() { NotificationBrake::instance().callBegins(); }
    ~BackendRuns() { NotificationBrake::instance().callEnds(); }
    Q_DISABLE_COPY_MOVE(BackendRuns)
};
