#include "shared/notification_brake.h"

#include "shared/gui_thread.h"

#include <QCoreApplication>
#include <QThread>

#include <algorithm>
#include <utility>

namespace {

/// The calls of the backend that run on this thread.
constinit thread_local int t_calls = 0;

} // namespace

NotificationBrake::NotificationBrake()
{
    m_receiver.moveToThread(QCoreApplication::instance()->thread());
    m_endOfTurn.moveToThread(m_receiver.thread());
    m_endOfTurn.setSingleShot(true);
    QObject::connect(&m_endOfTurn, &QTimer::timeout, &m_receiver, [] { instance().turnEnds(); });
}

NotificationBrake &NotificationBrake::instance()
{
    // Leaked on purpose: a thread of the backend may be the last to go.
    static auto *const brake = new NotificationBrake;
    return *brake;
}

void NotificationBrake::told(int cost)
{
    std::unique_lock lock(m_mutex);
    m_told += cost;
    if (!m_markWaits) {
        postMark();
    }
    if (m_stops > 0) {
        waitInTurn(lock);
    }
    if (holdsBack()) {
        waitForGuiThread(lock);
    } else if (goesOnRegardless()) {
        waitForItsCost(lock, cost);
    }
}

void NotificationBrake::waitForGuiThread(std::unique_lock<std::mutex> &lock)
{
    ++m_held;
    ++m_timesHeld;
    const bool moved = m_moved.wait_for(lock, longestWait, [this] { return !holdsBack(); });
    --m_held;
    if (!moved) {
        m_stuck = true;
        m_moved.notify_all();
    }
}

void NotificationBrake::waitInTurn(std::unique_lock<std::mutex> &lock)
{
    const bool callMayWaitForThis = m_calls > 0 && account() <= farTooMuch;
    if (!isFull() || t_calls > 0 || callMayWaitForThis || m_patience.count() <= 0) {
        return;
    }
    QElapsedTimer timer;
    timer.start();
    m_moved.wait_for(lock, waitOfTurn(), [this] { return m_stops == 0; });
    m_patience -= std::chrono::nanoseconds(timer.nsecsElapsed());
}

/// The more waits already, the longer: each turn adds something, and a call has several turns before it.
std::chrono::nanoseconds NotificationBrake::waitOfTurn() const
{
    const auto wait = std::chrono::nanoseconds(shortestWaitInTurn) * account() / farTooMuch;
    return std::clamp<std::chrono::nanoseconds>(wait, shortestWaitInTurn, longestWaitInTurn);
}

/// What is told of while nobody waits for the GUI thread takes it no longer than it takes to tell.
void NotificationBrake::waitForItsCost(std::unique_lock<std::mutex> &lock, int cost)
{
    m_debt += std::chrono::nanoseconds(aimedDelay) * cost / m_capacity;
    if (m_debt < shortestWait) {
        return;
    }
    const auto wait = std::min<std::chrono::nanoseconds>(std::exchange(m_debt, {}), longestWaitForItsCost);
    m_moved.wait_for(lock, wait, [this] { return !goesOnRegardless(); });
}

bool NotificationBrake::goesOnRegardless() const
{
    if (!m_loopRuns || t_calls > 0) {
        return false;
    }
    return m_stops == 0 ? m_stuck && account() > m_capacity
                        : m_patience.count() <= 0 && account() > farTooMuch;
}

void NotificationBrake::addBacklog(qint64 cost)
{
    const std::lock_guard lock(m_mutex);
    m_backlog += cost;
    if (cost < 0) {
        m_moved.notify_all();
    }
}

qint64 NotificationBrake::waiting() const
{
    const std::lock_guard lock(m_mutex);
    return account();
}

qint64 NotificationBrake::capacity() const
{
    const std::lock_guard lock(m_mutex);
    return m_capacity;
}

int NotificationBrake::held() const
{
    const std::lock_guard lock(m_mutex);
    return m_held;
}

int NotificationBrake::timesHeld() const
{
    const std::lock_guard lock(m_mutex);
    return m_timesHeld;
}

