#pragma once

#include <QFlags>

#include <chrono>
#include <optional>

/// Decides when the service manager's watchdog is fed, and when somebody is missed. Pure: the time is given.
/// One thread, no lock.
///
/// All parts of the program are asked at once. When half a period has gone since the last feed and all of
/// them have answered, the watchdog is fed and they are asked anew; so nobody is asked while he owes an
/// answer, and nothing is fed that has not been answered within the period. If somebody has not answered by
/// then, the GUI thread is asked once more: it may be standing since its answer, and the others wait for it.
/// Who stands for the whole period lets it end.
class ServicePulse
{
public:
    /// Since any moment.
    using Time = std::chrono::milliseconds;

    enum Part : quint8 {
        Gui = 1,         ///< The GUI thread has come round its event loop.
        Frame = 2,       ///< A frame has been drawn, or no window shows any.
        Interpreter = 4, ///< The interpreter thread is between two calls.
    };
    Q_DECLARE_FLAGS(Parts, Part)

    /// What is to be done now.
    struct Step
    {
        /// The watchdog has earned its food.
        bool feed = false;
        /// These parts are to be asked.
        Parts ask;
        /// These have not answered for three quarters of the period; told once for each feed that is missed.
        Parts missed;
        /// All that were missed have answered.
        bool recovered = false;
    };

    /// The period begins now.
    ServicePulse(Time period, Time now);

    /// What there is to do; after each answer(), and at each due().
    Step check(Time now);
    /// These parts have answered.
    void answer(Parts parts) { m_awaited &= ~parts; }
    /// Until that time nobody needs to answer, because the program waits for the end of Python.
    void excuseUntil(Time time) { m_excusedUntil = time; }
    /// When check() has something to do next; nothing if only an answer can change anything.
    std::optional<Time> due(Time now) const;

private:
    bool mayFeed(Time now) const { return !m_awaited || now < m_excusedUntil; }

    const Time m_period;
    Time m_fed;
    Time m_excusedUntil{0};
    /// Asked, and not yet answered.
    Parts m_awaited;
    bool m_started = false;
    bool m_askedAgain = false;
    bool m_missed = false;
};

Q_DECLARE_OPERATORS_FOR_FLAGS(ServicePulse::Parts)
