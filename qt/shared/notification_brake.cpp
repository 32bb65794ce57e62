#include "notification_brake.h"

#include <QCoreApplication>
#include <QMutex>
#include <QThread>
#include <QWaitCondition>

namespace {

constexpr int changesAhead = 5000;
constexpr unsigned long longestWaitMs = 5;

/// Counts the changes since the last moment at which the GUI thread had handled all that was posted. That
/// moment is found by an event behind them.
class Brake
{
public:
    void passed(QObject &guiObject)
    {
        QMutexLocker lock(&m_mutex);
        if (!m_markerPosted) {
            m_markerPosted = true;
            m_changes = 0;
            lock.unlock();
            QMetaObject::invokeMethod(
                &guiObject, [this] { caughtUp(); }, Qt::QueuedConnection);
            return;
        }
        if (++m_changes > changesAhead) {
            m_caughtUp.wait(&m_mutex, longestWaitMs);
        }
    }

private:
    void caughtUp()
    {
        const QMutexLocker lock(&m_mutex);
        m_markerPosted = false;
        m_caughtUp.wakeAll();
    }

    QMutex m_mutex;
    QWaitCondition m_caughtUp;
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
    static Brake brake;
    brake.passed(changed);
}
