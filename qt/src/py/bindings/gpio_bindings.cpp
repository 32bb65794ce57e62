#include "src/py/bindings/bindings.h"

#include "brovik/gpio/gpio.h"
#include "src/py/python_property.h"

namespace py = pybind11;

namespace {

/// A text for the library, which takes UTF-8. Throws the type error of what has none.
std::string utf8Of(const py::str &text)
{
    py::detail::make_caster<std::string> utf8;
    if (!utf8.load(text, false)) {
        throw py::type_error("Der Text lässt sich nicht in UTF-8 darstellen.");
    }
    return py::detail::cast_op<std::string &>(utf8);
}

} // namespace

/// A text for the library: unlike other texts, it takes nothing but a str.
#define BIND_STRING(type, name, setter, pyName, initial, doc)                                                \
    cls.def_property(                                                                                        \
        pyName, &Self::name, [](Self &self, const py::str &value) { self.setter(utf8Of(value)); }, doc);

void bindGPIO(py::module_ &module)
{
    using Self = GPIO;
    auto cls = sharedClass<Self>(module, "GPIOClass", "Edge detection on input lines.");
    GPIO_PROPERTIES(BIND_STRING)
    cls.def("open_chip", &Self::openChip, py::arg("path_to_dev"),
            "Opens the chip, by path, name, label or number. Before the first line is watched.");
    cls.def("release", &Self::release, py::arg("line"), "Gives one line up.");
    publishSingleton<Self>(module, "GPIO");
}
