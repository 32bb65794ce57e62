#pragma once

#include <linux/gpio.h>
#include <sys/stat.h>

#include <cstdint>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <vector>

/// The kernel's side of a GPIO chip, below the unmodified libgpiod: the calls that the library makes on its
/// device are answered here (interposer.cpp). Pins are pulled up, as open collector sensors expect it. One at
/// a time; any thread.
class SimulatedChip
{
public:
    /// A name that no real chip has.
    static constexpr const char *path = "/dev/gpiochip-simulated";
    static constexpr const char *sysfsPath = "/sys/bus/gpio/devices/gpiochip-simulated/dev";

    /// What a consumer has asked for, as the kernel got it.
    struct Request
    {
        std::string label;
        /// GPIOHANDLE_REQUEST_...
        std::uint32_t flags;
        /// GPIOEVENT_REQUEST_...
        std::uint32_t edges;
    };

    explicit SimulatedChip(unsigned lineCount = 32);
    ~SimulatedChip();
    SimulatedChip(const SimulatedChip &) = delete;
    SimulatedChip &operator=(const SimulatedChip &) = delete;

    // What happens at the pins.

    /// Drives a pin. An edge that the line's consumer waits for becomes an event; unlike the kernel's, the
    /// queue takes more than 16 of them, and a full one is waited for.
    void drive(unsigned line, bool high);
    /// One period of a sensor with an open collector: low, then high again. To a consumer that sees the line
    /// active low, that is a rising and then a falling edge.
    void pulse(unsigned line);
    /// Another consumer takes the line.
    void occupy(unsigned line);
    /// The device is gone; what is queued can still be read.
    void unplug();

    // What a test sees.

    /// Nothing for a line that nobody has requested, or that has been given up.
    std::optional<Request> request(unsigned line) const;
    std::string lineName(unsigned line) const;
    /// Calls that neither ask for information nor for events: reads and writes of levels.
    unsigned otherCalls() const;

    // For the interposer. Each returns what the call returns, and sets errno.

    /// The chip that is plugged in; null if there is none.
    static SimulatedChip *current();
    static bool isGpioCall(unsigned long request);
    static int openDevice();
    static int openSysfs();
    static int status(struct stat &status);
    int control(unsigned long request, void *argument);

private:
    /// The writing end of an event descriptor.
    class EventQueue;

    struct Line
    {
        bool high = true;
        bool occupied = false;
        Request request = {};
        std::shared_ptr<EventQueue> queue;
    };

    bool isRequested(const Line &line) const;
    int describeChip(gpiochip_info &info) const;
    int describeLine(gpioline_info &info) const;
    int requestEvents(gpioevent_request &request);
    /// Null if nobody waits for this edge.
    std::shared_ptr<EventQueue> queueFor(unsigned line, bool high, gpioevent_data &event);

    mutable std::mutex m_mutex;
    std::vector<Line> m_lines;
    unsigned m_otherCalls = 0;
    bool m_plugged = true;
};
