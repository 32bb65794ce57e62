#include "src/py/converter.h"

#include "shared/log.h"

#include <QJSValueIterator>
#include <QMetaType>

#include <algorithm>

namespace py = pybind11;

namespace {

template <typename ElementAt> py::list listOf(qsizetype length, const ElementAt &elementAt)
{
    py::list result(static_cast<std::size_t>(length));
    for (qsizetype index = 0; index < length; ++index) {
        // GCOVR_EXCL_BR_START: the index is within the list
        if (PyList_SetItem(result.ptr(), index, elementAt(index).release().ptr()) != 0) {
            throw py::error_already_set();
        }
        // GCOVR_EXCL_BR_STOP
    }
    return result;
}

template <typename List> py::list listOf(const List &values)
{
    return listOf(values.size(), [&](qsizetype index) { return castQt2Py(values.at(index)); });
}

template <typename Map> py::dict dictOf(const Map &values)
{
    py::dict result;
    for (auto item = values.begin(); item != values.end(); ++item) {
        result[castQt2Py(item.key())] = castQt2Py(item.value());
    }
    return result;
}

template <typename Number> py::list listOfPairs(const QList<std::pair<Number, Number>> &pairs)
{
    return listOf(pairs.size(), [&](qsizetype index) -> py::object {
        return py::make_tuple(pairs.at(index).first, pairs.at(index).second);
    });
}

py::list listOfScriptArray(const QJSValue &array)
{
    const int length = array.property(QStringLiteral("length")).toInt();
    return listOf(std::max(length, 0),
                  [&](qsizetype index) { return castQt2Py(array.property(static_cast<quint32>(index))); });
}

py::dict dictOfScriptObject(const QJSValue &object)
{
    py::dict result;
    QJSValueIterator item(object);
    while (item.hasNext()) {
        item.next();
        result[castQt2Py(item.name())] = castQt2Py(item.value());
    }
    return result;
}

/// What has no counterpart in Python. The parts say in the log what it was.
template <typename... Parts> py::object noneWithWarning(const Parts &...parts)
{
    QDebug stream = warningStream();
    (stream << ... << parts);
    return py::none();
}

py::object noneFor(const char *typeName)
{
    return noneWithWarning("Keine Konvertierung für QVariant-Typ", typeName, "implementiert");
}

py::object convertibleVariant(const QVariant &value)
{
    if (QMetaType::canConvert(value.metaType(), QMetaType::fromType<QJSValue>())) {
        return castQt2Py(value.value<QJSValue>());
    }
    return noneFor(value.typeName());
}

} // namespace

py::object castQt2Py(const QString &value)
{
    return castQt2Py(value.toStdString());
}

py::object castQt2Py(const std::string &value)
{
    return py::str(value);
}

py::object castQt2Py(const char *value)
{
    return py::str(value);
}

py::object castQt2Py(const QColor &value)
{
    return castQt2Py(value.name());
}

py::object castQt2Py(const QMap<QString, QString> &value)
{
    return dictOf(value);
}

py::object castQt2Py(const QStringList &value)
{
    return listOf(value);
}

py::object castQt2Py(const QPointF &value)
{
    return py::make_tuple(value.x(), value.y());
}

py::object castQt2Py(const QList<std::pair<int, int>> &value)
{
    return listOfPairs(value);
}

py::object castQt2Py(const QList<std::pair<double, double>> &value)
{
    return listOfPairs(value);
}

py::object castQt2Py(const QList<QPointF> &value)
{
    return listOf(value);
}

py::object castQt2Py(const QVariantMap &value)
{
    return dictOf(value);
}

py::object castQt2Py(const QVariantHash &value)
{
    return dictOf(value);
}

py::object castQt2Py(const QVariantList &value)
{
    return listOf(value);
}

py::object castQt2Py(const QList<QVariantMap> &value)
{
    return listOf(value);
}

py::object castQt2Py(const QVariant &value)
{
    switch (value.typeId()) {
    case QMetaType::Bool:
        return castQt2Py(value.toBool());
    case QMetaType::Int:
    case QMetaType::LongLong:
    case QMetaType::Long:
        return castQt2Py(value.toLongLong());
    case QMetaType::UInt:
    case QMetaType::ULongLong:
    case QMetaType::ULong:
        return castQt2Py(value.toULongLong());
    case QMetaType::Double:
    case QMetaType::Float:
        return castQt2Py(value.toDouble());
    case QMetaType::QVariantMap:
        return castQt2Py(value.toMap());
    case QMetaType::QVariantHash:
        return castQt2Py(value.toHash());
    case QMetaType::QVariantList:
        return castQt2Py(value.toList());
    case QMetaType::QString:
        return castQt2Py(value.toString());
    case QMetaType::QStringList:
        return castQt2Py(value.toStringList());
    case QMetaType::QJsonValue:
        return castQt2Py(value.toJsonValue());
    case QMetaType::QJsonObject:
        return castQt2Py(value.toJsonObject());
    case QMetaType::QJsonArray:
        return castQt2Py(value.toJsonArray());
    case QMetaType::QJsonDocument:
        return castQt2Py(value.toJsonDocument());
    default:
        return convertibleVariant(value);
    }
}

py::object castQt2Py(const QJSValue &value)
{
    if (value.isArray()) {
        return listOfScriptArray(value);
    }
    if (value.isBool()) {
        return castQt2Py(value.toBool());
    }
    if (value.isNull() || value.isUndefined()) {
        return py::none();
    }
    if (value.isNumber()) {
        return castQt2Py(value.toNumber());
    }
    if (value.isObject()) {
        return dictOfScriptObject(value);
    }
    if (value.isString()) {
        return castQt2Py(value.toString());
    }
    // A symbol has no variant: Qt crashes when it is asked for one.
    return value.isVariant() ? castQt2Py(value.toVariant()) : noneFor("QJSValue");
}

py::object castQt2Py(const QJsonValue &value)
{
    switch (value.type()) {
    case QJsonValue::Null:
        return py::none();
    case QJsonValue::Bool:
        return castQt2Py(value.toBool());
    case QJsonValue::Double:
        return castQt2Py(value.toDouble());
    case QJsonValue::String:
        return castQt2Py(value.toString());
    case QJsonValue::Array:
        return castQt2Py(value.toArray());
    case QJsonValue::Object:
        return castQt2Py(value.toObject());
    case QJsonValue::Undefined:
        break;
    }
    return noneWithWarning("Das an castQt2Py übergebene QJsonValue hat einen unbekannten Typ");
}

py::object castQt2Py(const QJsonObject &value)
{
    py::dict result;
    for (auto item = value.begin(); item != value.end(); ++item) {
        result[castQt2Py(item.key())] = castQt2Py(QJsonValue(item.value()));
    }
    return result;
}

py::object castQt2Py(const QJsonArray &value)
{
    return listOf(value);
}

py::object castQt2Py(const QJsonDocument &value)
{
    if (value.isObject()) {
        return castQt2Py(value.object());
    }
    if (value.isArray()) {
        return castQt2Py(value.array());
    }
    return noneWithWarning("Es wurde ein invalides QJsonDocument an _castQt2Py übergeben:", value);
}
