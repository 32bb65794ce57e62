#include "gpio_test.h"

#include <QThread>

using brovik::Edge;
using brovik::detail::GPIOWorker;
using testing::Each;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::StartsWith;

namespace {

/// A worker whose lines are all queued before its loop starts.
class GpioWorkerTest : public GpioTest
{
protected:
    GpioWorkerTest() { worker->moveToThread(&thread); }

    ~GpioWorkerTest() override
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

    // The thread may still be at it when a test's own variables go.
    Gate gate;
    GPIOWorker *const worker = new GPIOWorker(&GPIO::instance());
    QThread thread;
};

} // namespace

TEST_F(GpioWorkerTest, OneEventPerLineAndTurnAndNoneLost)
{
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

TEST_F(GpioWorkerTest, TwoRisingEventsOnOneLineTakeTwoTurns)
{
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

TEST_F(GpioWorkerTest, AddedTwiceBeforeTheStartTheSecondCallbackWinsAndTheFirstRequestStays)
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

TEST_F(GpioWorkerTest, ALineInOtherHandsIsRefusedAndTheOthersWork)
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

TEST_F(GpioWorkerTest, ALineThatTheChipDoesNotHaveLosesTheWholeBatch)
{
    worker->add(6, Edge::FALLING, calls.recorder());
    worker->add(99, Edge::FALLING, calls.recorder());
    start();
    EXPECT_TRUE(eventually([&] { return errors().size() == 2; }));
    EXPECT_THAT(errors(), ElementsAre(StartsWith("Fehler im GPIO-Thread [_makeBulk()]: "), noValidLine));
}

TEST_F(GpioWorkerTest, EventsReadBeforeTheRemovalIsAppliedAreDroppedSilently)
{
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
