#include "src/py/slow_calls.h"

#include "bridge_test.h"
#include "eventually.h"
#include "log_capture.h"

#include <QSemaphore>

#include <atomic>

using namespace std::chrono_literals;
using testing::AllOf;
using testing::HasSubstr;
using testing::Not;
using testing::SizeIs;

namespace {

/// Stands still, but for the test. Nobody waits for a time.
class TestClock : public CallClock
{
public:
    Time now() const override { return Time(m_time.load()); }

    void wait(std::condition_variable &changed, std::unique_lock<std::mutex> &lock,
              Time /*until*/) const override
    {
        ++m_waits;
        changed.wait(lock);
    }

    void advance(Time::duration time)
    {
        m_time = m_time.load() + time;
        SlowCalls::lookAgain();
    }

    /// How often somebody has begun to wait for a time.
    int waits() const { return m_waits; }

private:
    mutable std::atomic<int> m_waits = 0;
    std::atomic<Time::duration> m_time = Time::duration::zero();
};

const QString stop = QStringLiteral("sensor_value_from_cpp(Stop) läuft seit 2 s");
const QString level = QStringLiteral("sensor_value_from_cpp(Level) läuft seit 2 s");
const QString stacks = QStringLiteral("Die Python-Threads:");

class SlowCallsTest : public BridgeTest
{
protected:
    SlowCallsTest() { SlowCalls::setClock(clock); }

    /// Calls the backend, which stays there until the page of charts is asked for.
    void call(BackendRun &run, const char *input = "StopBtn")
    {
        const auto entered = [&] { return run.tellings.texts().count(QStringLiteral("entered")); };
        const auto before = entered();
        act("brovik.sensor", qPrintable(QStringLiteral("Sensor.stateChangeRequested(SensorEnums.%1, true)")
                                            .arg(QLatin1String(input))));
        while (entered() == before) {
            QThread::yieldCurrentThread();
        }
    }

    /// Lets the call come back.
    void leave(BackendRun &run)
    {
        gui.changePage(Gui::PageChart);
        run.waitForStart();
        gui.changePage(Gui::PageAuto);
    }

    QStringList slow() const { return log.texts(QtWarningMsg).filter(QStringLiteral("läuft seit")); }

    TestClock clock;
    LogCapture log;
};

} // namespace

TEST_F(SlowCallsTest, LineAndStacksComeWhileTheFunctionRuns)
{
    BackendRun run("slow_calls");
    call(run);
    clock.advance(SlowCalls::patience);
    EXPECT_TRUE(log.waitFor(stop));
    EXPECT_TRUE(log.waitFor(stacks));
    EXPECT_FALSE(run.tellings.texts().contains(QStringLiteral("left")));
    const QStringList warnings = log.texts(QtWarningMsg);
    ASSERT_THAT(warnings, SizeIs(2));
    EXPECT_EQ(warnings[0], stop);
    EXPECT_THAT(warnings[1].toStdString(),
                AllOf(HasSubstr("(most recent call first):"), HasSubstr("slow_calls.py\", line "),
                      HasSubstr("in sensor_value_from_cpp")));
    leave(run);
}

TEST_F(SlowCallsTest, EachCallIsToldOnce)
{
    BackendRun run("slow_calls");
    call(run);
    clock.advance(SlowCalls::patience);
    EXPECT_TRUE(log.waitFor(stop));
    clock.advance(1h);
    leave(run);
    clock.advance(1h);
    call(run, "SensorLevel");
    clock.advance(SlowCalls::patience);
    EXPECT_TRUE(log.waitFor(level));
    leave(run);
    run.end();
    EXPECT_EQ(slow(), QStringList({stop, level}));
}

TEST_F(SlowCallsTest, CallsThatComeBackInTimeAreNoNews)
{
    BackendRun run("slow_calls");
    call(run);
    clock.advance(SlowCalls::patience - 1ns);
    leave(run);
    clock.advance(1h);
    call(run, "SensorLevel");
    clock.advance(SlowCalls::patience - 1ns);
    clock.advance(1ns);
    EXPECT_TRUE(log.waitFor(level));
    leave(run);
    run.end();
    EXPECT_EQ(slow(), QStringList({level}));
}

TEST_F(SlowCallsTest, WatcherWithoutATimeToWakeUpAtIsWokenByTheNextCall)
{
    BackendRun run("slow_calls");
    call(run);
    leave(run);
    clock.advance(1h);
    const int before = clock.waits();
    call(run);
    EXPECT_TRUE(eventually([&] { return clock.waits() > before; }));
    leave(run);
}

TEST_F(SlowCallsTest, NativeCodeThatKeepsTheGilIsToldWithoutStacks)
{
    QSemaphore goOn;
    BackendRun run("slow_calls");
    run.waitForStart();
    // Within the bound function that tells of it, on its thread.
    QObject::connect(
        &gui, &Gui::setPicoStdout, &gui,
        [&](const QString &text) {
            if (text == QLatin1String("left")) {
                goOn.acquire();
            }
        },
        Qt::DirectConnection);
    act("brovik.sensor", "Sensor.stateChangeRequested(SensorEnums.StopBtn, false)");
    ASSERT_TRUE(run.tellings.waitFor(QStringLiteral("left")));
    clock.advance(SlowCalls::patience);
    EXPECT_TRUE(log.waitFor(stop));
    EXPECT_EQ(log.texts(QtWarningMsg), QStringList(stop));
    goOn.release();
    run.end();
    EXPECT_EQ(slow(), QStringList(stop));
}

TEST_F(SlowCallsTest, InitIsWatchedToo)
{
    qputenv("TEST_SLOW_INIT", "1");
    BackendRun run("slow_calls");
    while (slow().isEmpty()) { // it may not have begun yet
        clock.advance(SlowCalls::patience);
        QThread::yieldCurrentThread();
    }
    EXPECT_EQ(slow(), QStringList(QStringLiteral("init() läuft seit 2 s")));
    EXPECT_TRUE(log.waitFor(stacks));
    gui.changePage(Gui::PageChart);
    EXPECT_TRUE(run.tellings.waitFor(QStringLiteral("threads 1")));
}

TEST_F(SlowCallsTest, PythonEndsInTheMiddleOfASlowCall)
{
    BackendRun run("slow_calls");
    call(run);
    run.bridge().addPreStopHook([&] {
        clock.advance(SlowCalls::patience);
        gui.changePage(Gui::PageChart);
    });
    run.end();
    EXPECT_TRUE(run.tellings.texts().contains(QStringLiteral("left")));
}

TEST_F(SlowCallsTest, BackendThatCannotBeImportedEndsAsEver)
{
    BackendRun run("import_fails");
    run.waitForStart();
    run.end();
    clock.advance(SlowCalls::patience);
    EXPECT_EQ(slow(), QStringList());
}
