#include "src/py/bindings/bindings.h"

#include "brovik/shell/shell.h"
#include "src/py/bindings/enums.h"
#include "src/py/python_list.h"
#include "src/py/python_property.h"

#include <memory>

namespace py = pybind11;

namespace {

using EntryClass = py::class_<ChangelogEntry, std::shared_ptr<ChangelogEntry>>;

void bindActions(py::module_ &module)
{
    bindEnum<Shell::ShellAction>(module, "ShellActionEnum", "Requests of the operator.");
}

void bindEntry(EntryClass &cls)
{
    using Self = ChangelogEntry;
    cls.def(py::init<const Shell &>(), py::arg("shell"), "An empty entry.");
    cls.def(py::init<const Self &>(), py::arg("other"), "A copy.");
    cls.def("__str__", &Self::text);
    cls.def("__repr__", &Self::description);
    cls.def(
        "__eq__", [](const Self &self, const Self &other) { return self == other; }, py::is_operator(),
        py::arg("other"), "One common field is enough; the changes do not count.");
    CHANGELOG_ENTRY_PROPERTIES(BIND_PROPERTY)
}

template <typename Class> void bindState(Class &cls)
{
    using Self = Shell;
    SHELL_COLORS(BIND_PROPERTY)
    SHELL_STATES(BIND_PROPERTY)
    SHELL_INSTALLED(BIND_PROPERTY)
    bindProperty(cls, "changelogs", &Self::changelogs, &Self::setChangelogs,
                 "The changelog asked for last, as a copy. A list of equal entries does not take its place.");
    SHELL_UPGRADABLES(BIND_PROPERTY)
    cls.def("append_stderr", &Self::writeStderr, py::arg("text"), "Adds to the console, as an error.");
    cls.def("append_stdout", &Self::writeStdout, py::arg("text"), "Adds to the console.");
}

} // namespace

/// All classes are there before the first signature is written.
void bindShell(py::module_ &module)
{
    py::class_<Shell::Changelogs> list(module, "ChangelogEntryVector", "Entries of a changelog.");
    bindActions(module);
    auto cls = sharedClass<Shell>(module, "ShellClass", "State of the update facility.");
    publishSingleton<Shell>(module, "Shell");
    EntryClass entry(module, "ChangelogEntry", "One entry of a changelog.");
    bindEntry(entry);
    bindList<ChangelogEntry, ListElements::Copied>(list);
    bindState(cls);
}
