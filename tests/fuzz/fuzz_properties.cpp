// Every attribute that Python sees, written with any value: it is taken or refused with a TypeError, and what
// is refused changes nothing and tells nobody.
#include "python_values.h"

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
#include "signal_log.h"
#include "src/py/brovik_module.h"
#include "src/py/singletons.h"

#include <pybind11/embed.h>
#include <pybind11/stl.h>

#include <QCoreApplication>
#include <QMetaProperty>

#include <algorithm>
#include <memory>
#include <set>
#include <string>
#include <vector>

namespace py = pybind11;

namespace {

constexpr const char *helpers = R"(
import types
import brovik

def names(cls):
    return [name for name, value in vars(cls).items()
            if isinstance(value, property) and "static" not in type(value).__name__]

def is_list(value):
    return hasattr(value, "at") and hasattr(value, "size")

def is_object(value):
    cls = type(value)
    return cls.__module__.startswith("brovik") and not hasattr(cls, "__members__") and not is_list(value)

def all_objects():
    found = {}
    def visit(value):
        if is_object(value) and id(value) not in found:
            found[id(value)] = value
            for name in names(type(value)):
                visit(getattr(value, name))
        elif isinstance(value, list):
            for element in value:
                visit(element)
    for module in vars(brovik).values():
        if isinstance(module, types.ModuleType):
            for value in list(vars(module).values()):
                if not isinstance(value, type):
                    visit(value)
    return list(found.values())

def attributes():
    return [(value, name) for value in all_objects() for name in names(type(value))]

def is_writable(value, name):
    return vars(type(value))[name].fset is not None

def text(value):
    if is_list(value):
        return [state(value.at(index)) for index in range(value.size())]
    return type(value).__name__ if is_object(value) else repr(value)

def state(value):
    return [text(getattr(value, name)) for name in names(type(value))]

def fresh(value):
    return type(value)() if is_list(value) else value

def chart_list():
    made = brovik.chart.ChartMetaDataList()
    for name in "ab":
        made.append(brovik.chart.ChartMetaData(name, "", "", "", 1))
    return made

def changelog():
    made = brovik.shell.ChangelogEntryVector()
    for name in "ab":
        entry = brovik.shell.ChangelogEntry(brovik.shell.Shell)
        entry.name = name
        made.append(entry)
    return made
)";

/// All that tells of changes: each object that the singletons consist of.
std::set<QObject *> allSenders()
{
    std::set<QObject *> senders;
    std::vector<QObject *> left = {
        &Actuator::instance(), &Auto::instance(),      &Chart::instance(),  &Config::instance(),
        &GPIO::instance(),     &Gui::instance(),       &Sensor::instance(), &Settings::instance(),
        &Shell::instance(),    &Simulator::instance(), &Wifi::instance(),
    };
    while (!left.empty()) {
        QObject *const sender = left.back();
        left.pop_back();
        if (sender == nullptr || !senders.insert(sender).second) {
            continue;
        }
        const QMetaObject &type = *sender->metaObject();
        for (int index = QObject::staticMetaObject.propertyCount(); index < type.propertyCount(); ++index) {
            const QVariant value = type.property(index).read(sender);
            if (value.metaType().flags().testFlag(QMetaType::PointerToQObject)) {
                left.push_back(value.value<QObject *>());
            }
        }
        const QObjectList children = sender->children();
        left.insert(left.end(), children.begin(), children.end());
    }
    return senders;
}

struct Attribute
{
    py::object owner;
    std::string name;
    bool isWritable;
    py::object initial; ///< Null if Python cannot write it.
};

/// What all runs share; it lives as long as the process.
class Fixture
{
public:
    Fixture()
    {
        py::exec(helpers, m_helpers);
        for (const py::handle found : py::list(helper("attributes")())) {
            const auto [owner, name] = found.cast<std::pair<py::object, std::string>>();
            const bool isWritable = helper("is_writable")(owner, name).cast<bool>();
            const py::object initial = helper("fresh")(owner.attr(name.c_str()));
            attributes.push_back({owner, name, isWritable, isWritable ? initial : py::object()});
        }
        for (QObject *sender : allSenders()) {
            m_logs.push_back(std::make_unique<SignalLog>(*sender));
        }
    }

    py::object helper(const char *name) const { return m_helpers[name]; }

    std::string text(const py::object &value) const { return py::repr(helper("text")(value)); }
    std::string state(const py::object &owner) const { return py::repr(helper("state")(owner)); }

    /// What was told of since the last call.
    std::vector<std::string> takeSignals()
    {
        std::vector<std::string> told;
        for (const auto &log : m_logs) {
            for (const std::string &name : log->names()) {
                told.push_back(name);
            }
            log->clear();
        }
        return told;
    }

    std::vector<Attribute> attributes;
    PythonValues values;

private:
    py::dict m_helpers;
    std::vector<std::unique_ptr<SignalLog>> m_logs;
};

Fixture *fixture = nullptr;

/// Takes what Python refuses; nothing but these two kinds of errors may come.
template <typename Call>
bool isTaken(const std::string &name, const Call &call, PyObject *alsoRefused = nullptr)
{
    try {
        call();
    } catch (const py::error_already_set &error) {
        require(error.matches(PyExc_TypeError) || (alsoRefused != nullptr && error.matches(alsoRefused)),
                "nothing but a TypeError", name.c_str(), error.what());
        return false;
    }
    require(PyErr_Occurred() == nullptr, "no error is left behind", name.c_str());
    return true;
}

/// The exceptions that the guard reports are told by this signal, also of what is then refused.
bool isSilent(std::vector<std::string> told)
{
    std::erase(told, "exception");
    return told.empty();
}

