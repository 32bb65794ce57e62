#include "src/py/bindings/bindings.h"

#include "brovik/config/config.h"
#include "src/py/bindings/enums.h"
#include "src/py/python_property.h"

namespace py = pybind11;

#define CONFIG_ATTRIBUTES(type, name, setter, pyName, pyReads, initial, doc)                                 \
    bindProperty(cls, pyName, &Self::pyReads, &Self::setter, doc);                                           \
    cls.def_property_readonly(pyName "_default", &Self::name##Default, "Default: " doc);

void bindConfig(py::module_ &module)
{
    bindEnum<Config::MachineVersion>(module, "MachineVersion", "Generations of the machine.",
                                     "MachineVersion");
    bindEnum<Config::DisplayType>(module, "DisplayType", "Displays that the machine may have.",
                                  "DisplayType");

    using Self = Config;
    auto cls = sharedClass<Self>(module, "ConfigClass", "The equipment of this machine.");
    CONFIG_PROPERTIES(CONFIG_ATTRIBUTES)
    publishSingleton<Self>(module, "Config");
}
