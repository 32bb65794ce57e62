#include "src/service_pulse.h"

#include <utility>

namespace {

constexpr ServicePulse::Parts allParts =
    ServicePulse::Parts(ServicePulse::Gui) | ServicePulse::Frame | ServicePulse::Interpreter;

ServicePulse::Time feedAfter(ServicePulse::Time period)
{
    return period / 2;
}

ServicePulse::Time missAfter(ServicePulse::Time period)
{
    constexpr int quarters = 3;
    return period * quarters / 4;
}

} // namespace

ServicePulse::ServicePulse(Time period, Time now)
    : m_period(period)
    , m_fed(now)
{}

ServicePulse::Step ServicePulse::check(Time now)
{
    Step step;
    const bool first = !std::exchange(m_started, true);
    if (mayFeed(now) && (first || now >= m_fed + feedAfter(m_period))) {
        step.feed = true;
        // Who was excused has been asked already.
        step.ask = allParts & ~m_awaited;
        m_awaited = allParts;
        m_fed = now;
        m_askedAgain = false;
        step.recovered = std::exchange(m_missed, false);
    } else if (!mayFeed(now) && !m_askedAgain && now >= m_fed + feedAfter(m_period)) {
        m_askedAgain = true;
        step.ask = Parts(Gui) & ~m_awaited;
        m_awaited |= Gui;
    } else if (!mayFeed(now) && !m_missed && now >= m_fed + missAfter(m_period)) {
        m_missed = true;
        step.missed = m_awaited;
    }
    return step;
}

std::optional<ServicePulse::Time> ServicePulse::due(Time now) const
{
    if (mayFeed(now) || !m_askedAgain) {
        return m_fed + feedAfter(m_period);
    }
    return m_missed ? std::nullopt : std::optional(m_fed + missAfter(m_period));
}
