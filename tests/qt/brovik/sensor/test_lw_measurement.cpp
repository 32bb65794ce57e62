// From the pulses at a pin to the conductivity that the screens show.

#include "brovik/gpio/gpio.h"
#include "brovik/sensor/sensor.h"
#include "brovik/settings/settings.h"
#include "eventually.h"
#include "log_capture.h"
#include "signal_log.h"
#include "simulated_chip.h"

#include <gmock/gmock.h>

#include <QTimer>

using testing::ElementsAre;

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
    SignalLog emitted(sensor);
    chip.pulse(line);
    EXPECT_TRUE(eventually([&] { return emitted.names().size() == 4; }));
    EXPECT_THAT(emitted.names(), ElementsAre("leitwertChanged", "lwSensorDefectiveChanged", "leitwertChanged",
                                             "lwSensorDefectiveChanged"));
    EXPECT_EQ(sensor.leitwert(), 0.0);
    EXPECT_TRUE(sensor.lwSensorDefective());
    // Both runs belong to one period: no event is handled between them.
    emitted.clear();
    const gpio_callback_func count = sensor.edgeCounter();
    for (int edge = 0; edge < 10; ++edge) {
        count(line, false);
    }
    ASSERT_TRUE(QMetaObject::invokeMethod(sensor.findChild<QTimer *>(), "timeout"));
    EXPECT_THAT(emitted.names(), ElementsAre("leitwertChanged", "lwSensorDefectiveChanged", "leitwertChanged",
                                             "lwSensorDefectiveChanged"));
}
