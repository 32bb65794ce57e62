#include "recorded_waits.h"

#include <poll.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <algorithm>
#include <atomic>
#include <csignal>
#include <optional>

namespace {

std::atomic<RecordedWaits *> currentRecorder = nullptr;

RecordedWaits::Limit limitOf(const timespec *timeout)
{
    return timeout != nullptr ? std::chrono::seconds(timeout->tv_sec) + RecordedWaits::Limit(timeout->tv_nsec)
                              : RecordedWaits::endless;
}

bool isWriting(const pollfd *descriptors, nfds_t count)
{
    return std::any_of(descriptors, descriptors + count,
                       [](const pollfd &descriptor) { return (descriptor.events & POLLOUT) != 0; });
}

} // namespace

RecordedWaits::RecordedWaits()
{
    currentRecorder = this;
}

RecordedWaits::~RecordedWaits()
{
    currentRecorder = nullptr;
}

void RecordedWaits::readNothing()
{
    const std::lock_guard lock(m_mutex);
    m_readNothing = true;
}

std::vector<RecordedWaits::Limit> RecordedWaits::ownLimits() const
{
    return limits(true);
}

std::vector<RecordedWaits::Limit> RecordedWaits::otherLimits() const
{
    return limits(false);
}

RecordedWaits *RecordedWaits::current()
{
    return currentRecorder;
}

bool RecordedWaits::record(bool toWrite, Limit limit)
{
    const std::lock_guard lock(m_mutex);
    m_waits.push_back({.thread = std::this_thread::get_id(), .limit = limit});
    return toWrite && m_readNothing;
}

std::vector<RecordedWaits::Limit> RecordedWaits::limits(bool own) const
{
    const std::lock_guard lock(m_mutex);
    std::vector<Limit> result;
    for (const Wait &wait : m_waits) {
        if ((wait.thread == std::this_thread::get_id()) == own) {
            result.push_back(wait.limit);
        }
    }
    return result;
}

/// The system's own call, which would write the time that is left into the timeout.
extern "C" __attribute__((visibility("default"))) int ppoll(pollfd *descriptors, nfds_t count,
                                                            const timespec *timeout, const sigset_t *mask)
{
    RecordedWaits *recorder = RecordedWaits::current();
    if (recorder != nullptr && recorder->record(isWriting(descriptors, count), limitOf(timeout))) {
        return 0;
    }
    std::optional<timespec> left = timeout != nullptr ? std::optional(*timeout) : std::nullopt;
    return static_cast<int>(
        ::syscall(SYS_ppoll, descriptors, count, left ? &*left : nullptr, mask, _NSIG / 8));
}
