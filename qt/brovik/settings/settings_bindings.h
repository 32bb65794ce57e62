#pragma once

#include <pybind11/pybind11.h>

/// Fills the Python module `brovik.settings`.
void bindSettings(pybind11::module_ &module);
