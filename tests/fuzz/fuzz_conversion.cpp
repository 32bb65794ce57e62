// Values on their way between Python and Qt: what goes over and back is what the table of the conversion
// says, and nothing but a TypeError is raised.
#include "python_values.h"

#include "brovik/gui/gui.h"
#include "shared/screen_engine.h"
#include "src/py/types.h"

#include <pybind11/embed.h>

#include <QJSEngine>

#include <algorithm>
#include <cmath>
#include <map>
#include <optional>

namespace py = pybind11;

namespace {

template <typename Type> void bindEcho(py::module_ &module, const char *name)
{
    module.def(name, [](const Type &value) { return value; });
}

} // namespace

PYBIND11_EMBEDDED_MODULE(_echo, module)
{
    bindEcho<QString>(module, "text");
    bindEcho<QColor>(module, "colour");
    bindEcho<QPointF>(module, "point");
    bindEcho<QVariantMap>(module, "mapping");
    bindEcho<QStringList>(module, "texts");
    bindEcho<QList<QPointF>>(module, "points");
    bindEcho<QList<QVariantMap>>(module, "mappings");
}

namespace {

PythonValues *values = nullptr;

bool isSameNumber(double left, double right)
{
    return left == right ? std::signbit(left) == std::signbit(right) : std::isnan(left) && std::isnan(right);
}

bool isSame(const QVariant &left, const QVariant &right)
{
    if (left.metaType() != right.metaType()) {
        return false;
    }
    switch (left.typeId()) {
    case QMetaType::Double:
        return isSameNumber(left.toDouble(), right.toDouble());
    case QMetaType::QVariantList: {
        const QVariantList lefts = left.toList();
        const QVariantList rights = right.toList();
        return std::equal(lefts.begin(), lefts.end(), rights.begin(), rights.end(), isSame);
    }
    case QMetaType::QVariantMap: {
        const QVariantMap lefts = left.toMap();
        const QVariantMap rights = right.toMap();
        return lefts.keys() == rights.keys() &&
               std::equal(lefts.begin(), lefts.end(), rights.begin(), rights.end(), isSame);
    }
    case QMetaType::Nullptr:
        return true;
    default:
        return left == right;
    }
}

/// A script knows no bytes, no order of the items that a dict has, and one kind of number.
enum class By { Variant, Script };

bool isPythonOf(const py::handle &object, const QVariant &value, By way);

bool isListOf(const py::handle &object, const QVariantList &elements, By way)
{
    if (!PyList_CheckExact(object.ptr()) || PyList_GET_SIZE(object.ptr()) < elements.size()) {
        return false;
    }
    for (qsizetype index = 0; index < PyList_GET_SIZE(object.ptr()); ++index) {
        // An array is as long as its maker said.
        const QVariant expected = index < elements.size() ? elements.at(index) : QVariant();
        if (!isPythonOf(PyList_GET_ITEM(object.ptr(), index), expected, way)) {
            return false;
        }
    }
    return way == By::Script || PyList_GET_SIZE(object.ptr()) == elements.size();
}

bool isDictOf(const py::handle &object, const QVariantMap &items, By way)
{
    if (!PyDict_CheckExact(object.ptr()) || PyDict_Size(object.ptr()) != items.size()) {
        return false;
    }
    if (way == By::Variant) {
        QStringList keys;
        for (const auto &[key, value] : py::reinterpret_borrow<py::dict>(object)) {
            keys.append(castPy2Qt<QString>(key));
        }
        if (keys != items.keys()) {
            return false;
        }
    }
    return std::all_of(items.keyBegin(), items.keyEnd(), [&](const QString &key) {
        PyObject *value = PyDict_GetItem(object.ptr(), pythonText(key).ptr());
        return value != nullptr && isPythonOf(value, items.value(key), way);
    });
}

bool isFloat(const py::handle &object, double value)
{
    return PyFloat_CheckExact(object.ptr()) && isSameNumber(PyFloat_AS_DOUBLE(object.ptr()), value);
}

bool isText(const py::handle &object, const QString &text)
{
    return PyUnicode_CheckExact(object.ptr()) && pythonText(text).equal(object);
}

bool isPythonOf(const py::handle &object, const QVariant &value, By way)
{
    switch (value.typeId()) {
    case QMetaType::Bool:
        return object.ptr() == (value.toBool() ? Py_True : Py_False);
    case QMetaType::Int:
        return way == By::Script ? isFloat(object, value.toInt())
                                 : PyLong_CheckExact(object.ptr()) && object.cast<int>() == value.toInt();
    case QMetaType::Double:
        return isFloat(object, value.toDouble());
    case QMetaType::QString:
        return isText(object, value.toString());
    case QMetaType::QByteArray:
        return way == By::Script ? isText(object, QString::fromUtf8(value.toByteArray())) : object.is_none();
    case QMetaType::QVariantList:
        return isListOf(object, value.toList(), way);
    case QMetaType::QVariantMap:
        return isDictOf(object, value.toMap(), way);
    default:
        return object.is_none();
    }
}

std::string textOf(const py::handle &object)
{
    try {
        return py::repr(object);
    } catch (const py::error_already_set &) {
        return "<mute>";
    }
}

template <typename Target> std::optional<Target> converted(const py::handle &object)
{
    std::optional<Target> result;
    try {
        result = castPy2Qt<Target>(object);
    } catch (const py::type_error &) {
        // the one error that there is
    }
    require(PyErr_Occurred() == nullptr, "no error is left behind");
    return result;
}

std::optional<QVariant> expectedOf(const PlannedValue &planned)
{
    try {
        return expected::variant(planned, planned);
    } catch (const expected::Refused &) {
        return std::nullopt;
    }
}

/// What has no way back to Python is None there.
QVariant withoutBytes(const QVariant &value)
{
    switch (value.typeId()) {
    case QMetaType::QVariantList: {
        QVariantList elements = value.toList();
        std::transform(elements.begin(), elements.end(), elements.begin(), withoutBytes);
        return elements;
    }
    case QMetaType::QVariantMap: {
        QVariantMap items = value.toMap();
        std::transform(items.begin(), items.end(), items.begin(), withoutBytes);
        return items;
    }
    case QMetaType::QByteArray:
    case QMetaType::UnknownType:
        return QVariant::fromValue(nullptr);
    default:
        return value;
    }
}

void checkVariant(const py::object &object, const std::optional<QVariant> &expected)
{
    const std::optional<QVariant> variant = converted<QVariant>(object);
    require(variant.has_value() == expected.has_value(), "refused is what has no counterpart",
            textOf(object).c_str());
    if (!variant) {
        return;
    }
    require(isSame(*variant, *expected), "Python to Qt goes by the table", *variant, *expected);
    const py::object back = castQt2Py(*variant);
    require(isPythonOf(back, *expected, By::Variant), "Qt to Python goes by the table", textOf(back).c_str(),
            *expected);
    require(isSame(castPy2Qt<QVariant>(back), withoutBytes(*expected)), "what came back goes over unchanged",
            textOf(back).c_str());
}

void checkScript(const py::object &object, const std::optional<QVariant> &expected)
{
    const std::optional<QJSValue> script = converted<QJSValue>(object);
    require(script.has_value() == expected.has_value(), "a script refuses the same", textOf(object).c_str());
    if (!script) {
        return;
    }
    const py::object back = castQt2Py(*script);
    require(isPythonOf(back, *expected, By::Script), "through a script goes by the table",
            textOf(back).c_str(), *expected);
    const std::optional<QJSValue> again = converted<QJSValue>(back);
    require(again.has_value(), "what a script gives, it takes", textOf(back).c_str());
    require(isPythonOf(castQt2Py(*again), *expected, By::Script), "a second round changes nothing",
            textOf(back).c_str());
}

/// Bound functions of each type take it or raise a TypeError.
void checkArguments(const py::object &object)
{
    static const py::module_ echo = *new py::module_(py::module_::import("_echo"));
    for (const char *name : {"text", "colour", "point", "mapping", "texts", "points", "mappings"}) {
        try {
            const py::object first = echo.attr(name)(object);
            require(echo.attr(name)(first).equal(first) || textOf(first).find("nan") != std::string::npos,
                    "what a function gives, it takes", name, textOf(first).c_str());
        } catch (const py::error_already_set &error) {
            require(error.matches(PyExc_TypeError), "nothing but a TypeError", name, error.what());
        }
        require(PyErr_Occurred() == nullptr, "no error is left behind", name);
    }
}

/// One that was walked holds what it has come to, and nothing at its end.
bool hasGenerator(const PlannedValue &planned)
{
    return planned.kind == PlannedValue::Kind::Generator ||
           std::any_of(planned.elements.begin(), planned.elements.end(), hasGenerator);
}

void checkPlanned(const PlannedValue &planned)
{
    const std::optional<QVariant> expected = expectedOf(planned);
    const py::object object = values->make(planned);
    const std::vector<Py_ssize_t> before = values->references();
    checkVariant(object, expected);
    checkScript(object, expected);
    checkArguments(object);
    require(hasGenerator(planned) || values->references() == before, "references are balanced",
            textOf(object).c_str());
}

/// A value as a screen may have it.
QJSValue consumeScript(FuzzedDataProvider &data, QVariant &expected, int depth = 0)
{
    switch (data.ConsumeIntegralInRange(0, depth < 4 ? 7 : 5)) {
    case 0:
        return QJSValue::UndefinedValue;
    case 1:
        return QJSValue::NullValue;
    case 2:
        expected = data.ConsumeBool();
        return expected.toBool();
    case 3:
        expected = consumeNumber(data);
        return expected.toDouble();
    case 4:
        expected = data.ConsumeIntegral<int>();
        return expected.toInt();
    case 5: {
        const QString text = consumeText(data);
        // What has no UTF-8 comes with replacements.
        expected = QString::fromUtf8(text.toUtf8());
        return text;
    }
    case 6: {
        QVariantList elements;
        QJSValue array = screenEngine->newArray();
        for (int count = data.ConsumeIntegralInRange(0, 5); count > 0; --count) {
            QVariant element;
            const QJSValue script = consumeScript(data, element, depth + 1);
            if (data.ConsumeIntegralInRange(0, 5) == 0) {
                elements.append(QVariant()); // a hole
            }
            array.setProperty(static_cast<quint32>(elements.size()), script);
            elements.append(element);
        }
        expected = elements;
        return array;
    }
    default: {
        QVariantMap items;
        std::map<QString, QJSValue> scripts;
        for (int count = data.ConsumeIntegralInRange(0, 5); count > 0; --count) {
            const QString name = QString::fromUtf8(consumeText(data, 16).toUtf8());
            QVariant value;
            scripts[name] = consumeScript(data, value, depth + 1);
            items.insert(name, value);
        }
        // Its names come first: setProperty() takes a new "__proto__" for the prototype, which a screen that
        // writes such a name as a text does not mean.
        QJSValue object = screenEngine->toScriptValue(items);
        for (const auto &[name, script] : scripts) {
            object.setProperty(name, script);
        }
        expected = items;
        return object;
    }
    }
}

void checkConsumedScript(FuzzedDataProvider &data)
{
    QVariant expected;
    const QJSValue script = consumeScript(data, expected);
    const py::object object = castQt2Py(script);
    require(isPythonOf(object, expected, By::Script), "script to Python goes by the table",
            textOf(object).c_str(), expected);
    const QJSValue back = castPy2Qt<QJSValue>(object);
    require(isPythonOf(castQt2Py(back), expected, By::Script), "what a screen sent goes back unchanged",
            textOf(object).c_str());
}

} // namespace

void fuzzingBegins()
{
    new py::scoped_interpreter(false); // lives as long as the process
    values = new PythonValues;
    screenEngine = std::make_unique<QQmlApplicationEngine>();
    // It must not go after the application.
    std::atexit([] { (void)screenEngine.release(); });
    Gui::instance().deliverPending();
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *bytes, std::size_t size)
{
    FuzzedDataProvider data(bytes, size);
    if (data.ConsumeBool()) {
        checkConsumedScript(data);
    } else {
        checkPlanned(consumeValue(data));
    }
    values->forget();
    require(values->living() == 0, "no object is kept", values->living());
    return 0;
}
