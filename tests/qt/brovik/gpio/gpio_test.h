#pragma once

#include "brovik/gpio/gpio.h"
#include "eventually.h"
#include "gpio_calls.h"
#include "log_capture.h"
#include "simulated_chip.h"

#include <gmock/gmock.h>

#include <string>
#include <vector>

// What the tests of the service and of its worker share.

inline constexpr const char *noValidLine =
    "Konnte den GPIO-Thread nicht erfolgreich starten, da keine gültigen Lines angegeben wurden";

inline std::vector<std::string> texts(const LogCapture &log, QtMsgType type)
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
    /// Has the edges of a line recorded, and waits until it is watched.
    void arm(unsigned line, brovik::Edge edge = brovik::Edge::FALLING)
    {
        gpio.addEventDetect(line, edge, calls.recorder());
        ASSERT_TRUE(isArmed(line));
    }
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
