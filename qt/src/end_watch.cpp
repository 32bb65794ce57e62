#include "src/end_watch.h"

#include "shared/gui_thread.h"
#include "shared/log.h"
#include "src/exit_guard.h"
#include "src/py/backend_activity.h"
#include "src/py/end_signals.h"
#include "src/py/python_stacks.h"

#include <QElapsedTimer>
#include <QGuiApplication>
#include <QSocketNotifier>
#include <QTimer>
#include <QWindow>

#include <chrono>
#include <csignal>
#include <cstdlib>
#include <ctime>
#include <unistd.h>

namespace {

/// Between two lines that say what is waited for.
constexpr std::chrono::seconds linePeriod(1);
/// From what asks for the end to the end by force.
constexpr std::chrono::seconds patience(10);
/// The end by force has this long to say so.
constexpr std::chrono::seconds respite(2);

[[noreturn]] void leave(int /*signal*/)
{
    leaveAtOnce(EXIT_FAILURE);
}

/// Leaves the process after this time even if no thread gets anything done, for example because nobody reads
/// what it logs.
void leaveAfter(std::chrono::seconds time)
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
    const struct itimerspec once = {.it_interval = {}, .it_value = {.tv_sec = time.count(), .tv_nsec = 0}};
    timer_settime(timer, 0, &once, nullptr);
}

/// GUI thread. Quitting alone would not tell the windows, which keep their position then; and without a
/// window that closes nothing would quit.
void closeProgram()
{
    Q_ASSERT(onGuiThread());
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
            m_line.start(linePeriod);
        }
    }

    void finish()
    {
        if (m_cause.isEmpty()) {
            m_line.stop();
        }
    }

    /// Whether this cause is the first one.
    bool limit(const QByteArray &cause)
    {
        if (!m_cause.isEmpty()) {
            return false;
        }
        m_cause = cause;
        leaveAfter(patience + respite);
        logInfo("%s: Das Programm wird beendet.", cause.constData());
        begin();
        QTimer::singleShot(patience, Qt::PreciseTimer, this, &EndWatcher::giveUp);
        return true;
    }

private:
    void readSignals()
    {
        unsigned char signal = 0;
        while (::read(EndSignals::descriptor(), &signal, 1) == 1) {
            if (limit(EndSignals::name(signal))) {
                QMetaObject::invokeMethod(qApp, closeProgram, Qt::QueuedConnection);
            }
        }
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
        // GCOVR_EXCL_BR_START: what the process has come to goes with it
        logCritical("%s: Das Programm wartet noch immer auf %s und wird abgebrochen. Die Python-Threads:",
                    m_cause.constData(), qUtf8Printable(awaited()));
        // The threads run on while their stacks are read, so the reading may crash.
        std::signal(SIGSEGV, leave);
        PythonStacks::write();
        leaveAtOnce(EXIT_FAILURE);
        // GCOVR_EXCL_BR_STOP
    }

    QTimer m_line{this};
    QElapsedTimer m_since;
    /// What asked for the end first; empty if nothing has.
    QByteArray m_cause;
};

EndWatch::EndWatch()
    : m_watcher(new EndWatcher)
{
    Q_ASSERT(onGuiThread());
    EndSignals::open();
    m_watcher->moveToThread(&m_thread);
    QObject::connect(&m_thread, &QThread::started, m_watcher, &EndWatcher::start);
    QObject::connect(&m_thread, &QThread::finished, m_watcher, &QObject::deleteLater);
    m_thread.start();
}

EndWatch::~EndWatch()
{
    Q_ASSERT(onGuiThread());
    m_thread.quit();
    m_thread.wait();
}

void EndWatch::begin()
{
    Q_ASSERT(onGuiThread());
    QMetaObject::invokeMethod(m_watcher, &EndWatcher::begin, Qt::QueuedConnection);
}

void EndWatch::finish()
{
    Q_ASSERT(onGuiThread());
    QMetaObject::invokeMethod(m_watcher, &EndWatcher::finish, Qt::QueuedConnection);
}

void EndWatch::limit(const QByteArray &cause)
{
    QMetaObject::invokeMethod(
        m_watcher, [watcher = m_watcher, cause] { watcher->limit(cause); }, Qt::QueuedConnection);
}
