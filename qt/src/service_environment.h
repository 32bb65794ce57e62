#pragma once

#include <QByteArray>

#include <chrono>

/// What the service manager tells a service through its environment.
struct ServiceEnvironment
{
    /// Where notifications go, as NOTIFY_SOCKET has it; empty if no service manager waits for any.
    QByteArray notifySocket;
    /// The period of the manager's watchdog; zero if it does not watch this process.
    std::chrono::milliseconds watchdog{0};

    /// Reads these variables and takes them out of the environment: what the program starts is not the
    /// service. A watchdog's period that cannot be one is logged. GUI thread, before other threads run.
    static ServiceEnvironment take();
};
