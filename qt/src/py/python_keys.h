#pragma once

#include <pybind11/pybind11.h>

#include <initializer_list>

// How Python asks for the keys of a property table. Everything here runs with the GIL held.

/// What `build` makes at the first call, handed out ever after as the same object; made anew only if a caller
/// has emptied it. It is never destroyed: nothing of Python may be when the interpreter is gone.
template <auto build> auto keptForever()
{
    using Container = decltype(build());
    static pybind11::handle kept;
    if (!kept || pybind11::len(kept) == 0) {
        kept = build().release();
    }
    return pybind11::reinterpret_borrow<Container>(kept);
}

/// A class whose read-only attributes each give their own name. `Scope` is an empty type of its own.
template <typename Scope>
void bindKeyNames(pybind11::module_ &module, const char *className, const char *doc,
                  std::initializer_list<const char *> names)
{
    pybind11::class_<Scope> cls(module, className, doc);
    cls.def(pybind11::init<>());
    for (const char *name : names) {
        cls.def_property_readonly_static(name, [name](const pybind11::object & /*cls*/) { return name; });
    }
}

/// Binds the two functions by which a backend asks for the defaults of a table, and for the names of its
/// bounds.
template <auto defaultValues, auto minMaxKeys, typename Object, typename... Options>
void bindKeyLists(pybind11::class_<Object, Options...> &cls, const char *docOfDefaults)
{
    cls.def(
        "get_default_values", [](const Object &) { return keptForever<defaultValues>(); }, docOfDefaults);
    cls.def(
        "get_min_max_keys", [](const Object &) { return keptForever<minMaxKeys>(); },
        "The names of the bounds. Always the same set: do not change it.");
}
