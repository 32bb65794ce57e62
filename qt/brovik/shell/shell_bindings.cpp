#include "shell_bindings.h"

#include "python_property.h"
#include "shell.h"

namespace py = pybind11;

void bindShell(py::module_ &module)
{
    py::enum_<Shell::ShellAction>(module, "ShellActionEnum", "Requests of the operator.")
        .value("Update", Shell::Update)
        .value("Upgrade", Shell::Upgrade)
        .value("Changelog", Shell::Changelog)
        .value("LocalChangelog", Shell::LocalChangelog)
        .value("ClearCache", Shell::ClearCache)
        .value("TestConsole", Shell::TestConsole)
        .value("ToggleTesting", Shell::ToggleTesting);

    using Self = Shell;
    auto cls = sharedClass<Self>(module, "ShellClass", "State of the update facility.");
    SHELL_PROPERTIES(BIND_PROPERTY)
    cls.def("append_stderr", &Shell::appendStderr, py::arg("text"), "Adds to the console, as an error.");
    cls.def("append_stdout", &Shell::appendStdout, py::arg("text"), "Adds to the console.");
    publishSingleton<Self>(module, "Shell");
}
