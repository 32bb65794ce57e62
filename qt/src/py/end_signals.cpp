#include "src/py/end_signals.h"

#include "shared/gui_thread.h"
#include "shared/log.h"
#include "src/py/exceptions.h"
#include "src/py/interpreter_thread.h"

#include <pybind11/pybind11.h>

#include <QStringList>

#include <cerrno>
#include <csignal>
#include <cstring>
#include <fcntl.h>
#include <unistd.h>

namespace py = pybind11;

namespace {

struct EndSignal
{
    int number;
    const char *name;
};

constexpr EndSignal endSignals[] = {{SIGTERM, "SIGTERM"}, {SIGHUP, "SIGHUP"}, {SIGINT, "SIGINT"}};

constexpr int closed = -1;
/// Reading end and writing end.
int ends[2] = {closed, closed};

/// The process whose end the signals ask for.
pid_t owner = 0;

/// Async-signal-safe. If the pipe is full, signals enough wait in it: this one may be lost.
void tell(int signal)
{
    const int error = errno;
    if (getpid() == owner) {
        const auto byte = static_cast<unsigned char>(signal);
        [[maybe_unused]] const ssize_t written = ::write(ends[1], &byte, 1);
    } else {
        // A fork of the backend: the signal is its own, and comes again when the handler has returned.
        std::signal(signal, SIG_DFL);
        std::raise(signal);
    }
    errno = error;
}

bool isHandled(const EndSignal &signal)
{
    struct sigaction action = {};
    sigaction(signal.number, nullptr, &action);
    return action.sa_handler == tell;
}

void handle(const EndSignal &signal)
{
    struct sigaction action = {};
    action.sa_handler = tell;
    action.sa_flags = SA_RESTART;
    sigaction(signal.number, &action, nullptr);
}

void handleAll()
{
    for (const EndSignal &signal : endSignals) {
        handle(signal);
    }
}

void forgetHandlersOfPython()
{
    const py::module_ python = py::module_::import("signal");
    for (const EndSignal &signal : endSignals) {
        if (PyCallable_Check(python.attr("getsignal")(signal.number).ptr()) != 0) {
            // Not the default: a further signal that comes right now must not end the process.
            python.attr("signal")(signal.number, python.attr("SIG_IGN"));
        }
    }
}

} // namespace

void EndSignals::open()
{
    Q_ASSERT(onGuiThread());
    owner = getpid();
    if (pipe2(ends, O_CLOEXEC | O_NONBLOCK) != 0) {
        logCritical("Signale beenden das Programm nicht ordentlich: %s", std::strerror(errno));
        ends[0] = ends[1] = closed;
    }
}

int EndSignals::descriptor()
{
    return ends[0];
}

const char *EndSignals::name(int signal)
{
    for (const EndSignal &known : endSignals) {
        if (known.number == signal) {
            return known.name;
        }
    }
    return "?";
}

void EndSignals::claim()
{
    if (descriptor() != closed) {
        handleAll();
    }
}

void EndSignals::claimBack()
{
    if (descriptor() == closed) {
        return;
    }
    QStringList lost;
    for (const EndSignal &signal : endSignals) {
        if (!isHandled(signal)) {
            handle(signal);
            lost.append(QLatin1String(signal.name));
        }
    }
    if (!lost.isEmpty()) {
        logWarning("Das Backend hat %s selbst behandelt; nun beendet das wieder das Programm.",
                   qUtf8Printable(lost.join(QLatin1String(", "))));
    }
}

void EndSignals::claimForGood()
{
    Q_ASSERT(onInterpreterThread());
    if (descriptor() != closed) {
        guarded(forgetHandlersOfPython);
        handleAll();
    }
}