py::object consumeWritten(FuzzedDataProvider &data)
{
    if (data.ConsumeBool()) {
        return fixture->values.make(consumeValue(data));
    }
    const auto index = data.ConsumeIntegralInRange<std::size_t>(0, fixture->attributes.size() - 1);
    const Attribute &other = fixture->attributes[index];
    return other.owner.attr(other.name.c_str());
}

/// What is read can be written, and then nothing changes any more.
void checkReadBack(const Attribute &attribute)
{
    const char *const name = attribute.name.c_str();
    py::setattr(attribute.owner, name, attribute.owner.attr(name));
    const py::object read = attribute.owner.attr(name);
    const std::string text = fixture->text(read);
    fixture->takeSignals();
    py::setattr(attribute.owner, name, read);
    require(fixture->text(attribute.owner.attr(name)) == text, "what was read and written is read again",
            name, text.c_str());
    require(text.find("nan") != std::string::npos || fixture->takeSignals().empty(),
            "an equal write is silent", name, text.c_str());
}

void checkWrite(const Attribute &attribute, const py::object &value)
{
    const char *const name = attribute.name.c_str();
    const std::string before = fixture->state(attribute.owner);
    const std::string type = py::repr(py::type::of(attribute.owner.attr(name)));
    fixture->takeSignals();
    const bool taken = isTaken(
        attribute.name, [&] { py::setattr(attribute.owner, name, value); },
        attribute.isWritable ? nullptr : PyExc_AttributeError);
    require(attribute.isWritable || !taken, "what cannot be written is refused", name);
    if (!taken) {
        require(fixture->state(attribute.owner) == before, "what is refused changes nothing", name);
        require(isSilent(fixture->takeSignals()), "what is refused tells nobody", name);
        return;
    }
    require(type == std::string(py::repr(py::type::of(attribute.owner.attr(name)))),
            "an attribute keeps its type", name, type.c_str());
    checkReadBack(attribute);
}

void restore(const std::vector<const Attribute *> &written)
{
    // A value fits when its bounds are back.
    for (int pass = 0; pass < 2; ++pass) {
        for (const Attribute *attribute : written) {
            py::setattr(attribute->owner, attribute->name.c_str(),
                        fixture->helper("fresh")(attribute->initial));
        }
    }
}

void checkAttributes(FuzzedDataProvider &data)
{
    std::vector<const Attribute *> written;
    constexpr int mostWrites = 6;
    for (int write = 0; write < mostWrites && data.remaining_bytes() > 0; ++write) {
        const auto index = data.ConsumeIntegralInRange<std::size_t>(0, fixture->attributes.size() - 1);
        const Attribute &attribute = fixture->attributes[index];
        checkWrite(attribute, consumeWritten(data));
        if (attribute.isWritable) {
            written.push_back(&attribute);
        }
    }
    restore(written);
}

/// A list of records under any call, and the attributes of its records.
void checkList(FuzzedDataProvider &data, const py::object &list)
{
    constexpr int mostCalls = 8;
    for (int call = 0; call < mostCalls && data.remaining_bytes() > 0; ++call) {
        const std::string before = fixture->text(list);
        const int size = list.attr("size")().cast<int>();
        const bool byRecord = size > 0 && data.ConsumeBool();
        const py::object value =
            byRecord ? py::object(list.attr("at")(0)) : fixture->values.make(consumeValue(data));
        const int index = data.ConsumeIntegralInRange(-4, 4);
        const bool isInRange = index >= -size && index < size;
        bool taken = false;
        switch (data.ConsumeIntegralInRange(0, 4)) {
        case 0:
            taken = isTaken("append", [&] { list.attr("append")(value); });
            require(!taken || list.attr("size")().cast<int>() == size + 1, "one more", size);
            break;
        case 1:
            taken = isTaken(
                "remove", [&] { list.attr("remove")(value); }, PyExc_ValueError);
            require(!taken || list.attr("size")().cast<int>() == size - 1, "one less", size);
            break;
        case 2:
            taken = isTaken(
                "set", [&] { list.attr("__setitem__")(index, value); },
                isInRange ? nullptr : PyExc_IndexError);
            break;
        case 3:
            taken = isTaken(
                "get", [&] { list.attr("__getitem__")(value); }, PyExc_IndexError);
            require(fixture->text(list) == before, "reading changes nothing");
            break;
        default:
            if (size > 0) {
                const py::object record = list.attr("at")(0);
                const py::list names = fixture->helper("names")(py::type::of(record));
                const auto name =
                    py::object(names[data.ConsumeIntegralInRange<std::size_t>(0, names.size() - 1)]);
                taken = isTaken("record", [&] { py::setattr(record, name, value); });
            }
        }
        require(taken || fixture->text(list) == before, "what is refused changes nothing", before.c_str());
    }
}

} // namespace

void fuzzingBegins()
{
    createSingletons();
    registerBuiltInModules();
    new py::scoped_interpreter(false); // lives as long as the process
    Gui::instance().deliverPending();
    fixture = new Fixture;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *bytes, std::size_t size)
{
    FuzzedDataProvider data(bytes, size);
    switch (data.ConsumeIntegralInRange(0, 5)) {
    case 0:
        checkList(data, fixture->helper("chart_list")());
        break;
    case 1:
        checkList(data, fixture->helper("changelog")());
        break;
    default:
        checkAttributes(data);
    }
    QCoreApplication::processEvents();
    fixture->takeSignals();
    fixture->values.forget();
    require(fixture->values.living() == 0, "no object is kept", fixture->values.living());
    return 0;
}
