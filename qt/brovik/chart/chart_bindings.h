#pragma once

#include <pybind11/pybind11.h>

/// Fills the Python module `brovik.chart`.
void bindChart(pybind11::module_ &module);
