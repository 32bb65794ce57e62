#include "brovik/actuator/actuator.h"

#define ACTUATOR_POINTER(output, name, ...) &m_##name,
Actuator::Actuator()
    : m_allDouts{ACTUATOR_OUTPUTS(ACTUATOR_POINTER)}
{
    QJSEngine::setObjectOwnership(&m_doutModel, QJSEngine::CppOwnership);
}
#undef ACTUATOR_POINTER

std::set<DOut *> Actuator::activeDouts() const
{
    std::set<DOut *> active;
    for (DOut *dout : m_allDouts) {
        if (dout->state()) {
            active.insert(dout);
        }
    }
    return active;
}

DOut *Actuator::doutFromEnum(ActuatorEnum output) const
{
    const auto index = static_cast<std::size_t>(output);
    return index < outputCount ? m_allDouts.at(index) : nullptr;
}

void Actuator::blockAllExceptOf(const OutputSet &outputs)
{
    for (DOut *dout : m_allDouts) {
        dout->setBlocked(!outputs.contains(dout->output()));
    }
}

void Actuator::unblockAllExceptOf(const OutputSet &outputs)
{
    for (DOut *dout : m_allDouts) {
        dout->setBlocked(outputs.contains(dout->output()));
    }
}

void Actuator::toggleManualHeating()
{
    announce(*this, &Actuator::toggle, ActuatorEnums::ToggleManualHeating);
}
