#pragma once

#include "shared/shared_object.h"
#include "src/service_environment.h"
#include "src/service_pulse.h"
#include "src/service_socket.h"

#include <QByteArray>
#include <QElapsedTimer>
#include <QObject>
#include <QString>
#include <QTimer>

#include <functional>
#include <optional>

/// The part of ServiceWatch that talks to the service manager. Lives on a thread of its own; the text of the
/// status alone is handed over on any thread, under a mutex of its own.
class ServiceWatcher : public QObject
{
public:
    /// `ask` asks parts of the program from the watcher's thread and must not wait; each of them answers
    /// once.
    ServiceWatcher(const ServiceEnvironment &environment, std::function<void(ServicePulse::Parts)> ask);

    // Any thread. However often the status changes, one event waits at most.

    void noteStatus(const QString &text);
    void noteAutomatic(bool runs);

    // The watcher's thread.

    /// The first frame is on the screen.
    void noteFrame() { become(m_frameShown); }
    /// The backend has answered Ready.
    void noteBackend() { become(m_backendAnswered); }
    void answer(ServicePulse::Parts parts);
    void excuse();
    void end();

private:
    void become(bool &condition);
    template <typename Change> void noteNews(const Change &change);
    void tellStatus();
    void deliver();
    void startPulse();
    void beat();
    void tellMissed(ServicePulse::Parts parts) const;
    ServicePulse::Time now() const { return ServicePulse::Time(m_clock.elapsed()); }

    ServiceSocket m_socket;
    const std::chrono::milliseconds m_period;
    const std::function<void(ServicePulse::Parts)> m_ask;
    QElapsedTimer m_clock;

    bool m_frameShown = false;
    bool m_backendAnswered = false;

    /// What the manager has not taken yet.
    bool m_readyWaits = false;
    bool m_endWaits = false;
    std::optional<QByteArray> m_statusWaits;
    QTimer m_again{this};

    /// Guards what the status is made of, and whether that is still to be told.
    InnerMutex m_statusMutex;
    QString m_status;
    bool m_automaticRuns = false;
    bool m_statusNoted = false;
    QByteArray m_toldStatus;
    QTimer m_statusPause{this};

    /// As soon as the program is ready, if there is a watchdog.
    std::optional<ServicePulse> m_pulse;
    QTimer m_beat{this};
};
