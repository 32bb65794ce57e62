// The GPIO service on the kernel's own interface, in the kernel that scripts/gpio-kernel starts.

#include "brovik/gpio/gpio.h"
#include "brovik/sensor/sensor.h"
#include "eventually.h"
#include "gpio_calls.h"
#include "kernel_chip.h"
#include "log_capture.h"

#include <gmock/gmock.h>

#include <chrono>

using namespace std::chrono_literals;
using brovik::Edge;
using testing::ElementsAre;
using testing::FieldsAre;
using testing::HasSubstr;
using testing::IsEmpty;

namespace {

/// Events that the kernel keeps for a line until they are read.
constexpr int kernelQueue = 16;

class GpioKernel : public testing::Test
{
protected:
    GpioKernel()
    {
        gpio.setConsumerPrefix("brovik_");
        gpio.openChip(chip.path());
    }

    ~GpioKernel() override
    {
        gpio.stopThread();
        for (unsigned line = 0; chip.isPresent() && line < lines; ++line) {
            gpio.release(line);
        }
    }

    /// A line as somebody else sees it.
    gpiod::line seen(unsigned line) const { return gpiod::chip(chip.path()).get_line(line); }
    bool isArmed(unsigned line) const
    {
        return eventually([&] { return seen(line).is_used(); });
    }
    /// Has the edges of a line recorded, and waits until it is watched.
    void arm(unsigned line, Edge edge = Edge::FALLING)
    {
        gpio.addEventDetect(line, edge, calls.recorder());
        ASSERT_TRUE(isArmed(line));
    }
    bool haveCome(std::size_t count) const
    {
        return eventually([&] { return calls.all().size() >= count; });
    }
    std::vector<std::string> errors() const
    {
        std::vector<std::string> texts;
        for (const QString &text : log.texts(QtCriticalMsg)) {
            texts.push_back(text.toStdString());
        }
        return texts;
    }

    static constexpr unsigned lines = 8;
    KernelChip chip{"kubelor", lines};
    GPIO &gpio = GPIO::instance();
    Calls calls;
    Gate gate;
    LogCapture log;
};

} // namespace

TEST_F(GpioKernel, LineIsRequestedAsThePlantNeedsIt)
{
    gpio.setConsumerPrefix("x_");
    chip.pull({5}, false);
    arm(5);
    gpio.setConsumerPrefix("y_");
    const gpiod::line line = seen(5);
    EXPECT_EQ(line.consumer(), "x_5");
    EXPECT_EQ(line.direction(), gpiod::line::DIRECTION_INPUT);
    EXPECT_EQ(line.active_state(), gpiod::line::ACTIVE_LOW);
    EXPECT_EQ(line.bias(), gpiod::line::BIAS_PULL_UP);
    EXPECT_TRUE(chip.isPulledUp(5));
    EXPECT_FALSE(seen(4).is_used());
}

TEST_F(GpioKernel, EdgesAreThoseOfTheLevelThatIsActiveLow)
{
    gpio.addEventDetect(1, Edge::FALLING, calls.recorder());
    gpio.addEventDetect(2, Edge::RISING, calls.recorder());
    gpio.addEventDetect(3, Edge::BOTH, calls.recorder());
    ASSERT_TRUE(isArmed(3));
    for (const unsigned line : {1U, 2U, 3U}) {
        const std::size_t before = calls.all().size();
        chip.pull({line}, false);
        ASSERT_TRUE(line == 1 || haveCome(before + 1));
        chip.pull({line}, true);
        ASSERT_TRUE(haveCome(before + (line == 3 ? 2 : 1)));
    }
    EXPECT_THAT(calls.all(), ElementsAre(FieldsAre(1, false), FieldsAre(2, true), FieldsAre(3, true),
                                         FieldsAre(3, false)));
    EXPECT_THAT(errors(), IsEmpty());
}

TEST_F(GpioKernel, OneEventPerLineAndTurnAndNoneLost)
{
    gpio.addEventDetect(4, Edge::FALLING, gate.callback());
    gpio.addEventDetect(5, Edge::FALLING, calls.recorder());
    gpio.addEventDetect(6, Edge::FALLING, calls.recorder());
    ASSERT_TRUE(isArmed(6));
    chip.pulse({4});
    gate.waitUntilEntered();
    chip.pulse({5});
    chip.pulse({5});
    chip.pulse({6});
    chip.pulse({6});
    gate.open();
    ASSERT_TRUE(haveCome(4));
    EXPECT_THAT(calls.lines(), ElementsAre(5, 6, 5, 6));
}

