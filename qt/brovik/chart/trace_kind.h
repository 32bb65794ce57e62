#pragma once

#include <QObject>
#include <QtQml/qqmlregistration.h>

namespace TraceKinds {
Q_NAMESPACE
QML_NAMED_ELEMENT(TraceKinds)
QML_UNCREATABLE("Error: only enums")

/// How a line is drawn: a measured quantity, an output that is off or on at a height of its own, or the
/// number of the step.
enum class TraceKind { Measured, Actuator, Step };
Q_ENUM_NS(TraceKind)
} // namespace TraceKinds

using TraceKinds::TraceKind;
