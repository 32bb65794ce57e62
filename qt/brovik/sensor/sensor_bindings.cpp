#include "sensor_bindings.h"

#include "python_property.h"
#include "sensor.h"

#include <pybind11/stl.h>

namespace py = pybind11;

namespace {

void bindEnums(py::module_ &module)
{
    py::enum_<SensorEnum>(module, "SensorEnum", "The inputs and the measured values.")
        .value("Start", SensorEnums::StartBtn)
        .value("Stop", SensorEnums::StopBtn)
        .value("Level", SensorEnums::SensorLevel)
        .value("Lw", SensorEnums::SensorLw)
        .value("AIn1", SensorEnums::AIn1)
        .value("AIn2", SensorEnums::AIn2)
        .value("P", SensorEnums::SensorP);
    py::enum_<SensorLwEnum>(module, "SensorLwEnum", "Kinds of conductivity sensors.")
        .value("Seli_SLI_03", SensorEnums::Seli_SLI_03)
        .value("ILFS_02_TK2", SensorEnums::ILFS_02_TK2);
    py::enum_<SensorPEnum>(module, "SensorPEnum", "Kinds of pressure sensors.")
        .value("SMC_PSE564_02", SensorEnums::SMC_PSE564_02)
        .value("Gems_3500R0006G01B000", SensorEnums::Gems_3500R0006G01B000);
}

void bindDIn(py::module_ &module)
{
    using Self = DIn;
    auto cls = sharedClass<Self>(module, "DIn", "One digital input.");
    DIN_PROPERTIES(BIND_PROPERTY)
    cls.def_property_readonly("enum", &Self::input, "Which input this is.");
}

void bindAIn(py::module_ &module)
{
    using Self = AIn;
    auto cls = sharedClass<Self>(module, "AIn", "One analogue input.");
    AIN_PROPERTIES(BIND_PROPERTY)
    cls.def_property_readonly("enum", &Self::input, "Which input this is.");
}

} // namespace

void bindSensor(py::module_ &module)
{
    using Self = Sensor;
    bindEnums(module);
    bindDIn(module);
    bindAIn(module);
    auto cls = sharedClass<Self>(module, "SensorClass", "The inputs of the machine.");
    SENSOR_STATE(BIND_PROPERTY)
    publishSingleton<Self>(module, "Sensor");
}
