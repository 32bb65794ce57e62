#include "src/py/python_stacks.h"

#include "shared/log.h"
#include "src/py/exceptions.h"
#include "src/py/interpreter_thread.h"

#include <pybind11/pybind11.h>

#include <QFile>

#include <csignal>
#include <pthread.h>
#include <sys/mman.h>
#include <unistd.h>

namespace py = pybind11;

namespace {

/// Python's fault handler writes the stacks when a signal comes. This one is used for nothing else.
int stackSignal()
{
    constexpr int offset = 5;
    return SIGRTMIN + offset;
}

QByteArray dump(QFile &file)
{
    py::module_::import("faulthandler")
        .attr("dump_traceback")(py::arg("file") = file.handle(), py::arg("all_threads") = true);
    file.seek(0);
    return file.readAll();
}

} // namespace

void PythonStacks::arm()
{
    Q_ASSERT(onInterpreterThread());
    // The descriptor itself, which is open as long as the process is: the file objects of Python may be
    // replaced or closed by the backend.
    guarded([] {
        const py::module_ handler = py::module_::import("faulthandler");
        handler.attr("register")(stackSignal(), py::arg("file") = STDERR_FILENO,
                                 py::arg("all_threads") = true);
        handler.attr("enable")(py::arg("file") = STDERR_FILENO, py::arg("all_threads") = true);
    });
}

QByteArray PythonStacks::text()
{
    // In memory, not in a pipe: nobody would read it while the GIL is held.
    QFile file;
    const int descriptor = memfd_create("stacks", MFD_CLOEXEC);
    if (descriptor < 0 || !file.open(descriptor, QIODevice::ReadWrite, QFileDevice::AutoCloseHandle)) {
        return {};
    }
    try {
        return dump(file);
        // GCOVR_EXCL_BR_START: writing into memory does not fail
    } catch (const std::exception &error) {
        logWarning("Konnte die Python-Threads nicht lesen: %s", error.what());
        return {};
    }
    // GCOVR_EXCL_BR_STOP
}

void PythonStacks::write()
{
    struct sigaction action = {};
    sigaction(stackSignal(), nullptr, &action);
    if (action.sa_handler != SIG_DFL) {
        pthread_kill(pthread_self(), stackSignal());
    }
}
