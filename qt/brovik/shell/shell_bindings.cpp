#include "shell_bindings.h"

#include "python_property.h"
#include "shell.h"

namespace py = pybind11;

void bindShell(py::module_ &module)
{
    auto cls = sharedClass<Shell>(module, "ShellClass", "State of the update facility.");
    publishSingleton<Shell>(module, "Shell");
}
