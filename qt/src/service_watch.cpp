#include "src/service_watch.h"

#include "shared/gui_thread.h"
#include "src/py/bridge.h"
#include "src/service_watcher.h"

#include "brovik/auto/auto.h"
#include "brovik/gui/gui.h"

#include <QEvent>
#include <QPointer>
#include <QQuickWindow>

#include <atomic>

/// The part of ServiceWatch that stands for the GUI thread: it lives there, asks on for the others, and is
/// told of each frame on the thread that draws.
class ServiceProbe : public QObject
{
public:
    void setWatcher(ServiceWatcher *watcher) { m_watcher = watcher; }
    void setBridge(Bridge *bridge) { m_bridge = bridge; }

    void setWindow(QQuickWindow *window)
    {
        m_window = window;
        if (window != nullptr) {
            window->installEventFilter(this);
            connect(window, &QQuickWindow::frameSwapped, this, &ServiceProbe::frameShown,
                    Qt::DirectConnection);
            window->update();
        }
    }

    /// The GUI thread's answer, and questions to the others.
    void ask(ServicePulse::Parts parts)
    {
        Q_ASSERT(onGuiThread());
        answer(parts & ServicePulse::Gui);
        if (parts.testFlag(ServicePulse::Frame)) {
            askForFrame();
        }
        if (parts.testFlag(ServicePulse::Interpreter)) {
            askInterpreter();
        }
    }

    /// Any thread.
    void answer(ServicePulse::Parts parts)
    {
        QMetaObject::invokeMethod(
            m_watcher, [watcher = m_watcher, parts] { watcher->answer(parts); }, Qt::QueuedConnection);
    }

    void tellOfBackend() { post(&ServiceWatcher::noteBackend); }

    bool eventFilter(QObject *watched, QEvent *event) override
    {
        // A window that nobody sees draws no more frames, also not that one which it has been asked for. What
        // is watched may be at its end, and then it is no more than a QWindow.
        const auto *window = qobject_cast<QWindow *>(watched);
        if (window != nullptr && event->type() == QEvent::Expose && !window->isExposed()) {
            answerFrame();
        }
        return QObject::eventFilter(watched, event);
    }

private:
    /// The thread that draws.
    void frameShown()
    {
        if (!m_seen.exchange(true)) {
            post(&ServiceWatcher::noteFrame);
        }
        answerFrame();
    }

    void askForFrame()
    {
        m_frameAwaited = true;
        if (m_window.isNull() || !m_window->isExposed()) {
            answerFrame();
        } else {
            m_window->update();
        }
    }

    /// Any thread.
    void answerFrame()
    {
        if (m_frameAwaited.exchange(false)) {
            answer(ServicePulse::Frame);
        }
    }

    void askInterpreter()
    {
        const auto reply = [this] { answer(ServicePulse::Interpreter); };
        if (m_bridge == nullptr || !m_bridge->post(reply)) {
            reply();
        }
    }

    /// Any thread.
    void post(void (ServiceWatcher::*note)())
    {
        QMetaObject::invokeMethod(m_watcher, note, Qt::QueuedConnection);
    }

    ServiceWatcher *m_watcher = nullptr;
    Bridge *m_bridge = nullptr;
    QPointer<QQuickWindow> m_window;
    std::atomic<bool> m_seen = false;
    std::atomic<bool> m_frameAwaited = false;
};

ServiceWatch::ServiceWatch(const ServiceEnvironment &environment)
{
    Q_ASSERT(onGuiThread());
    if (environment.notifySocket.isEmpty()) {
        return;
    }
    m_probe = std::make_unique<ServiceProbe>();
    const auto ask = [probe = m_probe.get()](ServicePulse::Parts parts) {
        QMetaObject::invokeMethod(
            probe, [probe, parts] { probe->ask(parts); }, Qt::QueuedConnection);
    };
    m_watcher = new ServiceWatcher(environment, ask);
    m_probe->setWatcher(m_watcher);
    m_watcher->moveToThread(&m_thread);
    QObject::connect(&m_thread, &QThread::finished, m_watcher, &QObject::deleteLater);

    // Under the mutex of the object that tells, which alone is asked therefore.
    const Gui &gui = Gui::instance();
    const Auto &automatic = Auto::instance();
    const auto noteStatus = [this, &gui] { m_watcher->noteStatus(gui.status()); };
    const auto noteAutomatic = [this, &automatic] { m_watcher->noteAutomatic(automatic.active()); };
    QObject::connect(&gui, &Gui::statusChanged, m_probe.get(), noteStatus, Qt::DirectConnection);
    QObject::connect(&automatic, &Auto::activeChanged, m_probe.get(), noteAutomatic, Qt::DirectConnection);
    noteStatus();
    m_thread.start();
}

ServiceWatch::~ServiceWatch()
{
    Q_ASSERT(onGuiThread());
    if (m_watcher != nullptr) {
        // As an event, so that what was told before is delivered before.
        QMetaObject::invokeMethod(
            m_watcher, [this] { m_thread.quit(); }, Qt::QueuedConnection);
        m_thread.wait();
    }
}

void ServiceWatch::watchBackend(Bridge &bridge)
{
    Q_ASSERT(onGuiThread());
    if (!m_probe) {
        return;
    }
    m_probe->setBridge(&bridge);
    // The bridge was connected first, so its blocking call has returned when this one comes.
    const auto noteAnswer = [probe = m_probe.get()](Gui::GuiValueEnum what) {
        if (what == Gui::Ready && Gui::instance().controlsEnabled()) {
            probe->tellOfBackend();
        }
    };
    QObject::connect(&Gui::instance(), &Gui::toPy, m_probe.get(), noteAnswer, Qt::DirectConnection);
}

void ServiceWatch::watchWindow(QQuickWindow *window)
{
    Q_ASSERT(onGuiThread());
    if (m_probe) {
        m_probe->setWindow(window);
    }
}

void ServiceWatch::excuse()
{
    Q_ASSERT(onGuiThread());
    if (m_watcher != nullptr) {
        QMetaObject::invokeMethod(m_watcher, &ServiceWatcher::excuse, Qt::QueuedConnection);
    }
}

void ServiceWatch::pythonEnded()
{
    Q_ASSERT(onGuiThread());
    if (m_probe) {
        // What the interpreter thread had still to answer was dropped.
        m_probe->answer(ServicePulse::Interpreter);
    }
}

void ServiceWatch::end()
{
    Q_ASSERT(onGuiThread());
    if (m_watcher != nullptr) {
        QMetaObject::invokeMethod(m_watcher, &ServiceWatcher::end, Qt::QueuedConnection);
    }
}