TEST_F(GpioKernel, LineOfSomebodyElseIsRefused)
{
    const gpiod::line other = seen(5);
    other.request({.consumer = "andere", .request_type = gpiod::line_request::DIRECTION_INPUT, .flags = 0},
                  0);
    gpio.addEventDetect(5, Edge::FALLING, calls.recorder());
    gpio.addEventDetect(6, Edge::FALLING, calls.recorder());
    ASSERT_TRUE(isArmed(6));
    EXPECT_THAT(errors(), ElementsAre(HasSubstr("GPIO Request für Line 5 fehlgeschlagen: ")));
    EXPECT_EQ(seen(5).consumer(), "andere");
    chip.pulse({6});
    ASSERT_TRUE(haveCome(1));
    EXPECT_THAT(calls.lines(), ElementsAre(6));
    other.release();
}

TEST_F(GpioKernel, WhoWatchesALineKeepsIt)
{
    arm(5);
    const gpiod::line other = seen(5);
    EXPECT_THROW(
        other.request(
            {.consumer = "andere", .request_type = gpiod::line_request::DIRECTION_INPUT, .flags = 0}, 0),
        std::system_error);
    chip.pulse({5});
    EXPECT_TRUE(haveCome(1));
}

TEST_F(GpioKernel, KernelKeepsWhatALateReaderHasNotRead)
{
    gpio.addEventDetect(4, Edge::FALLING, gate.callback());
    gpio.addEventDetect(5, Edge::FALLING, calls.recorder());
    ASSERT_TRUE(isArmed(5));
    chip.pulse({4});
    gate.waitUntilEntered();
    for (int number = 0; number < kernelQueue + 5; ++number) {
        chip.pulse({5});
    }
    gate.open();
    ASSERT_TRUE(haveCome(kernelQueue));
    // What comes after a full queue is counted again.
    chip.pulse({5});
    ASSERT_TRUE(haveCome(kernelQueue + 1));
    EXPECT_EQ(calls.all().size(), std::size_t(kernelQueue + 1));
}

TEST_F(GpioKernel, TenThousandEdgesASecondAreCounted)
{
    constexpr int edges = 120'000;
    gpio.addEventDetect(5, Edge::BOTH, calls.recorder());
    gpio.addEventDetect(6, Edge::BOTH, calls.recorder());
    gpio.addEventDetect(7, Edge::BOTH, calls.recorder());
    ASSERT_TRUE(isArmed(7));
    const auto start = std::chrono::steady_clock::now();
    for (int number = 0; number < edges / 6; ++number) {
        chip.pulse({5, 6, 7});
    }
    EXPECT_LT(std::chrono::steady_clock::now() - start, 12s);
    EXPECT_TRUE(haveCome(edges));
    EXPECT_EQ(calls.all().size(), std::size_t(edges));
    EXPECT_THAT(errors(), IsEmpty());
}

TEST_F(GpioKernel, PulsesBecomeConductivity)
{
    Sensor &sensor = Sensor::instance();
    sensor.setupLwEdgeDetect(5);
    ASSERT_TRUE(isArmed(5));
    for (int number = 0; number < 1250; ++number) {
        chip.pulse({5});
    }
    ASSERT_TRUE(eventually([&] { return sensor.lwTicks() == 1250; }));
    sensor.calcLw(250);
    EXPECT_EQ(sensor.leitwert(), 25.0);
}

TEST_F(GpioKernel, ChipThatIsTakenAwayWhileItIsWatched)
{
    arm(5);
    chip.pulse({5});
    ASSERT_TRUE(haveCome(1));
    chip.takeAway();
    gpio.stopThread();
    EXPECT_THROW(gpio.openChip(chip.path()), std::exception);

    KernelChip replacement("kubelor_neu", lines);
    gpio.openChip(replacement.path());
    gpio.addEventDetect(6, Edge::FALLING, calls.recorder());
    ASSERT_TRUE(eventually([&] { return gpiod::chip(replacement.path()).get_line(6).is_used(); }));
    replacement.pulse({6});
    ASSERT_TRUE(haveCome(2));
    EXPECT_THAT(calls.lines(), ElementsAre(5, 6));
    gpio.stopThread();
    gpio.release(6);
}
