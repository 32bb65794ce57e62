#pragma once

#include <pybind11/pybind11.h>

/// Fills the Python module `brovik.auto`.
void bindAuto(pybind11::module_ &module);
