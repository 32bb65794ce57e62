#pragma once

#include <QObject>
#include <QtQml/qqmlregistration.h>

namespace SensorEnums {
Q_NAMESPACE
QML_NAMED_ELEMENT(SensorEnums)
QML_UNCREATABLE("Error: only enums")

/// The inputs and the measured values.
enum SensorEnum : int { StartBtn, StopBtn, SensorLevel, SensorLw, AIn1, AIn2, SensorP };
Q_ENUM_NS(SensorEnum)

/// Kinds of conductivity sensors: Seli with an analogue output, ILFS with a frequency output.
enum SensorLwEnum : int { Seli_SLI_03, ILFS_02_TK2 };
Q_ENUM_NS(SensorLwEnum)

/// Kinds of pressure sensors.
enum SensorPEnum : int { SMC_PSE564_02, Gems_3500R0006G01B000 };
Q_ENUM_NS(SensorPEnum)
} // namespace SensorEnums

using SensorEnums::SensorEnum;
using SensorEnums::SensorLwEnum;
using SensorEnums::SensorPEnum;
