#include "src/py/bindings/bindings.h"

#include "brovik/sensor/sensor.h"
#include "src/py/bindings/enums.h"
#include "src/py/python_property.h"

#include <vector>

namespace py = pybind11;

namespace {

void bindSensorEnums(py::module_ &module)
{
    py::enum_<SensorEnum>(module, "SensorEnum", "The inputs and the measured values.")
        .value("Start", SensorEnums::StartBtn)
        .value("Stop", SensorEnums::StopBtn)
        .value("Level", SensorEnums::SensorLevel)
        .value("Lw", SensorEnums::SensorLw)
        .value("AIn1", SensorEnums::AIn1)
        .value("AIn2", SensorEnums::AIn2)
        .value("P", SensorEnums::SensorP);
    bindEnum<SensorLwEnum>(module, "SensorLwEnum", "Kinds of conductivity sensors.");
    bindEnum<SensorPEnum>(module, "SensorPEnum", "Kinds of pressure sensors.");
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

template <typename Class> void bindInputs(Class &cls)
{
    constexpr auto reference = py::return_value_policy::reference;
#define BIND_INPUT(input, name, pyName, ...)                                                                 \
    cls.def_property_readonly(pyName, &Sensor::name, reference, "The input " pyName ".");
    SENSOR_DINS(BIND_INPUT)
    const auto allDins = [](const Sensor &sensor) {
        const auto &all = sensor.allDins();
        return std::vector<DIn *>(all.begin(), all.end());
    };
    cls.def_property_readonly("all_dins", allDins, reference, "start, stop and level.");
    SENSOR_AINS(BIND_INPUT)
#undef BIND_INPUT
    const auto dinFromEnum = [](const Sensor &sensor, SensorEnum input) {
        return orNone(sensor.dinFromEnum(input));
    };
    cls.def("din_from_enum", dinFromEnum, py::arg("enum"), reference,
            "None for a value that is no digital input.");
    const auto ainFromEnum = [](Sensor &sensor, SensorEnum input) {
        return orNone(sensor.ainFromEnum(input));
    };
    cls.def("ain_from_enum", ainFromEnum, py::arg("enum"), reference,
            "None for a value that is no analogue input.");
}

template <typename Class> void bindValues(Class &cls)
{
    using Self = Sensor;
#define BIND_READ_ONLY(type, name, setter, pyName, initial, doc)                                             \
    cls.def_property_readonly(pyName, &Self::name, doc);
    SENSOR_VALUES(BIND_READ_ONLY)
#undef BIND_READ_ONLY
    SENSOR_STATE(BIND_PROPERTY)
    cls.def_property_readonly("lw_ticks", &Self::lwTicks, "Edges counted since the last period.");
}

template <typename Class> void bindMeasuring(Class &cls)
{
    cls.def("p_change_from_simulator", &Sensor::pChangeFromSimulator, py::arg("value"),
            "Takes a simulated pressure, bar, and sets the simulated input to match.");
    cls.def("set_lw_and_apply_offset", &Sensor::setLwAndApplyOffset, py::arg("value"),
            "Stores a raw conductivity, mS/cm, and returns the value after the offset.");
    cls.def("set_p_and_apply_offset", &Sensor::setPAndApplyOffset, py::arg("value"),
            "Stores a raw pressure, bar, and returns the value after the offset.");
    cls.def("set_lw_without_offset", &Sensor::setLwWithoutOffset, py::arg("value"),
            "Stores a conductivity, mS/cm, as the raw value and as the value after the offset.");
    cls.def("set_p_without_offset", &Sensor::setPWithoutOffset, py::arg("value"),
            "Stores a pressure, bar, as the raw value and as the value after the offset.");
    cls.def("init_lw_timer", &Sensor::initLwTimer,
            "Starts the measurement of conductivity from counted edges. To be called once.");
    cls.def("setup_lw_edge_detect", &Sensor::setupLwEdgeDetect, py::arg("channel"),
            "Counts the falling edges of this GPIO line from now on.");
}

} // namespace

void bindSensor(py::module_ &module)
{
    bindSensorEnums(module);
    bindDIn(module);
    bindAIn(module);
    auto cls = sharedClass<Sensor>(module, "SensorClass", "The inputs of the machine.");
    bindInputs(cls);
    bindValues(cls);
    bindMeasuring(cls);
    publishSingleton<Sensor>(module, "Sensor");
}
