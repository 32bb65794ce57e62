#pragma once

#include <pybind11/pybind11.h>

/// Fills the Python module `brovik.simulator`.
void bindSimulator(pybind11::module_ &module);
