#include "shared/announce.h"
#include "shared/notification_brake.h"

#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QEventLoop>
#include <QThread>
#include <QTimer>

#include <atomic>
#include <functional>
#include <memory>

namespace {

constexpr int plenty = 20 * NotificationBrake::largestCapacity;

NotificationBrake &brake()
{
    return NotificationBrake::instance();
}

/// A thread of the backend.
class Writer
{
public:
    explicit Writer(const std::function<void()> &work)
        : m_thread(QThread::create(work))
    {
        m_thread->start();
    }

    /// Tells so often of something that costs so much.
    Writer(int count, int cost)
        : Writer([this, count, cost] {
            for (int told = 1; told <= count; ++told) {
                brake().told(cost);
                m_passed = told;
            }
        })
    {}

    ~Writer() { wait(); }
    Q_DISABLE_COPY_MOVE(Writer)

    int passed() const { return m_passed; }
    bool isRunning() const { return m_thread->isRunning(); }
    void wait() const { m_thread->wait(); }

    /// Until the brake holds this thread, or lets it through to its end.
    bool awaitHeld() const
    {
        while (isRunning() && brake().held() == 0) {
            QThread::yieldCurrentThread();
        }
        return isRunning();
    }

private:
    std::atomic<int> m_passed = 0;
    std::unique_ptr<QThread> m_thread;
};

/// The test itself is the GUI thread: it handles events when it says so.
class NotificationBrakeTest : public testing::Test
{
protected:
    // The brake is that of the process: what a test leaves behind is handled.
    ~NotificationBrakeTest() override { handleAll(); }

    static void handleAll()
    {
        while (brake().waiting() > 0) {
            QCoreApplication::processEvents();
        }
    }

    /// Runs the body in an event loop that the brake has noticed.
    static void inEventLoop(const std::function<void()> &body)
    {
        QEventLoop loop;
        QObject context;
        const auto run = [&] {
            Writer(1, 1).wait();
            handleAll();
            body();
            loop.quit();
        };
        QMetaObject::invokeMethod(&context, run, Qt::QueuedConnection);
        loop.exec();
    }

    /// Until the backlog is gone.
    static void expectLargeBacklogToHoldBack()
    {
        NotificationBacklog backlog;
        backlog.set(brake().capacity() + 1);
        const Writer writer(1, 1);
        EXPECT_TRUE(writer.awaitHeld());
        backlog.set(0);
        writer.wait();
    }

    const int heldBefore = brake().timesHeld();
    int timesHeld() const { return brake().timesHeld() - heldBefore; }
};

} // namespace

TEST_F(NotificationBrakeTest, NobodyIsHeldBackBeforeTheEventLoopRuns)
{
    Writer(plenty, 1).wait();
    EXPECT_EQ(brake().waiting(), plenty);
    EXPECT_EQ(timesHeld(), 0);
}

TEST_F(NotificationBrakeTest, AWriterFarAheadIsHeldBackUntilTheGuiThreadHasGoneOn)
{
    inEventLoop([] {
        const Writer writer(plenty, 1);
        ASSERT_TRUE(writer.awaitHeld());
        EXPECT_GE(brake().waiting(), brake().capacity());
        EXPECT_LE(writer.passed(), NotificationBrake::largestCapacity);
        while (writer.isRunning()) {
            QCoreApplication::processEvents();
        }
        EXPECT_EQ(writer.passed(), plenty);
    });
    handleAll();
    EXPECT_GE(timesHeld(), 1);
}

TEST_F(NotificationBrakeTest, FewHeavyOnesAreHeldBackAsWellAsManyLightOnes)
{
    constexpr int heavy = 500;
    inEventLoop([] {
        const Writer writer(1000, heavy);
        ASSERT_TRUE(writer.awaitHeld());
        EXPECT_LE(writer.passed(), NotificationBrake::largestCapacity / heavy);
        while (writer.isRunning()) {
            QCoreApplication::processEvents();
        }
    });
}

TEST_F(NotificationBrakeTest, WhoIsHeldBackGoesOnWhenTheGuiThreadBeginsToWait)
{
    inEventLoop([this] {
        const Writer writer(2 * NotificationBrake::largestCapacity, 1);
        ASSERT_TRUE(writer.awaitHeld());
        const GuiThreadWaits waits;
        writer.wait();
        EXPECT_EQ(timesHeld(), 1);
    });
}

TEST_F(NotificationBrakeTest, NobodyIsHeldBackWhileTheGuiThreadWaits)
{
    inEventLoop([this] {
        const GuiThreadWaits waits;
        {
            const GuiThreadWaits nested;
        }
        Writer(plenty, 1).wait();
        EXPECT_EQ(timesHeld(), 0);
        EXPECT_EQ(brake().waiting(), plenty);
    });
}

