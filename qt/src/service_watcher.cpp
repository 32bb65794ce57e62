#include "src/service_watcher.h"

#include "shared/log.h"
#include "src/py/backend_activity.h"
#include "src/py/python_stacks.h"
#include "src/service_status.h"

#include <QStringList>

#include <algorithm>
#include <utility>

namespace {

/// Between two texts for the manager, which tells everybody of each.
constexpr std::chrono::seconds statusPeriod(1);
/// Until what the manager did not take is sent again.
constexpr std::chrono::seconds retryPeriod(1);
/// How long an end of Python may take; the unit's TimeoutStopSec is as long.
constexpr std::chrono::minutes excusedTime(2);

QString missedText(ServicePulse::Parts parts)
{
    // Whoever does not come round cannot draw either, and does not ask the interpreter.
    if (parts.testFlag(ServicePulse::Gui)) {
        return QStringLiteral("der GUI-Thread");
    }
    QStringList names;
    if (parts.testFlag(ServicePulse::Frame)) {
        names.append(QStringLiteral("das Zeichnen"));
    }
    if (parts.testFlag(ServicePulse::Interpreter)) {
        names.append(QStringLiteral("der Interpreter-Thread"));
    }
    return names.join(QStringLiteral(" und "));
}

} // namespace

ServiceWatcher::ServiceWatcher(const ServiceEnvironment &environment,
                               std::function<void(ServicePulse::Parts)> ask)
    : m_socket(environment.notifySocket)
    , m_period(environment.watchdog)
    , m_ask(std::move(ask))
{
    m_clock.start();
    for (QTimer *timer : {&m_again, &m_statusPause, &m_beat}) {
        timer->setSingleShot(true);
        timer->setTimerType(Qt::PreciseTimer);
    }
    connect(&m_again, &QTimer::timeout, this, &ServiceWatcher::deliver);
    connect(&m_statusPause, &QTimer::timeout, this, &ServiceWatcher::tellStatus);
    connect(&m_beat, &QTimer::timeout, this, &ServiceWatcher::beat);
}

template <typename Change> void ServiceWatcher::noteNews(const Change &change)
{
    const InnerLocker lock(&m_statusMutex);
    change();
    if (!std::exchange(m_statusNoted, true)) {
        QMetaObject::invokeMethod(this, &ServiceWatcher::tellStatus, Qt::QueuedConnection);
    }
}

void ServiceWatcher::noteStatus(const QString &text)
{
    noteNews([&] { m_status = text; });
}

void ServiceWatcher::noteAutomatic(bool runs)
{
    noteNews([&] { m_automaticRuns = runs; });
}

void ServiceWatcher::tellStatus()
{
    if (m_statusPause.isActive()) {
        return;
    }
    QByteArray status;
    {
        const InnerLocker lock(&m_statusMutex);
        m_statusNoted = false;
        status = serviceStatus(m_status, m_automaticRuns);
    }
    if (m_toldStatus != status) {
        m_toldStatus = status;
        m_statusWaits = status;
        m_statusPause.start(statusPeriod);
        deliver();
    }
}

void ServiceWatcher::become(bool &condition)
{
    const bool news = !std::exchange(condition, true);
    if (news && m_frameShown && m_backendAnswered) {
        m_readyWaits = true;
        deliver();
        startPulse();
    }
}

void ServiceWatcher::end()
{
    m_endWaits = true;
    deliver();
}

void ServiceWatcher::deliver()
{
    QByteArrayList lines;
    if (m_readyWaits) {
        lines.append("READY=1");
    }
    if (m_statusWaits) {
        lines.append("STATUS=" + *m_statusWaits);
    }
    if (m_endWaits) {
        lines.append("STOPPING=1");
    }
    if (lines.isEmpty()) {
        return;
    }
    if (!m_socket.send(lines.join('\n'))) {
        m_again.start(retryPeriod);
        return;
    }
    m_again.stop();
    m_readyWaits = m_endWaits = false;
    m_statusWaits.reset();
}

void ServiceWatcher::startPulse()
{
    if (m_period.count() > 0) {
        m_pulse.emplace(m_period, now());
        beat();
    }
}

void ServiceWatcher::answer(ServicePulse::Parts parts)
{
    if (m_pulse) {
        m_pulse->answer(parts);
        beat();
    }
}

void ServiceWatcher::excuse()
{
    if (m_pulse) {
        m_pulse->excuseUntil(now() + excusedTime);
        beat();
    }
}

void ServiceWatcher::beat()
{
    const ServicePulse::Step step = m_pulse->check(now());
    if (step.feed) {
        m_socket.send("WATCHDOG=1");
    }
    if (step.recovered) {
        logWarning("Es antworten wieder alle.");
    }
    if (step.ask) {
        m_ask(step.ask);
    }
    if (step.missed) {
        tellMissed(step.missed);
    }
    if (const std::optional<ServicePulse::Time> due = m_pulse->due(now())) {
        m_beat.start(std::max(*due - now(), ServicePulse::Time(1)));
    } else {
        m_beat.stop();
    }
}

void ServiceWatcher::tellMissed(ServicePulse::Parts parts) const
{
    const QString activity = BackendActivity::text();
    const QString busy =
        activity.isEmpty() ? QString() : QStringLiteral(" Das Backend ist in %1.").arg(activity);
    logCritical("Seit %lld ms steht %s.%s Bleibt es dabei, startet der Dienst neu. Die Python-Threads:",
                static_cast<long long>(m_period.count()) * 3 / 4, qUtf8Printable(missedText(parts)),
                qUtf8Printable(busy));
    PythonStacks::write();
}
