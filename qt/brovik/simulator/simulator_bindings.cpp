#include "simulator_bindings.h"

#include "python_property.h"
#include "simulator.h"

namespace py = pybind11;

void bindSimulator(py::module_ &module)
{
    auto cls = sharedClass<Simulator>(module, "SimulatorClass", "Values of the simulated hardware.");
    publishSingleton<Simulator>(module, "Simulator");
}
