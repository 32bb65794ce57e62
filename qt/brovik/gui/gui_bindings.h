#pragma once

#include <pybind11/pybind11.h>

/// Fills the Python module `brovik.gui`.
void bindGui(pybind11::module_ &module);
