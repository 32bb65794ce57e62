#include "simulated_chip.h"

#include <poll.h>
#include <sys/mman.h>
#include <sys/socket.h>
#include <sys/sysmacros.h>
#include <unistd.h>

#include <atomic>
#include <cerrno>
#include <chrono>
#include <cstring>

namespace {

constexpr unsigned deviceMajor = 254;
constexpr unsigned deviceMinor = 7;
constexpr unsigned gpioCallType = 0xB4;

std::atomic<SimulatedChip *> currentChip = nullptr;

int fail(int error)
{
    errno = error;
    return -1;
}

/// A descriptor whose content is this text.
int openText(const std::string &text)
{
    const int fd = ::memfd_create("simulated", MFD_CLOEXEC);
    if (fd >= 0 && ::write(fd, text.data(), text.size()) == static_cast<ssize_t>(text.size())) {
        ::lseek(fd, 0, SEEK_SET);
    }
    return fd;
}

template <std::size_t Size> void copyText(char (&target)[Size], const std::string &text)
{
    std::memset(target, 0, Size);
    text.copy(target, Size - 1);
}

std::uint32_t lineFlags(const SimulatedChip::Request &request)
{
    std::uint32_t flags = GPIOLINE_FLAG_KERNEL;
    if ((request.flags & GPIOHANDLE_REQUEST_ACTIVE_LOW) != 0) {
        flags |= GPIOLINE_FLAG_ACTIVE_LOW;
    }
    if ((request.flags & GPIOHANDLE_REQUEST_BIAS_PULL_UP) != 0) {
        flags |= GPIOLINE_FLAG_BIAS_PULL_UP;
    }
    return flags;
}

std::uint64_t now()
{
    const auto time = std::chrono::steady_clock::now().time_since_epoch();
    return static_cast<std::uint64_t>(std::chrono::nanoseconds(time).count());
}

} // namespace

class SimulatedChip::EventQueue
{
public:
    /// Leaves the reading end in `readingEnd`, or -1 there.
    explicit EventQueue(int &readingEnd)
    {
        int ends[2] = {-1, -1};
        ::socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0, ends);
        m_fd = ends[0];
        readingEnd = ends[1];
    }

    ~EventQueue() { ::close(m_fd); }
    EventQueue(const EventQueue &) = delete;
    EventQueue &operator=(const EventQueue &) = delete;

    /// The reader has not closed its end.
    bool isRead() const
    {
        pollfd poll{.fd = m_fd, .events = 0, .revents = 0};
        return ::poll(&poll, 1, 0) == 0;
    }

    void push(const gpioevent_data &event) const { ::send(m_fd, &event, sizeof event, MSG_NOSIGNAL); }

private:
    int m_fd = -1;
};

SimulatedChip::SimulatedChip(unsigned lineCount)
    : m_lines(lineCount)
{
    currentChip = this;
}

SimulatedChip::~SimulatedChip()
{
    currentChip = nullptr;
}

void SimulatedChip::drive(unsigned line, bool high)
{
    gpioevent_data event{};
    // Not under the mutex: a full queue waits for its reader.
    if (const std::shared_ptr<EventQueue> queue = queueFor(line, high, event)) {
        queue->push(event);
    }
}

void SimulatedChip::pulse(unsigned line)
{
    drive(line, false);
    drive(line, true);
}

std::shared_ptr<SimulatedChip::EventQueue> SimulatedChip::queueFor(unsigned number, bool high,
                                                                   gpioevent_data &event)
{
    const std::lock_guard lock(m_mutex);
    Line &line = m_lines.at(number);
    if (line.high == high || !m_plugged) {
        return nullptr;
    }
    line.high = high;
    const bool activeLow = (line.request.flags & GPIOHANDLE_REQUEST_ACTIVE_LOW) != 0;
    const bool rising = high != activeLow;
    const std::uint32_t edge = rising ? GPIOEVENT_REQUEST_RISING_EDGE : GPIOEVENT_REQUEST_FALLING_EDGE;
    if (!isRequested(line) || (line.request.edges & edge) == 0) {
        return nullptr;
    }
    const std::uint32_t id = rising ? GPIOEVENT_EVENT_RISING_EDGE : GPIOEVENT_EVENT_FALLING_EDGE;
    event = {.timestamp = now(), .id = id};
    return line.queue;
}

