#pragma once

#include <pybind11/pybind11.h>

/// Fills the Python module `brovik.gpio`.
void bindGPIO(pybind11::module_ &module);
