#include "declared.h"
#include "gpio_test.h"
#include "signal_log.h"

#include <QThread>

#include <cstdlib>
#include <stdexcept>

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
    arm(5);
    gpio.setConsumerPrefix("y_");
    chip.pulse(5);
    chip.pulse(5); // read a turn after the first
    EXPECT_TRUE(eventually([&] { return calls.all().size() == 2; }));
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
    arm(5, Edge::BOTH);
    chip.drive(5, false);
    chip.drive(5, true);
    EXPECT_TRUE(eventually([&] { return calls.all().size() == 2; }));
    EXPECT_THAT(calls.all(), ElementsAre(Calls::Call(5, true), Calls::Call(5, false)));
}

TEST_F(GpioTest, OnePulseIsOneFallingEdge)
{
    arm(5);
    chip.pulse(5);
    chip.pulse(5);
    chip.pulse(5);
    EXPECT_TRUE(eventually([&] { return calls.all().size() == 3; }));
    EXPECT_THAT(calls.all(), Each(Calls::Call(5, false)));
    EXPECT_THAT(errors(), IsEmpty());
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
    arm(5);
    arm(6);
    EXPECT_TRUE(isGivenUp(5));
    // The set now holds a released line, which the library refuses to wait for, on every turn.
    EXPECT_TRUE(eventually([&] { return errors().size() >= 3; }));
    gpio.stopThread();
    EXPECT_THAT(errors(), Each(StartsWith("Fehler im GPIO-Thread: ")));
}

TEST_F(GpioTest, RemovalGivesTheLineUpAndEndsALoopWithoutLines)
{
    arm(5);
    gpio.removeEventDetect(5);
    chip.pulse(5);
    EXPECT_TRUE(isGivenUp(5));
    gpio.stopThread();
    EXPECT_THAT(calls.all(), IsEmpty());
    EXPECT_THAT(errors(), IsEmpty());
}

TEST_F(GpioTest, AnUnpluggedChipIsReportedOnEveryTurn)
{
    arm(5);
    chip.unplug();
    EXPECT_TRUE(eventually([&] { return errors().size() >= 3; }));
    gpio.stopThread();
    EXPECT_THAT(errors(), Each(StartsWith("Fehler im GPIO-Thread: ")));
}

TEST_F(GpioTest, ALineReleasedBehindTheLoopsBackIsReportedOnEveryTurn)
{
    arm(5);
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
    arm(5);
    gpio.stopThread();
    gpio.stopThread();
    EXPECT_THAT(texts(log, QtDebugMsg), ElementsAre("Stoppe GPIO-Thread ..."));
}

TEST_F(GpioTest, StoppingKeepsTheLinesAndALaterArmStartsAgain)
{
    arm(5);
    gpio.stopThread();
    EXPECT_TRUE(chip.request(5));
    arm(6);
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
    arm(5);
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
    arm(5);
}

TEST_F(GpioTest, LinesThatDoNotExistCannotBeReleased)
{
    EXPECT_THROW(gpio.release(99), std::exception);
}

TEST_F(GpioTest, TheEndOfTheProcessEndsTheThread)
{
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    const auto exitArmed = [this] {
        arm(5);
        std::exit(EXIT_SUCCESS);
    };
    EXPECT_EXIT(exitArmed(), testing::ExitedWithCode(EXIT_SUCCESS), "");
}
