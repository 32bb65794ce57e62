#include "src/py/bindings/bindings.h"

#include "brovik/simulator/simulator.h"
#include "src/py/bindings/enums.h"
#include "src/py/python_keys.h"
#include "src/py/python_property.h"

namespace py = pybind11;

namespace {

struct SimKeys
{};

// clang-format off
#define NOTHING(...)
#define RANGED_KEYS(type, name, setter, pyName, ...) pyName, pyName "_min", pyName "_max", pyName "_default",
#define DEFAULTED_KEYS(type, name, setter, pyName, ...) pyName, pyName "_default",
#define DEFAULT_VALUE(type, name, setter, pyName, ...) result[pyName] = Simulator::instance().name##Default();
#define BOUNDS(type, name, setter, pyName, ...) result.add(pyName "_min"); result.add(pyName "_max");
// clang-format on

py::dict defaultValues()
{
    py::dict result;
    SIMULATOR_PROPERTIES(NOTHING, DEFAULT_VALUE, NOTHING)
    return result;
}

py::set minMaxKeys()
{
    py::set result;
    SIMULATOR_PROPERTIES(BOUNDS, NOTHING, NOTHING)
    return result;
}

} // namespace

void bindSimulator(py::module_ &module)
{
    using Self = Simulator;

    bindEnum<Simulator::SimEnum>(module, "SimuEnum", "What the operator sets.", "Sim");
    bindKeyNames<SimKeys>(module, "SimKeys", "Names of the attributes.",
                          {SIMULATOR_PROPERTIES(RANGED_KEYS, DEFAULTED_KEYS, NOTHING)});

    auto cls = sharedClass<Self>(module, "SimulatorClass", "Values of the simulated hardware.");
    SIMULATOR_PROPERTIES(BIND_RANGED, BIND_DEFAULTED, BIND_PROPERTY)
    bindKeyLists<defaultValues, minMaxKeys>(
        cls, "The defaults that a backend may store. Always the same dictionary: do not change it.");
    publishSingleton<Self>(module, "Simulator");
}
