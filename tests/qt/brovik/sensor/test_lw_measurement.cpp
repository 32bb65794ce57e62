// From the pulses at a pin to the conductivity that the screens show.

#include "brovik/gpio/gpio.h"
#include "brovik/sensor/sensor.h"
#include "brovik/settings/settings.h"
#include "eventually.h"
#include "log_capture.h"
#include "signal_log.h"
#include "simulated_chip.h"

#include <gmock/gmock.h>

#include <atomic>
#include <cstdlib>
#include <new>

using testing::ElementsAre;

namespace {

thread_local std::size_t allocations = 0;

void *allocate(std::size_t size)
{
    ++allocations;
    if (void *memory = std::malloc(size != 0 ? size : 1)) {
        return memory;
    }
    throw std::bad_alloc();
}

} // namespace

// The whole program's: every allocation of a thread is counted.

void *operator new(std::size_t size)
{
    return allocate(size);
}

void *operator new[](std::size_t size)
{
    return allocate(size);
}

void operator delete(void *memory) noexcept
{
    std::free(memory);
}

void operator delete[](void *memory) noexcept
{
    std::free(memory);
}

void operator delete(void *memory, std::size_t /*size*/) noexcept
{
    std::free(memory);
}

void operator delete[](void *memory, std::size_t /*size*/) noexcept
{
    std::free(memory);
}

namespace {

constexpr unsigned line = 5;

class LwMeasurement : public testing::Test
{
protected:
    LwMeasurement() { GPIO::instance().openChip(SimulatedChip::path); }

    ~LwMeasurement() override
    {
        GPIO::instance().stopThread();
        Settings::instance().setLwOffset(0.0);
    }

    bool isArmed() const
    {
        return eventually([this] { return chip.request(line).has_value(); });
    }

    /// Pulses at the pin, all of them counted.
    bool pulse(int count)
    {
        for (int number = 0; number < count; ++number) {
            chip.pulse(line);
        }
        return eventually([&] { return sensor.lwTicks() == count; });
    }

    SimulatedChip chip;
    Sensor &sensor = Sensor::instance();
    LogCapture log;
};

} // namespace

TEST_F(LwMeasurement, OnlyFallingEdgesOfThePinAreWaitedFor)
{
    sensor.setupLwEdgeDetect(line);
    ASSERT_TRUE(isArmed());
    EXPECT_EQ(chip.request(line)->edges, GPIOEVENT_REQUEST_FALLING_EDGE);
    EXPECT_EQ(chip.request(line)->label, "brovik_5");
}

TEST_F(LwMeasurement, PulsesBecomeConductivity)
{
    sensor.setupLwEdgeDetect(line);
    ASSERT_TRUE(isArmed());
    ASSERT_TRUE(pulse(1250));
    sensor.calcLw(250);
    EXPECT_EQ(sensor.leitwert(), 25.0);
    ASSERT_TRUE(pulse(7071));
    sensor.calcLw(1000);
    EXPECT_EQ(sensor.leitwert(), 49.999041);
    ASSERT_TRUE(pulse(1));
    sensor.calcLw(250);
    EXPECT_EQ(sensor.leitwert(), 0.000016);
    EXPECT_FALSE(sensor.lwSensorDefective());
    sensor.calcLw(250);
    EXPECT_EQ(sensor.leitwert(), 0.0);
    EXPECT_TRUE(sensor.lwSensorDefective());
    Settings::instance().setLwOffset(1.5);
    ASSERT_TRUE(pulse(1250));
    sensor.calcLw(250);
    EXPECT_EQ(sensor.leitwert(), 23.5);
    EXPECT_FALSE(sensor.lwSensorDefective());
    EXPECT_TRUE(log.texts(QtCriticalMsg).isEmpty());
}

TEST_F(LwMeasurement, ALineThatCannotBeArmedIsADefectiveSensor)
{
    chip.occupy(line);
    sensor.setupLwEdgeDetect(line);
    EXPECT_TRUE(eventually([this] { return log.texts(QtCriticalMsg).size() == 2; }));
    chip.pulse(line);
    sensor.calcLw(250);
    EXPECT_TRUE(sensor.lwSensorDefective());
}

TEST_F(LwMeasurement, CountingAnEdgeAllocatesNothing)
{
    std::atomic<std::size_t> allocated = 0;
    std::atomic<int> counted = 0;
    GPIO::instance().addEventDetect(line, brovik::Edge::FALLING,
                                    [&, count = sensor.edgeCounter()](uint offset, bool rising) {
                                        const std::size_t before = allocations;
                                        const gpio_callback_func copy = count; // as the loop has it
                                        copy(offset, rising);
                                        allocated += allocations - before;
                                        ++counted;
                                    });
    ASSERT_TRUE(isArmed());
    const std::size_t before = allocations;
    const std::unique_ptr<int> probe(new int(1));
    ASSERT_GT(allocations, before) << "allocations are not counted";
    for (int number = 0; number < 100; ++number) {
        chip.pulse(line);
    }
    ASSERT_TRUE(eventually([&] { return counted == 100; }));
    EXPECT_EQ(allocated, 0U);
    EXPECT_EQ(sensor.lwTicks(), 100);
    sensor.calcLw(250);
}

// The last tests: the measurement, once started, never ends.

TEST_F(LwMeasurement, StartedWithoutEdgesTheFirstPeriodFindsADefect)
{
    sensor.setLwSensorDefective(false);
    const SignalLog emitted(sensor);
    sensor.initLwTimer();
    EXPECT_TRUE(eventually([this] { return sensor.lwSensorDefective(); }));
    for (const SignalLog::Emission &emission : emitted.emissions()) {
        EXPECT_TRUE(emission.onGuiThread);
    }
}

TEST_F(LwMeasurement, ThePeriodTurnsEdgesIntoAValue)
{
    sensor.setupLwEdgeDetect(line);
    ASSERT_TRUE(isArmed());
    const SignalLog emitted(sensor, {"leitwertChanged"});
    for (int number = 0; number < 100; ++number) {
        chip.pulse(line);
    }
    EXPECT_TRUE(eventually([&] { return !emitted.names().empty(); }));
}

TEST_F(LwMeasurement, StartedTwiceTheSecondRunOfEachPeriodFindsADefect)
{
    EXPECT_TRUE(eventually([this] { return sensor.lwSensorDefective(); }));
    sensor.initLwTimer();
    sensor.setupLwEdgeDetect(line);
    ASSERT_TRUE(isArmed());
    const SignalLog emitted(sensor);
    chip.pulse(line);
    EXPECT_TRUE(eventually([&] { return emitted.names().size() == 4; }));
    EXPECT_THAT(emitted.names(), ElementsAre("leitwertChanged", "lwSensorDefectiveChanged", "leitwertChanged",
                                             "lwSensorDefectiveChanged"));
    EXPECT_EQ(sensor.leitwert(), 0.0);
    EXPECT_TRUE(sensor.lwSensorDefective());
}
