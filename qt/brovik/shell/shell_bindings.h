#pragma once

#include <pybind11/pybind11.h>

/// Fills the Python module `brovik.shell`.
void bindShell(pybind11::module_ &module);
