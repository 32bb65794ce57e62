#include "src/py/python_stacks.h"

#include "src/py/exceptions.h"
#include "src/py/interpreter_thread.h"

#include <pybind11/pybind11.h>

#include <csignal>
#include <pthread.h>
#include <unistd.h>

namespace py = pybind11;

namespace {

/// Python's fault handler writes the stacks when a signal comes. This one is used for nothing else.
int stackSignal()
{
    constexpr int offset = 5;
    return SIGRTMIN + offset;
}

} // namespace

void PythonStacks::arm()
{
    Q_ASSERT(onInterpreterThread());
    guarded([] {
        py::module_::import("faulthandler")
            .attr("register")(stackSignal(), py::arg("file") = STDERR_FILENO, py::arg("all_threads") = true);
    });
}

void PythonStacks::write()
{
    struct sigaction action = {};
    sigaction(stackSignal(), nullptr, &action);
    if (action.sa_handler != SIG_DFL && action.sa_handler != SIG_IGN) {
        pthread_kill(pthread_self(), stackSignal());
    }
}
