#include "src/py/bindings/bindings.h"

#include "brovik/auto/auto.h"
#include "src/py/bindings/enums.h"
#include "src/py/python_property.h"

namespace py = pybind11;

void bindAuto(py::module_ &module)
{
    py::enum_<Auto::AutoEnum>(module, "AutoEnum", "The operator's commands.")
        .value("Toggle", Auto::ToggleAuto)
        .value("ToggleLwTestSaure", Auto::ToggleLwTestSaure)
        .value("ToggleLwTestLauge", Auto::ToggleLwTestLauge);
    bindEnum<Auto::ProgressColor>(module, "ProgressColor", "Colour of the progress text.", "Progress");

    using Self = Auto;
    auto cls = sharedClass<Self>(module, "AutoClass", "State of the automatic run and of the bath tests.");
    AUTO_PROPERTIES(BIND_PROPERTY)
    publishSingleton<Self>(module, "Auto");
}
