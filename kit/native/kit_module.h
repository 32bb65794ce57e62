#pragma once

#include <pybind11/pybind11.h>

/// Makes what `brovik` needs where no host has made it: the application object, the shared objects and the
/// log. On the thread of the application, before the module is made. Throws pybind11::import_error on
/// another.
void prepareHost();

/// Adds `brovik._kit`, what the Python module `brovik.testing` is made of. With the GIL, once.
void bindKit(pybind11::module_ &brovik);
