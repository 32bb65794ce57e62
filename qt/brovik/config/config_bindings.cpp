#include "config_bindings.h"

#include "python_property.h"
#include "config.h"

namespace py = pybind11;

void bindConfig(py::module_ &module)
{
    auto cls = sharedClass<Config>(module, "ConfigClass", "The equipment of this machine.");
    publishSingleton<Config>(module, "Config");
}
