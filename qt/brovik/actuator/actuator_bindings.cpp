#include "actuator_bindings.h"

#include "python_property.h"
#include "actuator.h"

namespace py = pybind11;

void bindActuator(py::module_ &module)
{
    auto cls = sharedClass<Actuator>(module, "ActuatorClass", "The thirteen digital outputs.");
    publishSingleton<Actuator>(module, "Actuator");
}
