#include "src/py/bindings/bindings.h"

#include "brovik/actuator/actuator.h"
#include "src/py/bindings/enums.h"
#include "src/py/python_property.h"

#include <vector>

namespace py = pybind11;

namespace {

/// An iterable whose elements are outputs; looked at only while it is walked.
class DOutIterable : public py::iterable
{
public:
    using py::iterable::iterable;
};

} // namespace

template <> struct pybind11::detail::handle_type_name<DOutIterable>
{
    static constexpr auto name = const_name("typing.Iterable[") + make_caster<DOut>::name + const_name("]");
};

namespace {

void bindActuatorEnums(py::module_ &module)
{
    bindEnum<DOut::DOutTypeEnum>(module, "DOutTypeEnum", "Kinds of outputs.", "Type");

    py::enum_<ActuatorEnum> outputs(module, "ActuatorEnum",
                                    "The outputs, and the request for manual heating.");
#define BIND_OUTPUT(output, ...) outputs.value(#output, ActuatorEnums::output);
    ACTUATOR_OUTPUTS(BIND_OUTPUT)
#undef BIND_OUTPUT
    outputs.value("ToggleManualHeating", ActuatorEnums::ToggleManualHeating);
}

QString textOf(const DOut &dout)
{
    // In one go: a name may itself contain a marker.
    return QStringLiteral("DOut(name=%1, num=%2, state=%3, blocked=%4)")
        .arg(dout.name(), QString::number(dout.num()), QString::number(dout.state()),
             QString::number(dout.blocked()));
}

void bindDOut(py::module_ &module)
{
    using Self = DOut;
    auto cls = sharedClass<Self>(module, "DOut", "One digital output.");
    DOUT_NAMES(BIND_PROPERTY)
    bindProperty(cls, "state", &Self::state, &Self::setState, "The output is on, as the backend reports it.");
    DOUT_MARKS(BIND_PROPERTY)
    cls.def_property_readonly("enum", &Self::output, "Which output this is.");
    cls.def_property_readonly("type_", &Self::type, "Kind of output.");
    cls.def("__repr__", textOf);
}

std::string typeText(const py::handle &object)
{
    return py::str(py::type::of(object));
}

ActuatorEnum outputOf(const py::handle &element)
{
    if (!py::isinstance<ActuatorEnum>(element)) {
        throw py::cast_error("ActuatorEnum expected, got " + typeText(element));
    }
    return element.cast<ActuatorEnum>();
}

/// Marks the outputs that the iterable names, one by one: what stands before a wrong element takes effect.
void setBlocked(const Actuator &actuator, const py::iterable &outputs, bool blocked)
{
    for (const py::handle element : outputs) {
        if (DOut *dout = actuator.doutFromEnum(outputOf(element))) {
            dout->setBlocked(blocked);
        }
    }
}

DOut *doutOf(const py::handle &element)
{
    if (!py::isinstance<DOut>(element)) {
        throw py::type_error("DOut expected, got " + typeText(element));
    }
    return element.cast<DOut *>();
}

void setModel(Actuator &actuator, const DOutIterable &douts)
{
    QList<DOut *> list;
    for (const py::handle element : douts) {
        list.append(doutOf(element));
    }
    actuator.doutModel()->requestSetDOuts(list);
}

template <typename Class> void bindOutputs(Class &cls)
{
    constexpr auto reference = py::return_value_policy::reference;
#define BIND_DOUT(output, name, pyName, text, ...)                                                           \
    cls.def_property_readonly(pyName, &Actuator::name, reference, text);
    ACTUATOR_OUTPUTS(BIND_DOUT)
#undef BIND_DOUT
    const auto allDouts = [](const Actuator &actuator) {
        const auto &all = actuator.allDouts();
        return std::vector<DOut *>(all.begin(), all.end());
    };
    cls.def_property_readonly("all_douts", allDouts, reference, "All outputs, in the order of ActuatorEnum.");
    cls.def_property_readonly("active_douts", &Actuator::activeDouts, reference, "The outputs that are on.");
    const auto doutFromEnum = [](const Actuator &actuator, ActuatorEnum output) {
        return orNone(actuator.doutFromEnum(output));
    };
    cls.def("dout_from_enum", doutFromEnum, py::arg("enum"), reference,
            "None for a value that is no output.");
}

template <typename Class> void bindBlocking(Class &cls)
{
    cls.def("block_all_except_of", &Actuator::blockAllExceptOf, py::arg("outputs"),
            "Unblocks the outputs of the set and blocks all others.");
    cls.def("unblock_all_except_of", &Actuator::unblockAllExceptOf, py::arg("outputs"),
            "Blocks the outputs of the set and unblocks all others.");
    const auto addBlocked = [](const Actuator &actuator, const py::iterable &outputs) {
        setBlocked(actuator, outputs, true);
    };
    cls.def("add_blocked", addBlocked, py::arg("outputs"),
            "Blocks these outputs and leaves the others as they are.");
    const auto removeBlocked = [](const Actuator &actuator, const py::iterable &outputs) {
        setBlocked(actuator, outputs, false);
    };
    cls.def("remove_blocked", removeBlocked, py::arg("outputs"),
            "Unblocks these outputs and leaves the others as they are.");
}

} // namespace

void bindActuator(py::module_ &module)
{
    using Self = Actuator;
    bindActuatorEnums(module);
    bindDOut(module);
    auto cls = sharedClass<Self>(module, "ActuatorClass", "The thirteen digital outputs.");
    bindOutputs(cls);
    ACTUATOR_PROPERTIES(BIND_PROPERTY)
    bindBlocking(cls);
    cls.def("set_dout_model", setModel, py::arg("douts"),
            "Chooses the outputs that the screens show, in this order. Returns before they show them.");
    publishSingleton<Self>(module, "Actuator");
}
