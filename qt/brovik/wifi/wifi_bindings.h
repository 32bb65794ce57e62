#pragma once

#include <pybind11/pybind11.h>

/// Fills the Python module `brovik.wifi`.
void bindWifi(pybind11::module_ &module);
