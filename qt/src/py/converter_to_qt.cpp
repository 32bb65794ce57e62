#include "src/py/converter.h"

#include "shared/log.h"
#include "shared/screen_engine.h"
#include "src/py/exceptions.h"

namespace py = pybind11;

namespace {

QByteArray bytesOf(const py::handle &object)
{
    if (PyByteArray_Check(object.ptr())) {
        return {PyByteArray_AsString(object.ptr()), static_cast<qsizetype>(PyByteArray_Size(object.ptr()))};
    }
    char *data = nullptr;
    Py_ssize_t size = 0;
    // GCOVR_EXCL_BR_START: bytes do not fail to tell where they are
    if (PyBytes_AsStringAndSize(object.ptr(), &data, &size) != 0) {
        PyErr_Clear();
        logWarning("Konnte py::bytes nicht zu QByteArray konvertieren!");
        return {};
    }
    // GCOVR_EXCL_BR_STOP
    return {data, static_cast<qsizetype>(size)};
}

QString reprOf(const py::handle &object)
{
    return castPy2Qt<QString>(py::repr(object));
}

[[noreturn]] void throwUnknownType(const py::handle &object, const py::handle &parent)
{
    const QString container =
        object.is(parent) ? QString() : QStringLiteral(" (enthalten in %1)").arg(reprOf(parent));
    const QString text =
        QStringLiteral(
            "Das an callback() übergebene Object darf nur einfache Typen wie int, float, str, bytes, "
            "bytearray, bool, None, dict und einfache Iterables wie tuple, list, set aus diesen Typen "
            "enthalten. Es wurde %1 übergeben%2.")
            .arg(reprOf(object), container);
    throw py::type_error(text.toStdString());
}

/// Makes variants; containers are Qt's.
struct VariantBuilder
{
    using Value = QVariant;

    static QVariant text(const QString &value) { return value; }
    static QVariant null() { return QVariant::fromValue(nullptr); }
    static QVariant bytes(const QByteArray &value) { return value; }

    template <typename Plain> static QVariant plain(Plain value) { return value; }

    static QVariant dict(const py::handle &object) { return castPy2Qt<QVariantMap>(object); }

    template <typename Convert>
    static QVariant list(const py::object &iterator, std::size_t length, const Convert &convert)
    {
        QVariantList result;
        result.reserve(static_cast<qsizetype>(length));
        for (const py::handle element : py::reinterpret_borrow<py::iterator>(iterator)) {
            result.append(convert(element));
        }
        return result;
    }
};

template <typename Insert> void forEachItem(const py::handle &dict, const Insert &insert)
{
    PyObject *key = nullptr;
    PyObject *value = nullptr;
    Py_ssize_t position = 0;
    while (PyDict_Next(dict.ptr(), &position, &key, &value) != 0) {
        // str() of a key may run Python that changes the dict.
        const auto keptKey = py::reinterpret_borrow<py::object>(key);
        const auto keptValue = py::reinterpret_borrow<py::object>(value);
        insert(textOf(keptKey), keptValue);
    }
}

template <typename Builder>
typename Builder::Value fromPython(const py::handle &object, const py::handle &parent);

/// Makes script values; containers are made by the engine.
struct ScriptBuilder
{
    using Value = QJSValue;

    static QJSValue text(const QString &value) { return value; }
    static QJSValue null() { return QJSValue::NullValue; }
    static QJSValue bytes(const QByteArray &value) { return QString::fromUtf8(value); }

    template <typename Plain> static QJSValue plain(Plain value) { return value; }

    static QJSValue dict(const py::handle &object)
    {
        if (screenEngine == nullptr) {
            qFatal("engine is nicht mehr verfügbar (engine->newObject())");
        }
        QJSValue result = emptyObject(object);
        forEachItem(object, [&](const QString &key, const py::handle &value) {
            result.setProperty(key, fromPython<ScriptBuilder>(value, object));
        });
        return result;
    }

