#pragma once

#include <pybind11/pybind11.h>

/// Fills the Python module `brovik.actuator`.
void bindActuator(pybind11::module_ &module);