void SimulatedChip::occupy(unsigned line)
{
    const std::lock_guard lock(m_mutex);
    m_lines.at(line).occupied = true;
}

void SimulatedChip::unplug()
{
    const std::lock_guard lock(m_mutex);
    m_plugged = false;
    for (Line &line : m_lines) {
        line.queue.reset();
    }
}

std::optional<SimulatedChip::Request> SimulatedChip::request(unsigned line) const
{
    const std::lock_guard lock(m_mutex);
    return isRequested(m_lines.at(line)) ? std::optional(m_lines.at(line).request) : std::nullopt;
}

std::string SimulatedChip::lineName(unsigned line) const
{
    return "SIM_" + std::to_string(line);
}

unsigned SimulatedChip::otherCalls() const
{
    const std::lock_guard lock(m_mutex);
    return m_otherCalls;
}

SimulatedChip *SimulatedChip::current()
{
    return currentChip;
}

bool SimulatedChip::isGpioCall(unsigned long request)
{
    return _IOC_TYPE(request) == gpioCallType;
}

int SimulatedChip::openDevice()
{
    return openText({});
}

int SimulatedChip::openSysfs()
{
    return openText(std::to_string(deviceMajor) + ":" + std::to_string(deviceMinor) + "\n");
}

int SimulatedChip::status(struct stat &status)
{
    status = {};
    status.st_mode = S_IFCHR | 0600;
    status.st_rdev = makedev(deviceMajor, deviceMinor);
    return 0;
}

int SimulatedChip::control(unsigned long request, void *argument)
{
    const std::lock_guard lock(m_mutex);
    if (!m_plugged) {
        return fail(ENODEV);
    }
    switch (request) {
    case GPIO_GET_CHIPINFO_IOCTL:
        return describeChip(*static_cast<gpiochip_info *>(argument));
    case GPIO_GET_LINEINFO_IOCTL:
        return describeLine(*static_cast<gpioline_info *>(argument));
    case GPIO_GET_LINEEVENT_IOCTL:
        return requestEvents(*static_cast<gpioevent_request *>(argument));
    default:
        ++m_otherCalls;
        return fail(ENOTTY);
    }
}

bool SimulatedChip::isRequested(const Line &line) const
{
    return line.queue != nullptr && line.queue->isRead();
}

int SimulatedChip::describeChip(gpiochip_info &info) const
{
    copyText(info.name, "gpiochip-simulated");
    copyText(info.label, "simulated");
    info.lines = static_cast<std::uint32_t>(m_lines.size());
    return 0;
}

int SimulatedChip::describeLine(gpioline_info &info) const
{
    if (info.line_offset >= m_lines.size()) {
        return fail(EINVAL);
    }
    const Line &line = m_lines[info.line_offset];
    copyText(info.name, lineName(info.line_offset));
    const bool requested = isRequested(line);
    copyText(info.consumer, requested ? line.request.label : std::string());
    info.flags = requested ? lineFlags(line.request) : 0;
    return 0;
}

int SimulatedChip::requestEvents(gpioevent_request &wanted)
{
    if (wanted.lineoffset >= m_lines.size() || (wanted.handleflags & GPIOHANDLE_REQUEST_OUTPUT) != 0) {
        return fail(EINVAL);
    }
    Line &line = m_lines[wanted.lineoffset];
    if (line.occupied || isRequested(line)) {
        return fail(EBUSY);
    }
    line.request = {wanted.consumer_label, wanted.handleflags, wanted.eventflags};
    line.queue = std::make_shared<EventQueue>(wanted.fd);
    return wanted.fd >= 0 ? 0 : -1;
}