    template <typename Convert>
    static QJSValue list(const py::object &iterator, std::size_t length, const Convert &convert)
    {
        if (screenEngine == nullptr) {
            qFatal("engine is nicht mehr verfügbar (engine->newArray())");
        }
        QJSValue result = screenEngine->newArray(static_cast<uint>(length));
        quint32 index = 0;
        for (const py::handle element : py::reinterpret_borrow<py::iterator>(iterator)) {
            result.setProperty(index++, convert(element));
        }
        return result;
    }

private:
    /// setProperty() takes a new "__proto__" for the prototype; one that is there already is an item like all
    /// others.
    static QJSValue emptyObject(const py::handle &dict)
    {
        constexpr const char *prototype = "__proto__";
        if (PyDict_GetItemString(dict.ptr(), prototype) == nullptr) {
            return screenEngine->newObject();
        }
        return screenEngine->toScriptValue(QVariantMap{{QLatin1String(prototype), QVariant()}});
    }
};

/// The one order of tests for a Python value of unknown shape.
template <typename Builder>
typename Builder::Value unguardedFromPython(const py::handle &object, const py::handle &parent)
{
    PyObject *raw = object.ptr();
    if (PyUnicode_Check(raw)) {
        return Builder::text(castPy2Qt<QString>(object));
    }
    if (object.is_none()) {
        return Builder::null();
    }
    if (PyBool_Check(raw)) {
        return Builder::plain(raw == Py_True);
    }
    if (PyLong_Check(raw)) {
        return Builder::plain(object.cast<int>());
    }
    if (PyFloat_Check(raw)) {
        return Builder::plain(object.cast<double>());
    }
    if (PyDict_Check(raw)) {
        return Builder::dict(object);
    }
    if (PyBytes_Check(raw) || PyByteArray_Check(raw)) {
        return Builder::bytes(bytesOf(object));
    }
    const auto iterator = py::reinterpret_steal<py::object>(PyObject_GetIter(raw));
    if (!iterator) {
        PyErr_Clear();
        throwUnknownType(object, parent);
    }
    return Builder::list(iterator, py::len(object),
                         [&](const py::handle &element) { return fromPython<Builder>(element, object); });
}

/// One level of nesting, counted as Python counts its own calls. The type error ends the whole conversion: a
/// container that holds itself twice would otherwise be walked for ever.
class NestingLevel
{
public:
    NestingLevel()
    {
        if (Py_EnterRecursiveCall("") != 0) {
            PyErr_Clear();
            throw py::type_error("Das Objekt ist zu tief verschachtelt oder enthält sich selbst.");
        }
    }
    ~NestingLevel() { Py_LeaveRecursiveCall(); }
    NestingLevel(const NestingLevel &) = delete;
    NestingLevel &operator=(const NestingLevel &) = delete;
};

template <typename Builder>
typename Builder::Value fromPython(const py::handle &object, const py::handle &parent)
{
    const NestingLevel level;
    typename Builder::Value result;
    guarded([&] { result = unguardedFromPython<Builder>(object, parent); });
    return result;
}

template <typename Element, typename Convert>
QList<Element> fromSequence(const py::handle &object, const Convert &convert)
{
    const py::sequence sequence(py::reinterpret_borrow<py::object>(object));
    const std::size_t length = py::len(sequence);
    QList<Element> result;
    result.reserve(static_cast<qsizetype>(length));
    for (std::size_t index = 0; index < length; ++index) {
        result.append(convert(py::object(sequence[index])));
    }
    return result;
}

template <typename Pair> Pair pairFrom(const py::handle &object)
{
    const py::tuple pair(py::reinterpret_borrow<py::object>(object));
    return {pair[0].cast<typename Pair::first_type>(), pair[1].cast<typename Pair::second_type>()};
}

QVariantMap mapFromAnything(const py::object &object)
{
    return castPy2Qt<QVariantMap>(PyDict_Check(object.ptr()) ? object : py::dict(object));
}

} // namespace

QString textOf(const py::handle &object)
{
    return castPy2Qt<QString>(PyUnicode_Check(object.ptr()) ? py::reinterpret_borrow<py::object>(object)
                                                            : py::str(object));
}

template <> QString castPy2Qt<QString>(const py::handle &object)
{
    if (PyUnicode_Check(object.ptr())) {
        if (const auto utf8 = py::reinterpret_steal<py::object>(PyUnicode_AsUTF8String(object.ptr()))) {
            return QString::fromUtf8(bytesOf(utf8));
        }
        PyErr_Clear();
    }
    return QString::fromUtf8(conversionErrorText);
}

template <> QVariant castPy2Qt<QVariant>(const py::handle &object)
{
    return fromPython<VariantBuilder>(object, object);
}

template <> QJSValue castPy2Qt<QJSValue>(const py::handle &object)
{
    return fromPython<ScriptBuilder>(object, object);
}

template <> QVariantMap castPy2Qt<QVariantMap>(const py::handle &object)
{
    QVariantMap result;
    forEachItem(object, [&](const QString &key, const py::handle &value) {
        result.insert(key, fromPython<VariantBuilder>(value, object));
    });
    return result;
}

template <> QVariantList castPy2Qt<QVariantList>(const py::handle &object)
{
    return fromSequence<QVariant>(
        object, [&](const py::object &item) { return fromPython<VariantBuilder>(item, object); });
}

template <> QStringList castPy2Qt<QStringList>(const py::handle &object)
{
    return fromSequence<QString>(object, textOf);
}

template <> QList<QVariantMap> castPy2Qt<QList<QVariantMap>>(const py::handle &object)
{
    return fromSequence<QVariantMap>(object, mapFromAnything);
}

template <> QPointF castPy2Qt<QPointF>(const py::handle &object)
{
    const auto [x, y] = pairFrom<std::pair<double, double>>(object);
    return {x, y};
}

template <> QList<QPointF> castPy2Qt<QList<QPointF>>(const py::handle &object)
{
    return fromSequence<QPointF>(object, castPy2Qt<QPointF>);
}

template <> QList<std::pair<int, int>> castPy2Qt<QList<std::pair<int, int>>>(const py::handle &object)
{
    return fromSequence<std::pair<int, int>>(object, pairFrom<std::pair<int, int>>);
}

template <>
QList<std::pair<double, double>> castPy2Qt<QList<std::pair<double, double>>>(const py::handle &object)
{
    return fromSequence<std::pair<double, double>>(object, pairFrom<std::pair<double, double>>);
}
