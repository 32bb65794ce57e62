#include "declared.h"
#include "gpio.h"
#include "log_capture.h"
#include "signal_log.h"
#include "simulated_chip.h"

#include <gmock/gmock.h>

#include <QTest>
#include <QThread>

#include <memory>
#include <mutex>
#include <semaphore>
#include <stdexcept>
#include <tuple>

using brovik::Edge;
using brovik::detail::GPIOWorker;
using testing::AllOf;
using testing::Each;
using testing::ElementsAre;
using testing::EndsWith;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::StartsWith;

namespace {

constexpr const char *noValidLine =
    "Konnte den GPIO-Thread nicht erfolgreich starten, da keine gültigen Lines angegeben wurden";

/// What the callbacks of a test were called with, in order. Any thread.
class Calls
{
public:
    using Call = std::tuple<uint, bool>;

    gpio_callback_func recorder()
    {
        return [this](uint line, bool rising) {
            const std::lock_guard lock(m_mutex);
            m_calls.emplace_back(line, rising);
        };
    }

    std::vector<Call> all() const
    {
        const std::lock_guard lock(m_mutex);
        return m_calls;
    }

    std::vector<uint> lines() const
    {
        std::vector<uint> result;
        for (const auto &[line, rising] : all()) {
            result.push_back(line);
        }
        return result;
    }

private:
    mutable std::mutex m_mutex;
    std::vector<Call> m_calls;
};

/// A callback that keeps the loop from its next turn until the test lets it go on.
class Gate
{
public:
    gpio_callback_func callback()
    {
        return [this](uint, bool) {
            m_entered.release();
            m_open.acquire();
        };
    }

    void waitUntilEntered() { m_entered.acquire(); }
    void open() { m_open.release(); }

private:
    std::binary_semaphore m_entered{0};
    std::binary_semaphore m_open{0};
};

template <typename Condition> bool eventually(const Condition &condition)
{
    return QTest::qWaitFor(condition, 20000);
}

std::vector<std::string> texts(const LogCapture &log, QtMsgType type)
{
    std::vector<std::string> result;
    for (const QString &text : log.texts(type)) {
        result.push_back(text.toStdString());
    }
    return result;
}

/// A chip that the service has open, and a service without a thread.
class GpioTest : public testing::Test
{
protected:
    GpioTest()
    {
        gpio.setConsumerPrefix("brovik_");
        gpio.openChip(SimulatedChip::path);
    }

    ~GpioTest() override
    {
        gpio.stopThread();
        // The service neither reads nor writes a level.
        EXPECT_EQ(chip.otherCalls(), 0U);
    }

    std::vector<std::string> errors() const { return texts(log, QtCriticalMsg); }
    bool isArmed(unsigned line) const
    {
        return eventually([&] { return chip.request(line).has_value(); });
    }
    bool isGivenUp(unsigned line) const
    {
        return eventually([&] { return !chip.request(line).has_value(); });
    }

    SimulatedChip chip;
    GPIO &gpio = GPIO::instance();
    Calls calls;
    LogCapture log;
};

/// A worker whose lines are all queued before its loop starts.
class GpioBatchTest : public GpioTest
{
protected:
    GpioBatchTest() { worker->moveToThread(&thread); }

    ~GpioBatchTest() override
    {
        thread.requestInterruption();
        thread.quit();
        thread.wait();
    }

    void start()
    {
        QObject::connect(&thread, &QThread::started, worker, &GPIOWorker::startLoop);
        QObject::connect(&thread, &QThread::finished, worker, &QObject::deleteLater);
        thread.start();
    }

    GPIOWorker *const worker = new GPIOWorker(&GPIO::instance());
    QThread thread;
};

struct EdgeCase
{
    Edge edge;
    std::uint32_t kernelEdges;
    const char *text;
};

class GpioEdgeTest : public GpioTest, public testing::WithParamInterface<EdgeCase>
{};

} // namespace

// First of all: the one object has no chip yet.

