#pragma once

#include <algorithm>
#include <chrono>
#include <cstdint>

/// How many dialogs may open for what fails by itself: so many at once, and one more in each period. What
/// fails over and over would else pile them up, with nobody there to close them.
///
/// Belongs to one thread, or to who holds a lock.
class WarningBudget
{
public:
    using Clock = std::chrono::steady_clock;
    static constexpr int most = 10;
    static constexpr std::chrono::minutes period{10};

    explicit WarningBudget(Clock::time_point now)
        : m_counted(now)
    {}

    /// Takes one dialog from what is left. False if nothing is.
    bool take(Clock::time_point now)
    {
        refill(now);
        if (m_left == 0) {
            return false;
        }
        --m_left;
        return true;
    }

    /// As long as nothing is left, what happens is not shown.
    int left() const { return m_left; }

private:
    void refill(Clock::time_point now)
    {
        const std::int64_t periods = (now - m_counted) / period;
        m_left = static_cast<int>(std::min<std::int64_t>(most, m_left + periods));
        // A period that has begun counts from the first dialog that it is to replace.
        m_counted = m_left == most ? now : m_counted + periods * period;
    }

    int m_left = most;
    Clock::time_point m_counted;
};
