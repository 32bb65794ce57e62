#include "notification_brake.h"

#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QThread>

#include <atomic>
#include <memory>

namespace {

/// As many changes as wait for the GUI thread before a writer is held back.
constexpr int changesAhead = 5000;

/// Counts the events that the brake sends to the object.
class Changed : public QObject
{
public:
    bool event(QEvent *event) override
    {
        markers += event->type() == QEvent::MetaCall ? 1 : 0;
        return QObject::event(event);
    }

    int markers = 0;
};

/// A thread that tells of changes while the GUI thread does something else.
class Writer
{
public:
    Writer(QObject &changed, int changes)
        : m_thread(QThread::create([this, &changed, changes] {
            for (int change = 0; change < changes; ++change) {
                brakeNotifications(changed);
                m_passed = change + 1;
            }
        }))
    {
        m_thread->start();
    }

    ~Writer() { m_thread->wait(); }
    Q_DISABLE_COPY_MOVE(Writer)

    int passed() const { return m_passed; }
    bool isRunning() const { return m_thread->isRunning(); }

private:
    std::atomic<int> m_passed = 0;
    std::unique_ptr<QThread> m_thread;
};

class NotificationBrake : public testing::Test
{
protected:
    // The brake counts for the whole process: what a test leaves behind is handled before its object goes.
    ~NotificationBrake() override { QCoreApplication::processEvents(); }

    Changed changed;
};

} // namespace

TEST_F(NotificationBrake, TheObjectsOwnThreadIsNeverHeldBack)
{
    for (int change = 0; change < 2 * changesAhead; ++change) {
        brakeNotifications(changed);
    }
    QCoreApplication::processEvents();
    EXPECT_EQ(changed.markers, 0);
}

TEST_F(NotificationBrake, OneEventStandsForAllChangesUntilItIsHandled)
{
    {
        const Writer writer(changed, changesAhead);
    }
    QCoreApplication::processEvents();
    EXPECT_EQ(changed.markers, 1);
    {
        const Writer writer(changed, 2);
    }
    QCoreApplication::processEvents();
    EXPECT_EQ(changed.markers, 2);
}

TEST_F(NotificationBrake, AWriterFarAheadIsHeldBackAtEveryChange)
{
    constexpr int further = 20;
    QElapsedTimer timer;
    timer.start();
    {
        const Writer writer(changed, 1 + changesAhead + further);
    }
    // 5 ms each, less what the clock may be coarse by. That it ends at all shows that the wait is bounded: no
    // event was handled meanwhile.
    EXPECT_GE(timer.elapsed(), 4 * further);
    EXPECT_EQ(changed.markers, 0);
}

TEST_F(NotificationBrake, HandlingTheEventLetsTheWriterGoOn)
{
    constexpr int changes = 40 * changesAhead;
    const Writer writer(changed, changes);
    while (writer.isRunning()) {
        QCoreApplication::processEvents();
    }
    EXPECT_EQ(writer.passed(), changes);
    // Held back from the first round on, the rest would have been one marker.
    EXPECT_GE(changed.markers, 2);
}

TEST_F(NotificationBrake, SeveralWritersShareOneBrake)
{
    Changed other;
    {
        const Writer first(changed, changesAhead / 2);
        const Writer second(other, changesAhead / 2);
    }
    QCoreApplication::processEvents();
    EXPECT_EQ(changed.markers + other.markers, 1);
}
