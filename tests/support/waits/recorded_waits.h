#pragma once

#include <chrono>
#include <mutex>
#include <thread>
#include <vector>

/// Records for how long at most the threads of the process wait for descriptors: stands between the libraries
/// and the C library's ppoll. One at a time; any thread.
class RecordedWaits
{
public:
    /// How long a wait may last.
    using Limit = std::chrono::nanoseconds;
    static constexpr Limit endless = Limit::max();

    RecordedWaits();
    ~RecordedWaits();
    RecordedWaits(const RecordedWaits &) = delete;
    RecordedWaits &operator=(const RecordedWaits &) = delete;

    /// From now on nobody reads what is sent: a wait to write ends without success, at once instead of after
    /// its limit.
    void readNothing();

    /// The limits of this thread's waits so far.
    std::vector<Limit> ownLimits() const;
    /// The limits of all other threads' waits so far.
    std::vector<Limit> otherLimits() const;

    // For the interposed function.

    /// The one that records; null if there is none.
    static RecordedWaits *current();
    /// Takes a wait down. Whether it is to end without success.
    bool record(bool toWrite, Limit limit);

private:
    struct Wait
    {
        std::thread::id thread;
        Limit limit;
    };

    std::vector<Limit> limits(bool own) const;

    mutable std::mutex m_mutex;
    std::vector<Wait> m_waits;
    bool m_readNothing = false;
};