TEST(GpioWithoutChip, ArmingALineOfAChipThatWasNeverOpened)
{
    GPIO &gpio = GPIO::instance();
    ASSERT_FALSE(gpio.chip());
    const LogCapture log;
    gpio.addEventDetect(5, Edge::FALLING, [](uint, bool) {});
    EXPECT_TRUE(eventually([&] { return log.texts(QtCriticalMsg).size() == 2; }));
    gpio.stopThread();
    EXPECT_THAT(texts(log, QtCriticalMsg),
                ElementsAre(StartsWith("Fehler im GPIO-Thread [_makeBulk()]: "), noValidLine));
}

TEST(GpioWithoutChip, AnUnknownDeviceIsTheCallersError)
{
    EXPECT_THROW(GPIO::instance().openChip("/dev/null"), std::system_error);
    EXPECT_FALSE(GPIO::instance().chip());
}

TEST(GpioWithoutThread, RemovalStartsNoThread)
{
    const LogCapture log;
    GPIO::instance().removeEventDetect(5);
    GPIO::instance().stopThread();
    // Stopping a thread is logged; there was none.
    EXPECT_THAT(log.messages(), IsEmpty());
}

TEST(GpioDeclaration, SignalsAndProperties)
{
    EXPECT_THAT(declaredSignals(GPIO::staticMetaObject),
                ElementsAre("consumerPrefixChanged()",
                            "_addEventDetect(uint,brovik::Edge,gpio_callback_func)",
                            "_removeEventDetect(uint)"));
    EXPECT_THAT(declaredProperties(GPIO::staticMetaObject),
                ElementsAre(AllOf(StartsWith("std::"), HasSubstr("string"),
                                  EndsWith("consumerPrefix -> consumerPrefixChanged()"))));
    EXPECT_THAT(declaredInvokables(GPIOWorker::staticMetaObject), ElementsAre("void startLoop()"));
}

TEST(GpioDeclaration, ConsumerPrefixNotifiesOncePerChange)
{
    GPIO &gpio = GPIO::instance();
    EXPECT_EQ(gpio.consumerPrefix(), "brovik_");
    const SignalLog log(gpio);
    gpio.setConsumerPrefix("brovik_");
    EXPECT_THAT(log.names(), IsEmpty());
    gpio.setConsumerPrefix("x_");
    gpio.setConsumerPrefix("x_");
    EXPECT_THAT(log.names(), ElementsAre("consumerPrefixChanged"));
}

TEST_P(GpioEdgeTest, IsRequestedPulledUpAndActiveLowAndAnnounced)
{
    testing::internal::CaptureStdout();
    gpio.addEventDetect(17, GetParam().edge, calls.recorder());
    EXPECT_TRUE(isArmed(17));
    EXPECT_EQ(testing::internal::GetCapturedStdout(), GetParam().text);
    const auto request = chip.request(17);
    ASSERT_TRUE(request);
    EXPECT_EQ(request->label, "brovik_17");
    EXPECT_EQ(request->edges, GetParam().kernelEdges);
    EXPECT_EQ(request->flags,
              GPIOHANDLE_REQUEST_INPUT | GPIOHANDLE_REQUEST_ACTIVE_LOW | GPIOHANDLE_REQUEST_BIAS_PULL_UP);
}

INSTANTIATE_TEST_SUITE_P(Edges, GpioEdgeTest,
                         testing::Values(EdgeCase{Edge::RISING, GPIOEVENT_REQUEST_RISING_EDGE, "RISING\n"},
                                         EdgeCase{Edge::FALLING, GPIOEVENT_REQUEST_FALLING_EDGE, "FALLING\n"},
                                         EdgeCase{Edge::BOTH, GPIOEVENT_REQUEST_BOTH_EDGES, "BOTH\n"}));

TEST_F(GpioTest, AnEdgeOutsideTheEnumerationIsRefusedSilentlyByItself)
{
    testing::internal::CaptureStdout();
    gpio.addEventDetect(5, static_cast<Edge>(3), calls.recorder());
    EXPECT_TRUE(eventually([&] { return errors().size() == 2; }));
    EXPECT_EQ(testing::internal::GetCapturedStdout(), "");
    EXPECT_THAT(errors(), ElementsAre(StartsWith("GPIO Request für Line 5 fehlgeschlagen:  "), noValidLine));
}

