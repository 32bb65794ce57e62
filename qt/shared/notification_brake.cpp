#include "notification_brake.h"

#include <QCoreApplication>
#include <QThread>

#include <chrono>
#include <condition_variable>
#include <mutex>

namespace {

constexpr int changesAhead = 5000;
constexpr std::chrono::milliseconds longestWait(5);

/// Counts the changes since the last moment at which the GUI thread had handled all that was posted. That
/// moment is found by an event behind them.
class Brake
{
public:
    static Brake &instance()
    {
        static Brake brake;
        return brake;
    }

    void passed(QObject &guiObject)
    {
        std::unique_lock lock(m_mutex);
        if (!m_markerPosted) {
            m_markerPosted = true;
            m_changes = 0;
            lock.unlock();
            QMetaObject::invokeMethod(
                &guiObject, [] { instance().caughtUp(); }, Qt::QueuedConnection);
            return;
        }
        if (++m_changes > changesAhead) {
            m_caughtUp.wait_for(lock, longestWait);
        }
    }

private:
    void caughtUp()
    {
        const std::lock_guard lock(m_mutex);
        m_markerPosted = false;
        m_caughtUp.notify_all();
    }

    std::mutex m_mutex;
    std::condition_variable m_caughtUp;
    bool m_markerPosted = false;
    int m_changes = 0;
};

} // namespace

void brakeNotifications(QObject &changed)
{
    // Without an application nothing is queued yet; on the object's own thread nothing is queued at all; and
    // what lives elsewhere than the screens does not reach them.
    const QCoreApplication *application = QCoreApplication::instance();
    if (application == nullptr || changed.thread() != application->thread() ||
        changed.thread() == QThread::currentThread()) {
        return;
    }
    Brake::instance().passed(changed);
}
