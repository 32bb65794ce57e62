#pragma once

#include <pybind11/pybind11.h>

/// Fills the Python module `brovik.config`.
void bindConfig(pybind11::module_ &module);
