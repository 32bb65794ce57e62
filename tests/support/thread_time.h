#pragma once

#include <array>
#include <chrono>
#include <cstdio>

#include <fcntl.h>
#include <unistd.h>

/// What the kernel knows of a thread's time.
struct ThreadTime
{
    std::chrono::nanoseconds running{0};
    std::chrono::nanoseconds waiting{0}; ///< It was ready to run, and the processor did other things.
};

/// Of the thread that calls it first; all later calls are on that thread, too. Nothing on a kernel that does
/// not tell.
inline ThreadTime timeOfThisThread()
{
    static const int file = ::open("/proc/thread-self/schedstat", O_RDONLY | O_CLOEXEC);
    std::array<char, 100> text{};
    long long running = 0;
    long long waiting = 0;
    if (::pread(file, text.data(), text.size() - 1, 0) > 0) {
        std::sscanf(text.data(), "%lld %lld", &running, &waiting);
    }
    return {std::chrono::nanoseconds(running), std::chrono::nanoseconds(waiting)};
}
