#include "brovik/actuator/actuator.h"
#include "brovik/auto/auto.h"
#include "brovik/chart/chart.h"
#include "brovik/config/config.h"
#include "brovik/gpio/gpio.h"
#include "brovik/gui/gui.h"
#include "brovik/sensor/sensor.h"
#include "brovik/settings/settings.h"
#include "brovik/shell/shell.h"
#include "brovik/simulator/simulator.h"
#include "brovik/wifi/wifi.h"
#include "change_log.h"
#include "log_capture.h"
#include "signal_log.h"
#include "simulated_chip.h"
#include "src/py/types.h"

#include <pybind11/embed.h>
#include <pybind11/stl.h>

#include <QCoreApplication>

#include <map>
#include <memory>
#include <optional>
#include <semaphore>
#include <vector>

// The module `_probe`: what a Python test sees of the Qt side.

namespace py = pybind11;

namespace {

/// "Actuator", or "Actuator.mvKalt" for an object that is a property of a singleton.
QObject *objectOf(const std::string &path)
{
    static const std::map<std::string, QObject *> singletons = {
        {"Actuator", &Actuator::instance()}, {"Auto", &Auto::instance()},
        {"Chart", &Chart::instance()},       {"Config", &Config::instance()},
        {"GPIO", &GPIO::instance()},         {"Gui", &Gui::instance()},
        {"Sensor", &Sensor::instance()},     {"Settings", &Settings::instance()},
        {"Shell", &Shell::instance()},       {"Simulator", &Simulator::instance()},
        {"Wifi", &Wifi::instance()},
    };
    const auto dot = path.find('.');
    QObject *object = singletons.at(path.substr(0, dot));
    if (dot != std::string::npos) {
        object = object->property(path.substr(dot + 1).c_str()).value<QObject *>();
    }
    if (object == nullptr) {
        throw py::key_error(path);
    }
    return object;
}

/// (signal, emitted on the GUI thread, arguments) of each emission.
py::list emissions(const SignalLog &log)
{
    py::list result;
    for (const auto &[name, onGuiThread, values] : log.emissions()) {
        result.append(py::make_tuple(name, onGuiThread, castQt2Py(values)));
    }
    return result;
}

std::unique_ptr<SignalLog> watch(const std::string &path, const std::vector<std::string> &names)
{
    QObject &object = *objectOf(path);
    return names.empty() ? std::make_unique<SignalLog>(object) : std::make_unique<SignalLog>(object, names);
}

/// What QML reads; an enumerator as its number, a colour by its name.
py::object asQml(const QVariant &value)
{
    if (value.metaType().flags().testFlag(QMetaType::IsEnumeration)) {
        return py::int_(value.toInt());
    }
    if (value.metaType() == QMetaType::fromType<QList<QVariantMap>>()) {
        return castQt2Py(value.value<QList<QVariantMap>>());
    }
    if (value.metaType() == QMetaType::fromType<QColor>()) {
        return castQt2Py(value.value<QColor>());
    }
    return castQt2Py(value);
}

py::object readAsQml(const std::string &path, const char *property)
{
    return asQml(objectOf(path)->property(property));
}

/// (property, number of the thread, value) of each change.
py::list changesOf(const ChangeLog &log)
{
    py::list result;
    for (const auto &[property, thread, value] : log.changes()) {
        result.append(py::make_tuple(property, thread, asQml(value)));
    }
    return result;
}

/// ShownValues that Python may let go of on any thread.
struct DeletedLater
{
    void operator()(ShownValues *values) const { values->deleteLater(); }
};

py::dict shownValues(const ShownValues &shown)
{
    py::dict result;
    for (const auto &[property, value] : shown.values()) {
        result[py::str(property)] = asQml(value);
    }
    return result;
}

/// Calls a method on the GUI thread, as a screen does.
void invoke(const std::string &path, const std::string &method, double argument)
{
    QObject *object = objectOf(path);
    bool called = false;
    {
        const py::gil_scoped_release release;
        called = QMetaObject::invokeMethod(object, method.c_str(), Qt::BlockingQueuedConnection,
                                           Q_ARG(double, argument));
    }
    if (!called) {
        throw py::key_error(method);
    }
}

/// (signal, emitted on the GUI thread) of each emission.
py::list threads(const SignalLog &log)
{
    py::list result;
    for (const SignalLog::Emission &emission : log.emissions()) {
        result.append(py::make_tuple(emission.name, emission.onGuiThread));
    }
    return result;
}

py::list logTexts(const LogCapture &capture)
{
    py::list result;
    for (const LogCapture::Message &message : capture.messages()) {
        result.append(py::make_tuple(static_cast<int>(message.type), message.text));
    }
    return result;
}

/// `with BusyGuiThread():` keeps the GUI thread from handling events for the length of the block.
class BusyGuiThread
{
public:
    void enter()
    {
        const py::gil_scoped_release release;
        QMetaObject::invokeMethod(QCoreApplication::instance(), [gate = m_gate] {
            gate->entered.release();
            gate->opened.acquire();
        });
        m_gate->entered.acquire();
    }