void NotificationBrake::guiThreadStops(std::chrono::milliseconds patience)
{
    const std::lock_guard lock(m_mutex);
    ++m_stops;
    m_patience = patience;
    m_moved.notify_all();
}

void NotificationBrake::guiThreadGoesOn()
{
    const std::lock_guard lock(m_mutex);
    --m_stops;
    m_moved.notify_all();
}

void NotificationBrake::callBegins()
{
    ++t_calls;
    const std::lock_guard lock(m_mutex);
    ++m_calls;
}

void NotificationBrake::callEnds()
{
    --t_calls;
    const std::lock_guard lock(m_mutex);
    --m_calls;
}

/// Puts a mark behind all that waits: once it is handled, all of that is.
void NotificationBrake::postMark()
{
    m_markWaits = true;
    m_sinceMark.start();
    m_markedUpTo = m_told;
    // Captures nothing: the thread sanitizer does not see how Qt hands a captured value to the other thread.
    QMetaObject::invokeMethod(
        &m_receiver, [] { instance().handled(); }, Qt::QueuedConnection);
}

/// The GUI thread has come to a mark.
void NotificationBrake::handled()
{
    Q_ASSERT(onGuiThread());
    const std::lock_guard lock(m_mutex);
    const qint64 told = m_markedUpTo;
    m_loopRuns = QThread::currentThread()->loopLevel() > 0;
    followEndOfLoop();
    m_stuck = false;
    if (!m_endOfTurn.isActive()) {
        m_turn.start();
        m_endOfTurn.start();
    }
    m_turnIsLong = m_turn.hasExpired(longestTurn.count());
    measure(told - m_handled);
    m_handled = told;
    m_markWaits = false;
    if (m_told != m_handled) {
        postMark();
    }
    m_moved.notify_all();
}

void NotificationBrake::followEndOfLoop()
{
    if (std::exchange(m_endFollowed, true)) {
        return;
    }
    const auto loopEnds = [this] {
        const std::lock_guard lock(m_mutex);
        m_loopRuns = m_endFollowed = false;
        m_moved.notify_all();
    };
    QObject::connect(QCoreApplication::instance(), &QCoreApplication::aboutToQuit, &m_receiver, loopEnds,
                     static_cast<Qt::ConnectionType>(Qt::DirectConnection | Qt::SingleShotConnection));
}

/// The event loop has come to its timers: all that was in its queue is handled, and what the operator did as
/// well.
void NotificationBrake::turnEnds()
{
    const std::lock_guard lock(m_mutex);
    m_turnIsLong = false;
    m_moved.notify_all();
}

/// Fits the capacity to the time that the GUI thread took for so much. Of few it may have taken longer for
/// other reasons.
void NotificationBrake::measure(qint64 cost)
{
    const qint64 took = std::max<qint64>(m_sinceMark.nsecsElapsed(), 1);
    const qint64 aimed = std::chrono::nanoseconds(aimedDelay).count() * cost / took;
    const qint64 least = cost < fewAtATime ? m_capacity / 2 : smallestCapacity;
    const qint64 lowest = std::max(least, smallestCapacity);
    if (cost >= fewAtATime || aimed < m_capacity || 2 * cost >= m_capacity) {
        m_capacity = std::clamp(aimed, lowest, std::min(2 * m_capacity, largestCapacity));
    }
}

void NotificationBacklog::set(qint64 cost)
{
    Q_ASSERT(onGuiThread());
    if (cost != m_cost) {
        NotificationBrake::instance().addBacklog(cost - std::exchange(m_cost, cost));
    }
}

GuiThreadWaits::GuiThreadWaits(For what)
    : m_onGuiThread(guiThread() == QThread::currentThread())
{
    if (m_onGuiThread) {
        const std::chrono::milliseconds none{0};
        NotificationBrake::instance().guiThreadStops(
            what == CallOfBackend ? NotificationBrake::allWaitsInTurns : none);
    }
}

GuiThreadWaits::~GuiThreadWaits()
{
    if (m_onGuiThread) {
        NotificationBrake::instance().guiThreadGoesOn();
    }
}