TEST_F(NotificationBrakeTest, WhoTellsTooMuchDuringACallOfTheBackendWaitsInEachTurn)
{
    inEventLoop([this] {
        constexpr int turns = 50;
        const GuiThreadWaits waits(GuiThreadWaits::CallOfBackend);
        QElapsedTimer timer;
        timer.start();
        Writer(static_cast<int>(brake().capacity()) + turns, 1).wait();
        EXPECT_GE(timer.elapsed(), (turns * NotificationBrake::shortestWaitInTurn).count());
        EXPECT_EQ(timesHeld(), 0) << "nor any longer";
    });
}

TEST_F(NotificationBrakeTest, TheMoreWaitsDuringACallTheLongerATurnTakes)
{
    inEventLoop([] {
        constexpr int turns = 10;
        constexpr int most = NotificationBrake::longestWaitInTurn / NotificationBrake::shortestWaitInTurn;
        const GuiThreadWaits waits(GuiThreadWaits::CallOfBackend);
        Writer(1, most * NotificationBrake::farTooMuch).wait();
        QElapsedTimer timer;
        timer.start();
        Writer(turns, 1).wait();
        EXPECT_GE(timer.elapsed(), (turns * NotificationBrake::longestWaitInTurn).count());
    });
}

TEST_F(NotificationBrakeTest, AnotherThreadThatWaitsIsNotTheGuiThread)
{
    inEventLoop([] {
        const Writer writer([] {
            const GuiThreadWaits waits;
            for (int told = 0; told < plenty; ++told) {
                brake().told(1);
            }
        });
        EXPECT_TRUE(writer.awaitHeld());
        while (writer.isRunning()) {
            QCoreApplication::processEvents();
        }
    });
}

TEST_F(NotificationBrakeTest, AGuiThreadThatStandsStillIsWaitedForOnceAndThenForTheCostOfEach)
{
    inEventLoop([this] {
        QElapsedTimer timer;
        timer.start();
        constexpr int count = 2 * NotificationBrake::largestCapacity;
        Writer(count, 1).wait(); // without saying so
        EXPECT_EQ(timesHeld(), 1);
        // What has been told of beyond the capacity takes the GUI thread about as long as it took to tell.
        const auto beyond = count - brake().capacity();
        const auto least = NotificationBrake::aimedDelay * beyond / brake().capacity();
        EXPECT_GE(timer.elapsed(),
                  (NotificationBrake::longestWait + least * 9 / 10) / std::chrono::milliseconds(1));
        // It moves again.
        handleAll();
        const Writer next(plenty, 1);
        EXPECT_TRUE(next.awaitHeld());
        while (next.isRunning()) {
            QCoreApplication::processEvents();
        }
    });
}

TEST_F(NotificationBrakeTest, WhatAScreenHasTakenAndNotHandledCounts)
{
    inEventLoop([] { expectLargeBacklogToHoldBack(); });
}

TEST_F(NotificationBrakeTest, AnEmptyBacklogDoesNotCount)
{
    inEventLoop([] {
        for (int i = 0; i <= brake().capacity(); ++i) {
            const NotificationBacklog empty;
        }
        expectLargeBacklogToHoldBack();
    });
}

TEST_F(NotificationBrakeTest, AThreadWithAMutexIsHeldBackLater)
{
    inEventLoop([this] {
        std::atomic<int> heldInside = -1;
        const Writer writer([&] {
            const AnnouncesLater later;
            {
                const AnnouncesLater inner;
                AnnouncesLater::add(plenty);
            }
            heldInside = timesHeld();
        });
        EXPECT_TRUE(writer.awaitHeld());
        EXPECT_EQ(heldInside, 0);
        while (writer.isRunning()) {
            QCoreApplication::processEvents();
        }
    });
}

TEST_F(NotificationBrakeTest, ALongTurnOfTheEventLoopComesToItsTimers)
{
    int timeouts = 0;
    inEventLoop([&] {
        QTimer timer;
        QObject::connect(&timer, &QTimer::timeout, &timer, [&] { ++timeouts; });
        timer.start(0);
        std::atomic<bool> goesOn = true;
        const Writer writer([&] {
            while (goesOn) {
                brake().told(1);
            }
        });
        while (timeouts < 3) {
            QCoreApplication::processEvents(QEventLoop::EventLoopExec);
        }
        goesOn = false;
    });
}

TEST_F(NotificationBrakeTest, SeveralWritersShareOneAccount)
{
    inEventLoop([] {
        const Writer first(plenty, 1);
        const Writer second(plenty, 1);
        while (brake().held() < 2) {
            QThread::yieldCurrentThread();
        }
        EXPECT_LE(first.passed() + second.passed(), NotificationBrake::largestCapacity + 2);
        while (first.isRunning() || second.isRunning()) {
            QCoreApplication::processEvents();
        }
    });
}
