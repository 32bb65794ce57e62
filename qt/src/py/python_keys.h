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

/// A class whose read-only attributes each give their own name.
template <typename Class> void bindKeyNames(Class &cls, std::initializer_list<const char *> names)
{
    for (const char *name : names) {
        cls.def_property_readonly_static(name, [name](const pybind11::object & /*cls*/) { return name; });
    }
}
