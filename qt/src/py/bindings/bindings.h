#pragma once

#include <pybind11/pybind11.h>

// What Python sees of the eleven modules. Each function fills the Python module `brovik.<name>` with the
// shared object and its enums, once, while the interpreter imports `brovik`, with the GIL held.

void bindActuator(pybind11::module_ &module);
void bindAuto(pybind11::module_ &module);
void bindChart(pybind11::module_ &module);
void bindConfig(pybind11::module_ &module);
void bindGPIO(pybind11::module_ &module);
void bindGui(pybind11::module_ &module);
void bindSensor(pybind11::module_ &module);
void bindSettings(pybind11::module_ &module);
void bindShell(pybind11::module_ &module);
void bindSimulator(pybind11::module_ &module);
void bindWifi(pybind11::module_ &module);
