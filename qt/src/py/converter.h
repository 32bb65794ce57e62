#pragma once

#include <pybind11/pybind11.h>

#include <QColor>
#include <QJSValue>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QList>
#include <QMap>
#include <QPointF>
#include <QString>
#include <QStringList>
#include <QVariant>

#include <concepts>
#include <string>
#include <utility>

// Values that cross between Qt and Python. All functions need the GIL. A QJSValue may be read only while the
// GUI thread stands still.

/// Stands in for a text that could not be converted.
inline constexpr const char *conversionErrorText = "<KONVERTIERUNGSFEHLER_PY->QT>";

template <typename Number>
concept PlainNumber = std::integral<Number> || std::floating_point<Number>;

/// bool, int and float.
template <PlainNumber Number> pybind11::object castQt2Py(Number value)
{
    return pybind11::cast(value);
}

pybind11::object castQt2Py(const QString &value);
pybind11::object castQt2Py(const std::string &value);
pybind11::object castQt2Py(const char *value);
/// The colour's name, "#rrggbb".
pybind11::object castQt2Py(const QColor &value);
pybind11::object castQt2Py(const QMap<QString, QString> &value);
pybind11::object castQt2Py(const QStringList &value);
pybind11::object castQt2Py(const QPointF &value);
pybind11::object castQt2Py(const QList<std::pair<int, int>> &value);
pybind11::object castQt2Py(const QList<std::pair<double, double>> &value);
pybind11::object castQt2Py(const QList<QPointF> &value);
pybind11::object castQt2Py(const QVariantMap &value);
pybind11::object castQt2Py(const QVariantHash &value);
pybind11::object castQt2Py(const QVariantList &value);
pybind11::object castQt2Py(const QList<QVariantMap> &value);
/// None, with a warning, for a type that has no Python counterpart.
pybind11::object castQt2Py(const QVariant &value);
/// A number is always a float.
pybind11::object castQt2Py(const QJSValue &value);
pybind11::object castQt2Py(const QJsonValue &value);
pybind11::object castQt2Py(const QJsonObject &value);
pybind11::object castQt2Py(const QJsonArray &value);
pybind11::object castQt2Py(const QJsonDocument &value);

/// The way back, to: QString (of a str), QVariant, QJSValue, QVariantMap (of a dict), QVariantList,
/// QStringList, QList<QVariantMap>, QPointF, QList<QPointF>, QList<std::pair<int, int>>,
/// QList<std::pair<double, double>> (of sequences).
///
/// QVariant and QJSValue throw a type error for an object that has no Qt counterpart or is nested deeper than
/// Python's recursion limit; all else that fails is reported and gives an invalid or undefined value.
template <typename Target> Target castPy2Qt(const pybind11::handle &object) = delete;

/// The text of any object: of a str as it is, of all else through str().
QString textOf(const pybind11::handle &object);

template <> QString castPy2Qt<QString>(const pybind11::handle &object);
template <> QVariant castPy2Qt<QVariant>(const pybind11::handle &object);
template <> QJSValue castPy2Qt<QJSValue>(const pybind11::handle &object);
template <> QVariantMap castPy2Qt<QVariantMap>(const pybind11::handle &object);
template <> QVariantList castPy2Qt<QVariantList>(const pybind11::handle &object);
template <> QStringList castPy2Qt<QStringList>(const pybind11::handle &object);
template <> QList<QVariantMap> castPy2Qt<QList<QVariantMap>>(const pybind11::handle &object);
template <> QPointF castPy2Qt<QPointF>(const pybind11::handle &object);
template <> QList<QPointF> castPy2Qt<QList<QPointF>>(const pybind11::handle &object);
template <> QList<std::pair<int, int>> castPy2Qt<QList<std::pair<int, int>>>(const pybind11::handle &object);
template <>
QList<std::pair<double, double>> castPy2Qt<QList<std::pair<double, double>>>(const pybind11::handle &object);
