#include "settings_bindings.h"

#include "python_property.h"
#include "settings.h"

namespace py = pybind11;

void bindSettings(py::module_ &module)
{
    auto cls = sharedClass<Settings>(module, "SettingsClass", "The parameters of the process.");
    publishSingleton<Settings>(module, "SettingsValues");
}
