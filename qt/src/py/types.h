#pragma once

#include "src/py/converter.h"
#include "src/py/exceptions.h"

#include <pybind11/pybind11.h>

// Adapters that let bound functions take and return Qt types. Include in every file that binds such a
// function.

namespace adapter_detail {

namespace py = pybind11;

template <typename Target> struct Loader;

template <> struct Loader<QString>
{
    static QString load(const py::handle &object) { return textOf(object); }
};

template <> struct Loader<QColor>
{
    static QColor load(const py::handle &object) { return QColor::fromString(Loader<QString>::load(object)); }
};

template <> struct Loader<QVariantMap>
{
    static QVariantMap load(const py::handle &object)
    {
        return castPy2Qt<QVariantMap>(py::dict(py::reinterpret_borrow<py::object>(object)));
    }
};

template <> struct Loader<QList<QVariantMap>>
{
    static QList<QVariantMap> load(const py::handle &object)
    {
        // Else it would be reported and taken for an empty list.
        if (!py::isinstance<py::iterable>(object)) {
            throw py::type_error("Das Objekt ist keine Liste.");
        }
        return castPy2Qt<QList<QVariantMap>>(py::list(py::reinterpret_borrow<py::object>(object)));
    }
};

/// The other types are loaded as the conversion does it.
template <typename Target> struct Loader
{
    static Target load(const py::handle &object) { return castPy2Qt<Target>(object); }
};

/// Loads within the guard: what fails there is reported and gives the default value, a type error goes on to
/// the caller, and a pending Python error counts as no match.
template <typename Target> bool loadGuarded(Target &target, const py::handle &object)
{
    guarded([&] { target = Loader<Target>::load(object); });
    if (PyErr_Occurred() == nullptr) {
        return true;
    }
    PyErr_Clear();
    return false;
}

} // namespace adapter_detail

namespace pybind11::detail {

template <typename Target> struct qt_adapter
{
    bool load(handle source, bool /*convert*/) { return adapter_detail::loadGuarded(value, source); }

    static handle cast(const Target &source, return_value_policy /*policy*/, handle /*parent*/)
    {
        return castQt2Py(source).release();
    }

    template <typename T> using cast_op_type = movable_cast_op_type<T>;

    explicit operator Target *() { return &value; }
    explicit operator Target &() { return value; }
    explicit operator Target &&() && { return std::move(value); }

private:
    Target value;
};

template <> struct type_caster<QString> : qt_adapter<QString>
{
    static constexpr auto name = const_name("str");
};

template <> struct type_caster<QColor> : qt_adapter<QColor>
{
    static constexpr auto name = const_name("str");
};

template <> struct type_caster<QPointF> : qt_adapter<QPointF>
{
    static constexpr auto name = const_name("tuple[float, float]");
};

template <> struct type_caster<QVariantMap> : qt_adapter<QVariantMap>
{
    static constexpr auto name = const_name("dict[str, typing.Any]");
};

template <> struct type_caster<QStringList> : qt_adapter<QStringList>
{
    static constexpr auto name = const_name("list[str]");
};

template <> struct type_caster<QList<QPointF>> : qt_adapter<QList<QPointF>>
{
    static constexpr auto name = const_name("list[tuple[float, float]]");
};

template <> struct type_caster<QList<QVariantMap>> : qt_adapter<QList<QVariantMap>>
{
    static constexpr auto name = const_name("list[dict[str, typing.Any]]");
};

} // namespace pybind11::detail
