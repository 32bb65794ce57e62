#include "sensor_bindings.h"

#include "python_property.h"
#include "sensor.h"

namespace py = pybind11;

void bindSensor(py::module_ &module)
{
    auto cls = sharedClass<Sensor>(module, "SensorClass", "The inputs of the machine.");
    publishSingleton<Sensor>(module, "Sensor");
}
