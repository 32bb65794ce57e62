#include "gpio_bindings.h"

#include "gpio.h"
#include "python_property.h"

namespace py = pybind11;

void bindGPIO(py::module_ &module)
{
    using Self = GPIO;
    auto cls = sharedClass<Self>(module, "GPIOClass", "Edge detection on input lines.");
    GPIO_PROPERTIES(BIND_PROPERTY)
    cls.def("open_chip", &Self::openChip, py::arg("path_to_dev"),
            "Opens the chip, by path, name, label or number. Before the first line is watched.");
    cls.def("release", &Self::release, py::arg("line"), "Gives one line up.");
    publishSingleton<Self>(module, "GPIO");
}
