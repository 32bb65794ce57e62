#pragma once

#include <chrono>

/// While it lives, the process's monotonic clock stands still and moves only as the test says; afterwards it
/// goes on from there. Stands between the libraries and the C library's clock_gettime. One at a time.
///
/// Nothing that waits for a time may be called meanwhile: that time does not come.
class StandingClock
{
public:
    StandingClock();
    ~StandingClock();
    StandingClock(const StandingClock &) = delete;
    StandingClock &operator=(const StandingClock &) = delete;

    static void advance(std::chrono::nanoseconds time);
};
