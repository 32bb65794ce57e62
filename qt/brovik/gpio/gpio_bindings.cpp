#include "gpio_bindings.h"

#include "python_property.h"
#include "gpio.h"

namespace py = pybind11;

void bindGPIO(py::module_ &module)
{
    auto cls = sharedClass<GPIO>(module, "GPIOClass", "Edge detection on input lines.");
    publishSingleton<GPIO>(module, "GPIO");
}