    void exit(const py::args & /*exception*/) { m_gate->opened.release(); }

private:
    struct Gate
    {
        std::binary_semaphore entered{0};
        std::binary_semaphore opened{0};
    };
    // Shared: the GUI thread may still be leaving the gate when this object goes.
    std::shared_ptr<Gate> m_gate = std::make_shared<Gate>();
};

void bindSimulatedChip(py::module_ &module)
{
    py::class_<SimulatedChip> cls(module, "SimulatedChip");
    cls.def(py::init<>());
    cls.attr("path") = SimulatedChip::path;
    // The label of a line's consumer; None if nobody has requested it.
    cls.def("label", [](const SimulatedChip &chip, unsigned line) {
        const auto request = chip.request(line);
        return request ? std::optional(request->label) : std::nullopt;
    });
    cls.def("pulse", &SimulatedChip::pulse, py::call_guard<py::gil_scoped_release>());
    module.def(
        "stop_gpio", [] { GPIO::instance().stopThread(); }, py::call_guard<py::gil_scoped_release>());
}

} // namespace

PYBIND11_EMBEDDED_MODULE(_probe, module)
{
    py::class_<SignalLog>(module, "SignalLog")
        // Without names: all signals that the class itself declares.
        .def(py::init(&watch), py::arg("path"), py::arg("names") = std::vector<std::string>())
        .def_property_readonly("emissions", emissions)
        .def_property_readonly("threads", threads)
        .def_property_readonly("names", &SignalLog::names)
        .def("clear", &SignalLog::clear);
    py::class_<ChangeLog>(module, "ChangeLog")
        .def(py::init([](const std::string &path, const std::vector<std::string> &properties) {
            return std::make_unique<ChangeLog>(*objectOf(path), properties);
        }))
        .def("__len__", &ChangeLog::size)
        .def_property_readonly("changes", changesOf)
        .def("clear", &ChangeLog::clear);
    py::class_<ShownValues, std::unique_ptr<ShownValues, DeletedLater>>(module, "ShownValues")
        .def(py::init([](const std::string &path, const std::vector<std::string> &properties) {
            return std::unique_ptr<ShownValues, DeletedLater>(new ShownValues(*objectOf(path), properties));
        }))
        .def_property_readonly("values", shownValues);
    py::class_<LogCapture>(module, "LogCapture")
        .def(py::init<>())
        .def_property_readonly("messages", logTexts)
        .def("clear", &LogCapture::clear);
    py::class_<BusyGuiThread>(module, "BusyGuiThread")
        .def(py::init<>())
        .def("__enter__", &BusyGuiThread::enter)
        .def("__exit__", &BusyGuiThread::exit);
    bindSimulatedChip(module);
    module.def("qml", readAsQml);
    module.def("invoke", invoke);
    // What follows the load of the screens: from now on messages are shown at once.
    module.def("screens_loaded", [] {
        const py::gil_scoped_release release;
        QMetaObject::invokeMethod(
            QCoreApplication::instance(), [] { Gui::instance().deliverPending(); },
            Qt::BlockingQueuedConnection);
    });
    // Waits until the GUI thread has handled all that was posted to it before.
    module.def("settle", [] {
        const py::gil_scoped_release release;
        QMetaObject::invokeMethod(
            QCoreApplication::instance(), [] {}, Qt::BlockingQueuedConnection);
    });
}