TEST_F(GpioTest, PrefixAndOffsetMakeTheLabel)
{
    gpio.setConsumerPrefix("x_");
    gpio.addEventDetect(5, Edge::FALLING, calls.recorder());
    EXPECT_TRUE(isArmed(5));
    gpio.setConsumerPrefix("y_");
    EXPECT_EQ(chip.request(5)->label, "x_5");
}

TEST_F(GpioTest, CallbacksRunOnTheGpioThreadAtHighestPriority)
{
    std::atomic<QThread *> thread = nullptr;
    std::atomic<QThread::Priority> priority = QThread::InheritPriority;
    gpio.addEventDetect(5, Edge::FALLING, [&](uint, bool) {
        priority = QThread::currentThread()->priority();
        thread = QThread::currentThread();
    });
    ASSERT_TRUE(isArmed(5));
    chip.pulse(5);
    EXPECT_TRUE(eventually([&] { return thread != nullptr; }));
    EXPECT_NE(thread, QThread::currentThread());
    EXPECT_EQ(priority, QThread::TimeCriticalPriority);
}

TEST_F(GpioTest, ALowPinIsAnActiveLine)
{
    gpio.addEventDetect(5, Edge::BOTH, calls.recorder());
    ASSERT_TRUE(isArmed(5));
    chip.drive(5, false);
    chip.drive(5, true);
    EXPECT_TRUE(eventually([&] { return calls.all().size() == 2; }));
    EXPECT_THAT(calls.all(), ElementsAre(Calls::Call(5, true), Calls::Call(5, false)));
}

TEST_F(GpioTest, OnePulseIsOneFallingEdge)
{
    gpio.addEventDetect(5, Edge::FALLING, calls.recorder());
    ASSERT_TRUE(isArmed(5));
    chip.pulse(5);
    chip.pulse(5);
    chip.pulse(5);
    EXPECT_TRUE(eventually([&] { return calls.all().size() == 3; }));
    EXPECT_THAT(calls.all(), Each(Calls::Call(5, false)));
    EXPECT_THAT(errors(), IsEmpty());
}

TEST_F(GpioBatchTest, OneEventPerLineAndTurnAndNoneLost)
{
    Gate gate;
    worker->add(4, Edge::RISING, gate.callback());
    worker->add(5, Edge::RISING, calls.recorder());
    worker->add(6, Edge::RISING, calls.recorder());
    start();
    ASSERT_TRUE(isArmed(6));
    chip.pulse(4);
    gate.waitUntilEntered();
    chip.pulse(5);
    chip.pulse(5);
    chip.pulse(6);
    chip.pulse(6);
    gate.open();
    EXPECT_TRUE(eventually([&] { return calls.all().size() == 4; }));
    EXPECT_THAT(calls.lines(), ElementsAre(5, 6, 5, 6));
    EXPECT_THAT(calls.all(), Each(testing::FieldsAre(testing::_, true)));
}

TEST_F(GpioBatchTest, TwoRisingEventsOnOneLineTakeTwoTurns)
{
    Gate gate;
    std::atomic<int> count = 0;
    worker->add(5, Edge::RISING, [&, stop = gate.callback()](uint line, bool rising) {
        ++count;
        stop(line, rising);
    });
    start();
    ASSERT_TRUE(isArmed(5));
    chip.pulse(5);
    chip.pulse(5);
    gate.waitUntilEntered();
    EXPECT_EQ(count, 1);
    gate.open();
    gate.waitUntilEntered();
    EXPECT_EQ(count, 2);
    gate.open();
}

TEST_F(GpioBatchTest, AddedTwiceBeforeTheStartTheSecondCallbackWinsAndTheFirstRequestStays)
{
    Calls first;
    worker->add(5, Edge::FALLING, first.recorder());
    worker->add(5, Edge::BOTH, calls.recorder());
    start();
    EXPECT_TRUE(eventually([&] { return errors().size() == 1; }));
    EXPECT_THAT(errors(), ElementsAre(StartsWith("GPIO Request für Line 5 fehlgeschlagen:  ")));
    ASSERT_TRUE(isArmed(5));
    EXPECT_EQ(chip.request(5)->edges, GPIOEVENT_REQUEST_FALLING_EDGE);
    chip.pulse(5);
    EXPECT_TRUE(eventually([&] { return calls.all().size() == 1; }));
    EXPECT_THAT(first.all(), IsEmpty());
}

