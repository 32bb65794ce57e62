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
    m_moved.wait_for(lock, longestWaitInTurn, [this] { return m_stops == 0; });
    m_patience -= std::chrono::nanoseconds(timer.nsecsElapsed());
}

void NotificationBrake::setBacklog(qint64 cost)
{
    Q_ASSERT(onGuiThread());
    const std::lock_guard lock(m_mutex);
    m_backlog = cost;
    m_moved.notify_all();
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
    m_markTells = false;
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
    m_markTells = m_stops == 0;
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

/// Fits the capacity to the time that the GUI thread took for so much.
void NotificationBrake::measure(qint64 cost)
{
    if (!m_markTells || cost < smallestCapacity) {
        return;
    }
    const qint64 took = std::max<qint64>(m_sinceMark.nsecsElapsed(), 1);
    const qint64 aimed = std::chrono::nanoseconds(aimedDelay).count() * cost / took;
    m_capacity = std::clamp(aimed, smallestCapacity, std::min(2 * m_capacity, largestCapacity));
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
