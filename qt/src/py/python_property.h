#pragma once

#include "shared/announce.h"
#include "src/py/types.h"

#include <pybind11/pybind11.h>
#include <pybind11/stl.h>

#include <memory>
#include <optional>
#include <type_traits>
#include <utility>

// How shared objects are shown to Python. Bound functions run on the calling Python thread and keep the GIL.

/// The Python class of an object that Python neither makes nor owns.
template <typename Object, typename... Options>
auto sharedClass(const pybind11::handle &scope, const char *name, const char *doc)
{
    return pybind11::class_<Object, std::unique_ptr<Object, pybind11::nodelete>, Options...>(scope, name,
                                                                                             doc);
}

/// Makes the one object an attribute of its module, by reference.
template <typename Object> void publishSingleton(pybind11::module_ &module, const char *name)
{
    module.attr(name) = pybind11::cast(&Object::instance(), pybind11::return_value_policy::reference);
}

namespace property_detail {

template <typename Class, typename Value> std::remove_cvref_t<Value> setterValue(void (Class::*)(Value));

} // namespace property_detail

/// An argument by name; a bool takes nothing but True and False.
template <typename Value> pybind11::arg pythonArgument(const char *name)
{
    pybind11::arg argument(name);
    argument.noconvert(std::is_same_v<Value, bool>);
    return argument;
}

/// What Python calls to let an object tell of something: the signal's arguments are the function's.
template <Cost cost = Cost::Binding, typename Class, typename... Parameters>
auto announcer(void (Class::*signal)(Parameters...))
{
    return
        [signal](Class &object, Parameters... parameters) { announce<cost>(object, signal, parameters...); };
}

/// The result of a bound function that may find nothing: None for a null pointer, and the signature says so.
template <typename Pointer> std::optional<Pointer> orNone(Pointer found)
{
    return found != nullptr ? std::optional(std::move(found)) : std::nullopt;
}

/// A readable and writable attribute. A value of a wrong type raises TypeError and changes nothing.
template <typename Class, typename Get, typename Set>
void bindProperty(Class &cls, const char *name, Get get, Set set, const char *doc)
{
    using Value = decltype(property_detail::setterValue(set));
    cls.def_property(name, get,
                     pybind11::cpp_function(set, pybind11::is_method(cls), pythonArgument<Value>("value")),
                     doc);
}

/// The attribute of one line of a property table. Needs `cls` and `Self` where the table is expanded.
#define BIND_PROPERTY(type, name, setter, pyName, initial, doc)                                              \
    bindProperty(cls, pyName, &Self::name, &Self::setter, doc);

/// A line of a property table that Python does not know.
#define BIND_NOTHING(type, name, setter, pyName, initial, doc)

/// The two attributes of a property with its default, which Python can only read.
#define BIND_DEFAULTED(type, name, setter, pyName, initial, doc)                                             \
    BIND_PROPERTY(type, name, setter, pyName, initial, doc)                                                  \
    cls.def_property_readonly(pyName "_default", &Self::name##Default, "Default: " doc);

/// The four attributes of a number with bounds.
#define BIND_RANGED(type, name, setter, pyName, lowest, highest, initial, doc)                               \
    BIND_PROPERTY(type, name##Min, setter##Min, pyName "_min", lowest, "Lower bound: " doc)                  \
    BIND_PROPERTY(type, name##Max, setter##Max, pyName "_max", highest, "Upper bound: " doc)                 \
    BIND_DEFAULTED(type, name, setter, pyName, initial, doc)