TEST_F(GpioBatchTest, ALineInOtherHandsIsRefusedAndTheOthersWork)
{
    chip.occupy(5);
    worker->add(5, Edge::FALLING, calls.recorder());
    worker->add(6, Edge::FALLING, calls.recorder());
    start();
    ASSERT_TRUE(isArmed(6));
    chip.pulse(6);
    EXPECT_TRUE(eventually([&] { return !calls.all().empty(); }));
    EXPECT_THAT(errors(), ElementsAre(StartsWith("GPIO Request für Line 5 fehlgeschlagen:  ")));
}

TEST_F(GpioBatchTest, ALineThatTheChipDoesNotHaveLosesTheWholeBatch)
{
    worker->add(6, Edge::FALLING, calls.recorder());
    worker->add(99, Edge::FALLING, calls.recorder());
    start();
    EXPECT_TRUE(eventually([&] { return errors().size() == 2; }));
    EXPECT_THAT(errors(), ElementsAre(StartsWith("Fehler im GPIO-Thread [_makeBulk()]: "), noValidLine));
}

TEST_F(GpioBatchTest, EventsReadBeforeTheRemovalIsAppliedAreDroppedSilently)
{
    Gate gate;
    worker->add(3, Edge::FALLING, gate.callback());
    worker->add(4, Edge::FALLING, [this](uint line, bool rising) {
        for (const uint removed : {3U, 4U, 5U}) {
            worker->remove(removed);
        }
        calls.recorder()(line, rising);
    });
    worker->add(5, Edge::FALLING, calls.recorder());
    start();
    ASSERT_TRUE(isArmed(5));
    chip.pulse(3);
    gate.waitUntilEntered();
    // Both events are in the set of one turn; the callback of 4 comes first and removes 5.
    chip.pulse(4);
    chip.pulse(5);
    gate.open();
    EXPECT_TRUE(isGivenUp(5));
    EXPECT_THAT(calls.lines(), ElementsAre(4));
    EXPECT_THAT(log.messages(), IsEmpty());
}

TEST_F(GpioTest, AThrowingCallbackIsLoggedAndTheLoopGoesOn)
{
    gpio.addEventDetect(5, Edge::FALLING, [this](uint line, bool rising) {
        calls.recorder()(line, rising);
        throw std::runtime_error("boom");
    });
    ASSERT_TRUE(isArmed(5));
    chip.pulse(5);
    chip.pulse(5);
    EXPECT_TRUE(eventually([&] { return errors().size() == 2; }));
    EXPECT_THAT(errors(), Each("Fehler bei der Ausführung des Callbacks für GPIO 5 (SIM_5): boom"));
    EXPECT_EQ(calls.all().size(), 2U);
}

TEST_F(GpioTest, ArmingALineWhileAnotherRunsLeavesTheOtherReleased)
{
    gpio.addEventDetect(5, Edge::FALLING, calls.recorder());
    ASSERT_TRUE(isArmed(5));
    gpio.addEventDetect(6, Edge::FALLING, calls.recorder());
    EXPECT_TRUE(isArmed(6));
    EXPECT_TRUE(isGivenUp(5));
    // The set now holds a released line, which the library refuses to wait for, on every turn.
    EXPECT_TRUE(eventually([&] { return errors().size() >= 3; }));
    gpio.stopThread();
    EXPECT_THAT(errors(), Each(StartsWith("Fehler im GPIO-Thread: ")));
}

