#pragma once

#include "brovik/actuator/actuator_enums.h"
#include "brovik/actuator/dout.h"
#include "brovik/actuator/dout_model.h"
#include "shared/shared_object.h"
#include "shared/shared_property.h"

#include <QtQml/qqmlregistration.h>

#include <array>
#include <set>
#include <vector>

// clang-format off
#define ACTUATOR_PROPERTIES(P) \
    P(bool, manualHeatingEnabled, setManualHeatingEnabled, "manual_heating_enabled", false, "The operator may switch the heater by hand.")
// clang-format on

/// An output as a part of its owner.
#define ACTUATOR_OUTPUT(output, name, pyName, text, logText, type)                                           \
    SHARED_PART(DOut, name, ActuatorEnums::output, QStringLiteral(text), QStringLiteral(logText),            \
                DOut::type, *this)

/// The thirteen digital outputs and the operator's requests for them. Lives on the GUI thread; written from
/// any Python thread under its mutex. Each output has a mutex of its own, and no operation holds two of them
/// at once.
class Actuator : public SharedObject, public SharedSingleton<Actuator>
{
    Q_OBJECT
    QML_ELEMENT
    QML_SINGLETON

    ACTUATOR_OUTPUTS(ACTUATOR_OUTPUT)

    Q_PROPERTY(DOutModel *doutModel READ doutModel CONSTANT)

    ACTUATOR_PROPERTIES(SHARED_PROPERTY)

public:
    static constexpr std::size_t outputCount = ActuatorEnums::ToggleManualHeating;
    using Outputs = std::array<DOut *, outputCount>;
    using OutputSet = std::set<ActuatorEnum>;

    /// All outputs, in the order of their enumerators.
    const Outputs &allDouts() const { return m_allDouts; }
    /// The outputs that are on at this moment. No snapshot: each is read for itself.
    std::set<DOut *> activeDouts() const;
    DOutModel *doutModel() { return &m_doutModel; }

    /// Null for a value that is no output.
    DOut *doutFromEnum(ActuatorEnum output) const;

    /// Unblocks the outputs of the set and blocks all others.
    void blockAllExceptOf(const OutputSet &outputs);
    /// Blocks the outputs of the set and unblocks all others.
    void unblockAllExceptOf(const OutputSet &outputs);

    /// Asks the backend to switch the permission for manual heating over.
    Q_INVOKABLE void toggleManualHeating();

Q_SIGNALS:
    /// A request of the operator for the backend.
    void toggle(ActuatorEnums::ActuatorEnum output);

private:
    friend class SharedSingleton<Actuator>;
    Actuator();

    const Outputs m_allDouts;
    DOutModel m_doutModel{this};
};
