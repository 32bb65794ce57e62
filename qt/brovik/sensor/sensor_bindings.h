#pragma once

#include <pybind11/pybind11.h>

/// Fills the Python module `brovik.sensor`.
void bindSensor(pybind11::module_ &module);
