#include "end_watch.h"

#include "backend_activity.h"
#include "end_signals.h"
#include "log.h"
#include "python_stacks.h"

#include <QElapsedTimer>
#include <QGuiApplication>
#include <QSocketNotifier>
#include <QTimer>
#include <QWindow>

#include <csignal>
#include <cstdlib>
#include <ctime>
#include <unistd.h>

namespace {

[[noreturn]] void leave(int /*signal*/)
{
    _exit(EXIT_FAILURE);
}

/// Leaves the process after this time even if no thread gets anything done, for example because nobody reads
/// what it logs.
void leaveAfter(std::chrono::milliseconds time)
{
    constexpr int offset = 6;
    const int number = SIGRTMIN + offset;
    struct sigaction action = {};
    action.sa_handler = leave;
    sigaction(number, &action, nullptr);

    struct sigevent event = {};
    event.sigev_notify = SIGEV_SIGNAL;
    event.sigev_signo = number;
    timer_t timer = {};
    if (timer_create(CLOCK_MONOTONIC, &event, &timer) != 0) {
        return;
    }
    const auto seconds = std::chrono::duration_cast<std::chrono::seconds>(time);
    const std::chrono::nanoseconds rest = time - seconds;
    const struct itimerspec once = {.it_interval = {},
                                    .it_value = {.tv_sec = seconds.count(), .tv_nsec = rest.count()}};
    timer_settime(timer, 0, &once, nullptr);
}

/// GUI thread. Quitting alone would not tell the windows, which keep their position then; and without a
/// window that closes nothing would quit.
void closeProgram()
{
    for (QWindow *window : QGuiApplication::topLevelWindows()) {
        window->close();
    }
    QCoreApplication::quit();
}

QString awaited()
{
    const QString activity = BackendActivity::text();
    return activity.isEmpty() ? QStringLiteral("den GUI-Thread") : activity;
}

} // namespace

/// The part of EndWatch that lives on its thread.
class EndWatcher : public QObject
{
public:
    explicit EndWatcher(const EndTimes &times)
        : m_times(times)
    {}

    void start()
    {
        if (EndSignals::descriptor() >= 0) {
            auto *notifier = new QSocketNotifier(EndSignals::descriptor(), QSocketNotifier::Read, this);
            connect(notifier, &QSocketNotifier::activated, this, &EndWatcher::readSignals);
        }
        m_line.setTimerType(Qt::PreciseTimer);
        connect(&m_line, &QTimer::timeout, this, &EndWatcher::tell);
    }

    void begin()
    {
        if (!m_line.isActive()) {
            m_since.start();
            m_line.start(m_times.line);
        }
    }

    void finish()
    {
        if (m_signal == 0) {
            m_line.stop();
        }
    }

private:
    void readSignals()
    {
        unsigned char signal = 0;
        while (::read(EndSignals::descriptor(), &signal, 1) == 1) {
            if (m_signal == 0) {
                endBy(signal);
            }
        }
    }

    void endBy(int signal)
    {
        constexpr std::chrono::seconds respite(2);
        m_signal = signal;
        leaveAfter(m_times.patience + respite);
        logInfo("%s: Das Programm wird beendet.", EndSignals::name(signal));
        QMetaObject::invokeMethod(qApp, closeProgram, Qt::QueuedConnection);
        begin();
        QTimer::singleShot(m_times.patience, Qt::PreciseTimer, this, &EndWatcher::giveUp);
    }

    void tell() const
    {
        const auto seconds =
            std::chrono::round<std::chrono::seconds>(std::chrono::milliseconds(m_since.elapsed()));
        logWarning("Das Ende wartet seit %lld s auf %s.", static_cast<long long>(seconds.count()),
                   qUtf8Printable(awaited()));
    }

    [[noreturn]] void giveUp() const
    {
        logCritical("%s: Das Programm wartet noch immer auf %s und wird abgebrochen. Die Python-Threads:",
                    EndSignals::name(m_signal), qUtf8Printable(awaited()));
        PythonStacks::write();
        leave(m_signal);
    }

    const EndTimes m_times;
    QTimer m_line{this};
    QElapsedTimer m_since;
    /// The first one that came; 0 if none has.
    int m_signal = 0;
};

EndWatch::EndWatch(const EndTimes &times)
    : m_watcher(new EndWatcher(times))
{
    EndSignals::open();
    m_watcher->moveToThread(&m_thread);
    QObject::connect(&m_thread, &QThread::started, m_watcher, &EndWatcher::start);
    QObject::connect(&m_thread, &QThread::finished, m_watcher, &QObject::deleteLater);
    m_thread.start();
}

EndWatch::~EndWatch()
{
    m_thread.quit();
    m_thread.wait();
}

void EndWatch::begin()
{
    QMetaObject::invokeMethod(m_watcher, &EndWatcher::begin, Qt::QueuedConnection);
}

void EndWatch::finish()
{
    QMetaObject::invokeMethod(m_watcher, &EndWatcher::finish, Qt::QueuedConnection);
}