TEST_F(GpioTest, RemovalGivesTheLineUpAndEndsALoopWithoutLines)
{
    gpio.addEventDetect(5, Edge::FALLING, calls.recorder());
    ASSERT_TRUE(isArmed(5));
    gpio.removeEventDetect(5);
    chip.pulse(5);
    EXPECT_TRUE(isGivenUp(5));
    gpio.stopThread();
    EXPECT_THAT(calls.all(), IsEmpty());
    EXPECT_THAT(errors(), IsEmpty());
}

TEST_F(GpioTest, AnUnpluggedChipIsReportedOnEveryTurn)
{
    gpio.addEventDetect(5, Edge::FALLING, calls.recorder());
    ASSERT_TRUE(isArmed(5));
    chip.unplug();
    EXPECT_TRUE(eventually([&] { return errors().size() >= 3; }));
    gpio.stopThread();
    EXPECT_THAT(errors(), Each(StartsWith("Fehler im GPIO-Thread: ")));
}

TEST_F(GpioTest, ALineReleasedBehindTheLoopsBackIsReportedOnEveryTurn)
{
    gpio.addEventDetect(5, Edge::FALLING, calls.recorder());
    ASSERT_TRUE(isArmed(5));
    chip.pulse(5);
    EXPECT_TRUE(eventually([&] { return calls.all().size() == 1; }));
    gpio.release(5);
    // The wait that is under way still holds the line.
    EXPECT_TRUE(isGivenUp(5));
    EXPECT_TRUE(eventually([&] { return errors().size() >= 3; }));
    gpio.stopThread();
    EXPECT_THAT(errors(), Each(StartsWith("Fehler im GPIO-Thread: ")));
}

TEST_F(GpioTest, ASecondStopIsHarmless)
{
    gpio.addEventDetect(5, Edge::FALLING, calls.recorder());
    ASSERT_TRUE(isArmed(5));
    gpio.stopThread();
    gpio.stopThread();
    EXPECT_THAT(texts(log, QtDebugMsg), ElementsAre("Stoppe GPIO-Thread ..."));
}

TEST_F(GpioTest, StoppingKeepsTheLinesAndALaterArmStartsAgain)
{
    gpio.addEventDetect(5, Edge::FALLING, calls.recorder());
    ASSERT_TRUE(isArmed(5));
    gpio.stopThread();
    EXPECT_TRUE(chip.request(5));
    gpio.addEventDetect(6, Edge::FALLING, calls.recorder());
    ASSERT_TRUE(isArmed(6));
    chip.pulse(5);
    chip.pulse(6);
    EXPECT_TRUE(eventually([&] { return !calls.all().empty(); }));
    gpio.stopThread();
    EXPECT_THAT(calls.lines(), ElementsAre(6));
    EXPECT_THAT(errors(), IsEmpty());
}

TEST_F(GpioTest, AfterAStartWithoutLinesNothingIsServedUntilTheStop)
{
    gpio.addEventDetect(99, Edge::FALLING, calls.recorder());
    EXPECT_TRUE(eventually([&] { return errors().size() == 2; }));
    gpio.addEventDetect(5, Edge::FALLING, calls.recorder());
    gpio.stopThread();
    EXPECT_FALSE(chip.request(5));
    gpio.addEventDetect(5, Edge::FALLING, calls.recorder());
    EXPECT_TRUE(isArmed(5));
}

TEST_F(GpioTest, ACallbackMayStopTheWatchItself)
{
    gpio.addEventDetect(5, Edge::FALLING, [this](uint line, bool rising) {
        gpio.removeEventDetect(line);
        calls.recorder()(line, rising);
    });
    ASSERT_TRUE(isArmed(5));
    chip.pulse(5);
    EXPECT_TRUE(isGivenUp(5));
    EXPECT_EQ(calls.all().size(), 1U);
}

TEST_F(GpioTest, AnotherChipThatCannotBeOpenedLeavesTheOpenOne)
{
    EXPECT_THROW(gpio.openChip("/dev/gpiochip-missing"), std::system_error);
    gpio.addEventDetect(5, Edge::FALLING, calls.recorder());
    EXPECT_TRUE(isArmed(5));
}

TEST_F(GpioTest, LinesThatDoNotExistCannotBeReleased)
{
    EXPECT_THROW(gpio.release(99), std::exception);
}
