#include "src/py/brovik_module.h"
#include "src/py/daemon_threads.h"
#include "src/py/singletons.h"

#include <pybind11/embed.h>

#include <QGuiApplication>
#include <QThread>

#include <csignal>
#include <cstdio>
#include <memory>

namespace py = pybind11;

namespace {

/// Runs one module of unit tests in an interpreter of its own, on this thread. True if all passed.
bool runTests(const char *module)
{
    registerBuiltInModules();
    parkDaemonThreadsAtEnd();
    const py::scoped_interpreter interpreter(false);
    try {
        py::module_::import("sys").attr("path").attr("insert")(0, KUBELOR_PYTHON_TESTS);
        const py::object unittest = py::module_::import("unittest");
        const py::object suite = py::module_::import("order").attr("load")(module);
        const py::object result =
            unittest.attr("TextTestRunner")(py::arg("verbosity") = 2).attr("run")(suite);
        return result.attr("testsRun").cast<int>() > 0 && result.attr("wasSuccessful")().cast<bool>();
    } catch (const py::error_already_set &error) {
        std::fprintf(stderr, "%s\n", error.what());
        return false;
    }
}

} // namespace

/// Python on a thread of its own, the singletons on the GUI thread with its event loop: as in the program.
int main(int argc, char **argv)
{
    // As in the program: to write to what the other side has closed is an error, and not the end.
    std::signal(SIGPIPE, SIG_IGN);
    createSingletons();
    QGuiApplication application(argc, argv);
    if (argc != 2) {
        std::fprintf(stderr, "usage: %s MODULE\n", argv[0]);
        return 2;
    }
    bool passed = false;
    const std::unique_ptr<QThread> python(QThread::create([&] { passed = runTests(argv[1]); }));
    QObject::connect(python.get(), &QThread::finished, &application, &QCoreApplication::quit);
    python->start();
    QCoreApplication::exec();
    python->wait();
    return passed ? 0 : 1;
}
