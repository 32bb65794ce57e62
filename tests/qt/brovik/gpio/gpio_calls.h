#pragma once

#include "brovik/gpio/gpio_worker.h"

#include <mutex>
#include <semaphore>
#include <tuple>
#include <vector>

// Callbacks of tests, on simulated chips of either kind.

/// What the callbacks of a test were called with, in order. Any thread.
class Calls
{
public:
    using Call = std::tuple<uint, bool>;

    gpio_callback_func recorder()
    {
        return [this](uint line, bool rising) {
            const std::lock_guard lock(m_mutex);
            m_calls.emplace_back(line, rising);
        };
    }

    std::vector<Call> all() const
    {
        const std::lock_guard lock(m_mutex);
        return m_calls;
    }

    std::vector<uint> lines() const
    {
        std::vector<uint> result;
        for (const auto &[line, rising] : all()) {
            result.push_back(line);
        }
        return result;
    }

private:
    mutable std::mutex m_mutex;
    std::vector<Call> m_calls;
};

/// A callback that keeps the loop from its next turn until the test lets it go on.
class Gate
{
public:
    gpio_callback_func callback()
    {
        return [this](uint, bool) {
            m_entered.release();
            m_open.acquire();
        };
    }

    void waitUntilEntered() { m_entered.acquire(); }
    void open() { m_open.release(); }

private:
    std::binary_semaphore m_entered{0};
    std::binary_semaphore m_open{0};
};
