#pragma once

#include "src/service_environment.h"

#include <QThread>

#include <memory>

class Bridge;
class QQuickWindow;
class ServiceProbe;
class ServiceWatcher;

/// The program as a service: tells the service manager when it is ready, what it does and when it ends, and
/// feeds its watchdog as long as the GUI thread, the drawing and the interpreter thread all get on.
///
/// Without a service manager there is nothing of it, not even its thread. Lives on the GUI thread and
/// outlives the Bridge; what it does is done on a thread of its own, which waits for no other: the parts of
/// the program are asked by events and answer by events.
class ServiceWatch
{
public:
    explicit ServiceWatch(const ServiceEnvironment &environment);
    ~ServiceWatch();

    Q_DISABLE_COPY_MOVE(ServiceWatch)

    /// From now on the backend's answer to Ready and the interpreter thread are looked at. Before the screens
    /// are loaded; the bridge outlives the event loop.
    void watchBackend(Bridge &bridge);
    /// The window whose frames are looked at; null if the screens could not be loaded.
    void watchWindow(QQuickWindow *window);
    /// From now on, for as long as the manager waits for the end of a service, the GUI thread may stand: it
    /// waits for the end of Python, and perhaps of the machine.
    void excuse();
    /// Python has ended.
    void pythonEnded();
    /// The event loop has ended, and the program is about to.
    void end();

private:
    QThread m_thread;
    /// Null without a service manager. Deleted on its thread, when that ends.
    ServiceWatcher *m_watcher = nullptr;
    std::unique_ptr<ServiceProbe> m_probe;
};
