#include "src/py/brovik_module.h"

#include "shared/log.h"
#include "src/py/bindings/bindings.h"
#include "src/py/exceptions.h"
#include "src/py/python_property.h"

#include <pybind11/embed.h>

#include <QMessageLogger>

#include <iostream>
#include <mutex>

namespace py = pybind11;

namespace {

struct Submodule
{
    const char *name;
    void (*bind)(py::module_ &module);
};

/// In the order in which Python sees them made.
constexpr Submodule submodules[] = {
    {"actuator", bindActuator}, {"auto", bindAuto},           {"gpio", bindGPIO},     {"gui", bindGui},
    {"chart", bindChart},       {"config", bindConfig},       {"sensor", bindSensor}, {"shell", bindShell},
    {"settings", bindSettings}, {"simulator", bindSimulator}, {"wifi", bindWifi},
};

/// Scope of the static functions of `brovik.Logger`.
struct Logger
{};

template <typename Log> void bindLogFunction(py::class_<Logger> &cls, const char *name, const Log &log)
{
    const auto logText = [log](const py::str &message, bool /*withTrace*/) {
        const QString text = castPy2Qt<QString>(message);
        const QByteArray line =
            text.isNull() ? QByteArray("Konnte die Python-Nachricht nicht konvertieren") : text.toUtf8();
        log(QMessageLogger(nullptr, 0, nullptr, pythonLogCategory), line.constData());
    };
    cls.def_static(name, logText, py::arg("msg"), pythonArgument<bool>("w_trace") = false);
}

void bindLogger(py::module_ &module)
{
    py::class_<Logger> cls(module, "Logger", "Writes to the log of the program.");
    bindLogFunction(cls, "debug",
                    [](const QMessageLogger &logger, const char *text) { logger.debug("%s", text); });
    bindLogFunction(cls, "info",
                    [](const QMessageLogger &logger, const char *text) { logger.info("%s", text); });
    bindLogFunction(cls, "warning",
                    [](const QMessageLogger &logger, const char *text) { logger.warning("%s", text); });
    bindLogFunction(cls, "critical",
                    [](const QMessageLogger &logger, const char *text) { logger.critical("%s", text); });
    bindLogFunction(cls, "fatal",
                    [](const QMessageLogger &logger, const char *text) { logger.fatal("%s", text); });
}

/// The text in UTF-8. What cannot be encoded is escaped as Python's own stderr does it, so that no print
/// fails.
std::string printable(const py::str &text)
{
    return text.attr("encode")("utf-8", "backslashreplace").cast<std::string>();
}

void forwardException()
{
    try {
        handle_py_exception(nullptr, 0, nullptr);
    } catch (const std::exception &error) {
        logWarning("\nforward_exception failed with: %s\n\n", error.what());
    } catch (...) {
        logWarning("\nforward_exception failed with unknown exception!!!\n\n");
    }
}

void fillStdRedirects(py::module_ &module)
{
    module.def("stdout_redirect", [](const py::str &text) { std::cout << printable(text) << std::flush; });
    module.def("stderr_redirect", [](const py::str &text) { std::cerr << printable(text) << std::flush; });
}

void fillBrovik(py::module_ &module)
{
    module.def("forward_exception", forwardException,
               "Shows the exception that is being handled to the operator.");
    bindLogger(module);
    for (const Submodule &submodule : submodules) {
        py::module_ made = module.def_submodule(submodule.name);
        submodule.bind(made);
    }
}

/// Calls what fills a module when Python imports it.
PyObject *makeModule(const char *name, py::module_::module_def &definition, void (*fill)(py::module_ &))
{
    auto module = py::module_::create_extension_module(name, nullptr, &definition);
    try {
        fill(module);
        return module.ptr();
    }
    PYBIND11_CATCH_INIT_EXCEPTIONS // GCOVR_EXCL_BR_LINE: no module fails to be filled
}

PyObject *makeStdRedirects()
{
    static py::module_::module_def definition;
    return makeModule("_std_redirects", definition, fillStdRedirects);
}

} // namespace

PyObject *makeBrovik()
{
    static py::module_::module_def definition;
    return makeModule("brovik", definition, fillBrovik);
}

void registerBuiltInModules()
{
    static std::once_flag registered;
    std::call_once(registered, [] {
        PyImport_AppendInittab("_std_redirects", makeStdRedirects);
        PyImport_AppendInittab("brovik", makeBrovik);
    });
}
