#include "actuator_bindings.h"
#include "auto_bindings.h"
#include "chart_bindings.h"
#include "config_bindings.h"
#include "exceptions.h"
#include "gpio_bindings.h"
#include "gui_bindings.h"
#include "log.h"
#include "python_property.h"
#include "sensor_bindings.h"
#include "settings_bindings.h"
#include "shell_bindings.h"
#include "simulator_bindings.h"
#include "wifi_bindings.h"

#include <pybind11/embed.h>

#include <QMessageLogger>

#include <iostream>

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
        log(QMessageLogger(nullptr, 0, nullptr, pythonLogCategory),
            text.isNull() ? "Konnte die Python-Nachricht nicht konvertieren" : qUtf8Printable(text));
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

/// UTF-8; what has none is escaped as Python's own stderr does it, so that no print fails.
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

} // namespace

// Both modules must be known before the interpreter starts, in this order.

PYBIND11_EMBEDDED_MODULE(_std_redirects, module)
{
    module.def("stdout_redirect", [](const py::str &text) { std::cout << printable(text) << std::flush; });
    module.def("stderr_redirect", [](const py::str &text) { std::cerr << printable(text) << std::flush; });
}

PYBIND11_EMBEDDED_MODULE(brovik, module)
{
    module.def("forward_exception", forwardException,
               "Shows the exception that is being handled to the operator.");
    bindLogger(module);
    for (const Submodule &submodule : submodules) {
        py::module_ made = module.def_submodule(submodule.name);
        submodule.bind(made);
    }
}
