#include "src/exit_guard.h"

#include "src/py/interpreter_thread.h"

#include <QByteArray>
#include <QCoreApplication>

#include <atomic>
#include <dlfcn.h>
#include <pthread.h>
#include <sys/syscall.h>
#include <unistd.h>
#include <utility>

namespace {

enum class State { Off, Armed, Ending };

std::atomic<State> state = State::Off;
/// The rest is written while the state is Off.
std::function<void(const char *)> askForEnd;
std::function<void()> bringAboutEnd;
pthread_t ownThread = {};
pid_t process = 0;

// GCOVR_EXCL_BR_START: what the process has come to goes with it

/// A fork of the process has no machine to look after.
bool isGuarded()
{
    return state != State::Off && getpid() == process;
}

bool onItsThread()
{
    return pthread_equal(pthread_self(), ownThread) != 0;
}

/// Once: what ends the process meanwhile does so at once.
[[noreturn]] void endInOrder(int status)
{
    Q_ASSERT(onItsThread());
    State armed = State::Armed;
    if (state.compare_exchange_strong(armed, State::Ending)) {
        bringAboutEnd();
    }
    leaveAtOnce(status);
}

[[noreturn]] void endGuarded(const char *function, int status)
{
    const QByteArray cause = QByteArray(function) + '(' + QByteArray::number(status) + ')';
    askForEnd(cause.constData());
    if (onItsThread()) {
        endInOrder(status);
    }
    QMetaObject::invokeMethod(
        QCoreApplication::instance(), [status] { endInOrder(status); }, Qt::QueuedConnection);
    for (;;) {
        pause();
    }
}

// GCOVR_EXCL_BR_STOP

[[noreturn]] void exitUnguarded(int status)
{
    using Exit = void (*)(int);
    // Handlers and destructors belong to the C library.
    static const auto next = reinterpret_cast<Exit>(dlsym(RTLD_NEXT, "exit"));
    next(status);
    leaveAtOnce(status);
}

} // namespace

ExitGuard::ExitGuard(std::function<void(const char *cause)> ask, std::function<void()> end)
{
    Q_ASSERT(state == State::Off);
    askForEnd = std::move(ask);
    bringAboutEnd = std::move(end);
    ownThread = pthread_self();
    process = getpid();
    state = State::Armed;
}

ExitGuard::~ExitGuard()
{
    state = State::Off;
}

void leaveAtOnce(int status)
{
    for (;;) {
        syscall(SYS_exit_group, status);
    }
}

// In place of those of the C library for all that calls them, in whatever library.

// GCOVR_EXCL_BR_START: what the process has come to goes with it

extern "C" [[gnu::visibility("default")]] void exit(int status) noexcept
{
    if (isGuarded()) {
        endGuarded("exit", status);
    }
    exitUnguarded(status);
}

extern "C" [[gnu::visibility("default")]] void _exit(int status)
{
    if (isGuarded() && !holdsGil()) {
        endGuarded("_exit", status);
    }
    leaveAtOnce(status);
}

// GCOVR_EXCL_BR_STOP
