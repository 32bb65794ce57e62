#include "actuator.h"
#include "auto.h"
#include "chart.h"
#include "config.h"
#include "gpio.h"
#include "gui.h"
#include "log_capture.h"
#include "sensor.h"
#include "settings.h"
#include "shell.h"
#include "simulator.h"
#include "types.h"
#include "wifi.h"

#include <pybind11/embed.h>
#include <pybind11/stl.h>

#include <QCoreApplication>
#include <QMetaMethod>
#include <QMutex>
#include <QThread>

#include <map>
#include <vector>

// The module `_probe`: what a Python test sees of the Qt side.

namespace py = pybind11;

namespace {

/// "Actuator", or "Actuator.mvKalt" for an object that is a property of a singleton.
QObject *objectOf(const std::string &path)
{
    static const std::map<std::string, QObject *> singletons = {
        {"Actuator", &Actuator::instance()},   {"Auto", &Auto::instance()},     {"Chart", &Chart::instance()},
        {"Config", &Config::instance()},       {"GPIO", &GPIO::instance()},     {"Gui", &Gui::instance()},
        {"Sensor", &Sensor::instance()},       {"Settings", &Settings::instance()},
        {"Shell", &Shell::instance()},         {"Simulator", &Simulator::instance()},
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

/// Records every emission of some signals, on the thread that emits, in order.
class SignalLog : public QObject
{
public:
    SignalLog(const std::string &path, const std::vector<std::string> &names)
    {
        QObject *object = objectOf(path);
        for (const std::string &name : names) {
            watch(*object, name);
        }
    }

    int qt_metacall(QMetaObject::Call call, int id, void **arguments) override
    {
        const int slot = QObject::qt_metacall(call, id, arguments);
        if (call != QMetaObject::InvokeMetaMethod || slot < 0) {
            return slot;
        }
        const QMetaMethod &signal = m_signals.at(static_cast<std::size_t>(slot));
        QVariantList values;
        for (int index = 0; index < signal.parameterCount(); ++index) {
            const QMetaType type = signal.parameterMetaType(index);
            const bool isVariant = type == QMetaType::fromType<QVariant>();
            const void *value = arguments[index + 1];
            values.append(isVariant ? *static_cast<const QVariant *>(value) : QVariant(type, value));
        }
        const QMutexLocker lock(&m_mutex);
        const bool onGuiThread = QThread::currentThread() == QCoreApplication::instance()->thread();
        m_emissions.push_back({signal.name().toStdString(), onGuiThread, values});
        return -1;
    }

    /// (signal, emitted on the GUI thread, arguments) of each emission.
    py::list emissions() const
    {
        const QMutexLocker lock(&m_mutex);
        py::list result;
        for (const auto &[name, onGuiThread, values] : m_emissions) {
            result.append(py::make_tuple(name, onGuiThread, castQt2Py(values)));
        }
        return result;
    }

    py::list names() const
    {
        const QMutexLocker lock(&m_mutex);
        py::list result;
        for (const Recorded &emission : m_emissions) {
            result.append(emission.name);
        }
        return result;
    }

    void clear()
    {
        const QMutexLocker lock(&m_mutex);
        m_emissions.clear();
    }

private:
    struct Recorded
    {
        std::string name;
        bool onGuiThread;
        QVariantList values;
    };

    void watch(QObject &object, const std::string &name)
    {
        const QMetaObject &meta = *object.metaObject();
        for (int index = 0; index < meta.methodCount(); ++index) {
            const QMetaMethod method = meta.method(index);
            if (method.methodType() == QMetaMethod::Signal && method.name() == name.c_str()) {
                const int slot = QObject::staticMetaObject.methodCount() + static_cast<int>(m_signals.size());
                m_signals.push_back(method);
                QMetaObject::connect(&object, index, this, slot, Qt::DirectConnection);
                return;
            }
        }
        throw py::key_error(name);
    }

    std::vector<QMetaMethod> m_signals;
    mutable QMutex m_mutex;
    std::vector<Recorded> m_emissions;
};

py::list logTexts(const LogCapture &capture)
{
    py::list result;
    for (const LogCapture::Message &message : capture.messages()) {
        result.append(py::make_tuple(static_cast<int>(message.type), message.text));
    }
    return result;
}

} // namespace

PYBIND11_EMBEDDED_MODULE(_probe, module)
{
    py::class_<SignalLog>(module, "SignalLog")
        .def(py::init<const std::string &, const std::vector<std::string> &>())
        .def_property_readonly("emissions", &SignalLog::emissions)
        .def_property_readonly("names", &SignalLog::names)
        .def("clear", &SignalLog::clear);
    py::class_<LogCapture>(module, "LogCapture")
        .def(py::init<>())
        .def_property_readonly("messages", logTexts)
        .def("clear", &LogCapture::clear);
    // What QML reads.
    module.def("qml", [](const std::string &path, const char *property) {
        return castQt2Py(objectOf(path)->property(property));
    });
    // Waits until the GUI thread has handled all that was posted to it before.
    module.def("settle", [] {
        const py::gil_scoped_release release;
        QMetaObject::invokeMethod(QCoreApplication::instance(), [] {}, Qt::BlockingQueuedConnection);
    });
}
