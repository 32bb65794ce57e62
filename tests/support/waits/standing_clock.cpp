#include "standing_clock.h"

#include <sys/syscall.h>
#include <time.h>
#include <unistd.h>

#include <atomic>
#include <cstdint>

namespace {

constexpr std::int64_t running = -1;
constexpr std::int64_t nanosecondsPerSecond = 1'000'000'000;

/// Nanoseconds at which the clock stands, or `running`.
std::atomic<std::int64_t> standing = running;
/// What the running clock is ahead of the system's, so that it never goes back.
std::atomic<std::int64_t> ahead = 0;

int systemTime(clockid_t clock, timespec *time)
{
    return static_cast<int>(::syscall(SYS_clock_gettime, clock, time));
}

std::int64_t systemNanoseconds()
{
    timespec time{};
    systemTime(CLOCK_MONOTONIC, &time);
    return time.tv_sec * nanosecondsPerSecond + time.tv_nsec;
}

} // namespace

StandingClock::StandingClock()
{
    standing = systemNanoseconds() + ahead;
}

StandingClock::~StandingClock()
{
    ahead = standing - systemNanoseconds();
    standing = running;
}

void StandingClock::advance(std::chrono::nanoseconds time)
{
    standing += time.count();
}

extern "C" __attribute__((visibility("default"))) int clock_gettime(clockid_t clock, timespec *time) noexcept
{
    if (clock != CLOCK_MONOTONIC) {
        return systemTime(clock, time);
    }
    const std::int64_t still = standing;
    const std::int64_t now = still != running ? still : systemNanoseconds() + ahead;
    *time = {.tv_sec = now / nanosecondsPerSecond, .tv_nsec = now % nanosecondsPerSecond};
    return 0;
}
