#include "brovik/actuator/dout.h"

#include "brovik/actuator/actuator.h"

DOut::DOut(ActuatorEnum output, const QString &name, const QString &logName, DOutTypeEnum type,
           Actuator &actuator)
    : m_name(name)
    , m_logName(logName)
    , m_output(output)
    , m_type(type)
    , m_actuator(actuator)
{
    QJSEngine::setObjectOwnership(this, QJSEngine::CppOwnership);
}

void DOut::setState(bool state)
{
    change(m_state, state, &DOut::stateChanged);
}

void DOut::toggle()
{
    announce(m_actuator, &Actuator::toggle, m_output);
}
