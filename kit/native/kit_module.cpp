#include "native/kit_module.h"

#include "brovik/gpio/gpio.h"
#include "native/change_recorder.h"
#include "native/program_log.h"
#include "shared/screen_engine.h"
#include "src/py/entry_functions.h"
#include "src/py/singletons.h"
#include "src/py/types.h"

#include "brovik/config/config.h"

#include <pybind11/stl.h>

#include <QCoreApplication>
#include <QLineSeries>
#include <QMetaType>
#include <QThread>

#include <array>

namespace py = pybind11;

namespace {

bool isMainThread()
{
    return QThread::currentThread() == QCoreApplication::instance()->thread();
}

void makeApplication()
{
    static std::array<char, 7> name{"python"};
    static std::array<char *, 2> arguments{name.data(), nullptr};
    static int count = 1;
    // Never destroyed: threads of the backend may outlive everything.
    new QCoreApplication(count, arguments.data());
}

/// What the host does when it ends.
void endHost()
{
    {
        const py::gil_scoped_release release;
        GPIO::instance().stopThread();
    }
    screenEngine.reset();
}

/// Makes the values of the screens: the conversion asks for the one engine.
void needScreenEngine()
{
    if (screenEngine == nullptr) {
        screenEngine = std::make_unique<QQmlApplicationEngine>();
    }
}

std::string reprOf(const py::object &object)
{
    return py::repr(object).cast<std::string>();
}

template <typename Enum> Enum actionOf(const char *family, const py::object &action)
{
    if (!py::isinstance<Enum>(action)) {
        const auto wanted = py::type::of<Enum>().attr("__name__").template cast<std::string>();
        throw py::type_error("press(\"" + std::string(family) + "\", ...) takes a " + wanted + ", not " +
                             reprOf(action));
    }
    return action.cast<Enum>();
}

/// One press of a family, by the type of its value.
template <typename Value> struct Press;

template <> struct Press<NoValue>
{
    template <typename Enum>
    static void call(const py::object &function, const char *family, Enum action, const py::object &value)
    {
        if (!value.is_none()) {
            throw py::type_error("press(\"" + std::string(family) + "\", ...) takes no value, not " +
                                 reprOf(value));
        }
        callEntryFunction(function, action);
    }
};

template <> struct Press<bool>
{
    template <typename Enum>
    static void call(const py::object &function, const char *family, Enum action, const py::object &value)
    {
        if (!PyBool_Check(value.ptr())) {
            throw py::type_error("press(\"" + std::string(family) + "\", ...) takes True or False, not " +
                                 reprOf(value));
        }
        callEntryFunction(function, action, value.cast<bool>());
    }
};

template <> struct Press<QJSValue>
{
    template <typename Enum>
    static void call(const py::object &function, const char * /*family*/, Enum action,
                     const py::object &value)
    {
        needScreenEngine();
        callEntryFunction(function, action, castPy2Qt<QJSValue>(value));
    }
};

void press(const py::object &backend, const std::string &family, const py::object &action,
           const py::object &value)
{
    if (!isMainThread()) {
        throw std::runtime_error("The host calls a backend on Python's main thread: press there");
    }
#define PRESS_OF_FAMILY(name, Enum, Value, function)                                                         \
    if (family == #name) {                                                                                   \
        const auto wanted = actionOf<Enum>(#name, action);                                                   \
        Press<Value>::call(entryFunction(backend, function), #name, wanted, value);                          \
        return;                                                                                              \
    }
    ENTRY_FUNCTIONS(PRESS_OF_FAMILY)
#undef PRESS_OF_FAMILY
    throw py::type_error("There is no family \"" + family + "\"");
}

/// The function of each family and how many arguments it is called with.
py::dict entryFunctions()
{
    py::dict result;
#define FUNCTION_OF_FAMILY(name, Enum, Value, function)                                                      \
    result[#name] = py::make_tuple(function, std::is_same_v<Value, NoValue> ? 1 : 2);
    ENTRY_FUNCTIONS(FUNCTION_OF_FAMILY)
#undef FUNCTION_OF_FAMILY
    return result;
}

/// The shared object behind a Python object.
template <typename... Classes> QObject &sharedObject(const py::object &object)
{
    QObject *found = nullptr;
    (void)((py::isinstance<Classes>(object) && (found = object.cast<Classes *>()) != nullptr) || ...);
    if (found == nullptr) {
        throw py::type_error("An object of brovik is wanted, not " + reprOf(object));
    }
    return *found;
}

void watch(ChangeRecorder &recorder, const py::object &object, const std::string &name)
{
    recorder.watch(sharedObject<Actuator, Auto, Chart, Config, GPIO, Gui, Sensor, Settings, Shell, Simulator,
                                Wifi, DOut, DIn, AIn, ChartLine>(object),
                   name);
}

/// None for what belongs to the screens alone. An enumerator as its number.
py::object plain(const QVariant &value)
{
    const QMetaType type = value.metaType();
    if (type.flags().testFlag(QMetaType::IsEnumeration)) {
        return py::int_(value.toInt());
    }
    if (type == QMetaType::fromType<QList<QVariantMap>>()) {
        return castQt2Py(value.value<QList<QVariantMap>>());
    }
    if (type == QMetaType::fromType<QColor>()) {
        return castQt2Py(value.value<QColor>());
    }
    if (type == QMetaType::fromType<QPointF>()) {
        return castQt2Py(value.toPointF());
    }
    const bool known = value.isValid() && type.id() < QMetaType::User &&
                       type.id() != QMetaType::QObjectStar && type.id() != QMetaType::Nullptr;
    return known ? castQt2Py(value) : py::none();
}

py::tuple plain(const QVariantList &values)
{
    py::tuple result(static_cast<std::size_t>(values.size()));
    for (qsizetype index = 0; index < values.size(); ++index) {
        result[static_cast<std::size_t>(index)] = plain(values.at(index));
    }
    return result;
}

/// (object, signal, property, thread, values) of each change.
py::list changes(const ChangeRecorder &recorder, std::size_t from)
{
    py::list result;
    for (const ChangeRecorder::Change &change : recorder.changes(from)) {
        result.append(py::make_tuple(change.object, change.signal, change.property, change.thread,
                                     plain(change.values)));
    }
    return result;
}

void processEvents()
{
    if (!isMainThread()) {
        throw std::runtime_error("The events are those of Python's main thread: process them there");
    }
    const py::gil_scoped_release release;
    QCoreApplication::sendPostedEvents();
    QCoreApplication::processEvents();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
}

/// Names of the attributes that can be written.
py::list writableNames(const py::handle &type)
{
    py::list result;
    const py::object property = py::module_::import("builtins").attr("property");
    for (const auto &[name, value] : type.attr("__dict__").attr("copy")().cast<py::dict>()) {
        if (py::isinstance(value, property) && !value.attr("fset").is_none()) {
            result.append(name);
        }
    }
    return result;
}

/// What all attributes are that can be written, of the one object of each module and of its parts: a list of
/// (object, name, value). Taken before anybody could write.
py::list initialValues(const py::module_ &brovik)
{
    py::list result;
    const auto note = [&](const py::object &object) {
        for (const py::handle name : writableNames(py::type::of(object))) {
            result.append(py::make_tuple(object, name, object.attr(name)));
        }
    };
    const auto noteAll = [&](const py::object &objects) {
        for (const py::handle object : objects) {
            note(py::reinterpret_borrow<py::object>(object));
        }
    };
    for (const char *name :
         {"actuator.Actuator", "auto.Auto", "chart.Chart", "config.Config", "gpio.GPIO", "gui.Gui",
          "sensor.Sensor", "settings.SettingsValues", "shell.Shell", "simulator.Simulator", "wifi.Wifi"}) {
        py::object object = brovik;
        for (const py::handle part : py::str(name).attr("split")(".")) {
            object = object.attr(part);
        }
        note(object);
    }
    noteAll(brovik.attr("actuator").attr("Actuator").attr("all_douts"));
    noteAll(brovik.attr("sensor").attr("Sensor").attr("all_dins"));
    const py::object sensor = brovik.attr("sensor").attr("Sensor");
    noteAll(py::make_tuple(sensor.attr("ain1"), sensor.attr("ain2")));
    return result;
}

/// The outputs that the page shows, in its order.
py::list shownOutputs()
{
    py::list result;
    const DOutModel &model = *Actuator::instance().doutModel();
    for (int row = 0; row < model.rowCount(); ++row) {
        result.append(py::cast(model.index(row).data(DOutModel::dOutRole).value<DOut *>(),
                               py::return_value_policy::reference));
    }
    return result;
}

/// What the load of the screens does to the objects: pages register what they draw, messages are shown from
/// now on.
void screensLoaded()
{
    const Chart &chart = Chart::instance();
    for (ChartLine *line : chart.lines()) {
        if (line->series().value() == nullptr) {
            line->registerQmlLine(new QLineSeries(line), nullptr);
        }
    }
    Gui::instance().deliverPending();
}

} // namespace

void prepareHost()
{
    if (QCoreApplication::instance() == nullptr) {
        const py::object threading = py::module_::import("threading");
        if (!threading.attr("current_thread")().is(threading.attr("main_thread")())) {
            throw py::import_error("brovik is to be imported on Python's main thread");
        }
        makeApplication();
    }
    if (!isMainThread()) {
        throw py::import_error("brovik is to be imported on the thread of the application");
    }
    createSingletons();
    ProgramLog::install();
    py::module_::import("atexit").attr("register")(py::cpp_function(endHost));
}

void bindKit(py::module_ &brovik)
{
    const py::list initial = initialValues(brovik);
    py::module_ module = brovik.def_submodule("_kit", "What brovik.testing is made of.");
    module.attr("BACKEND") = backendModule;
    module.attr("INIT") = backendInit;
    module.attr("initial_values") = initial;
    module.def("entry_functions", entryFunctions);
    module.def("press", press);
    module.def("process_events", processEvents);
    module.def("screens_loaded", screensLoaded);
    module.def("shown_outputs", shownOutputs);
    module.def("log_lines", ProgramLog::lines);
    module.def("clear_log", ProgramLog::clear);
    py::class_<ChangeRecorder>(module, "ChangeRecorder")
        .def(py::init<>())
        .def("watch", watch)
        .def("changes", changes, py::arg("from_") = 0)
        .def("clear", &ChangeRecorder::clear);
}
