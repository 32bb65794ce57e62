#pragma once

#include "shared/shared_object.h"
#include "shared/shared_property.h"

#include <QJSValue>
#include <QtQml/qqmlregistration.h>

// clang-format off
#define AUTO_PROPERTIES(P)                                                                                                \
    P(bool,          active,          setActive,          "active",           false, "An automatic run is in progress.")  \
    P(bool,          lwSaureActive,   setLwSaureActive,   "lw_saure_active",  false, "The conductivity test of the acid bath is running.") \
    P(bool,          lwLaugeActive,   setLwLaugeActive,   "lw_lauge_active",  false, "The conductivity test of the lye bath is running.") \
    P(bool,          lwSaureTooLow,   setLwSaureTooLow,   "lw_saure_too_low", false, "The acid's conductivity was found too low.") \
    P(bool,          lwLaugeTooLow,   setLwLaugeTooLow,   "lw_lauge_too_low", false, "The lye's conductivity was found too low.") \
    P(bool,          lwSpReached,     setLwSpReached,     "lw_sp_reached",    false, "The running bath test has reached its set point.") \
    P(double,        lwSaureMax,      setLwSaureMax,      "lw_saure_max",     0.0,   "Highest conductivity of the acid so far, mS/cm.") \
    P(int,           lwSaureMin,      setLwSaureMin,      "lw_saure_min",     0,     "Minimum of the acid in force for this run, mS/cm.") \
    P(int,           lwSaureSp,       setLwSaureSp,       "lw_saure_sp",      0,     "Set point of the acid in force for this run, mS/cm.") \
    P(double,        lwLaugeMax,      setLwLaugeMax,      "lw_lauge_max",     0.0,   "Highest conductivity of the lye so far, mS/cm.") \
    P(int,           lwLaugeMin,      setLwLaugeMin,      "lw_lauge_min",     0,     "Minimum of the lye in force for this run, mS/cm.") \
    P(int,           lwLaugeSp,       setLwLaugeSp,       "lw_lauge_sp",      0,     "Set point of the lye in force for this run, mS/cm.") \
    P(double,        intenseFactor,   setIntenseFactor,   "intense_factor",   0.0,   "Factor of intensive cleaning in force for this run.") \
    P(bool,          intenseCleaning, setIntenseCleaning, "intense_cleaning", false, "This run is an intensive cleaning.") \
    P(int,           progress,        setProgress,        "progress",         0,     "Percentage of the progress bar, 0 to 100; negative: indeterminate.") \
    P(QString,       progressStr,     setProgressStr,     "progress_str",     QStringLiteral("0 %"), "Large text over the progress bar.") \
    P(ProgressColor, progressColor,   setProgressColor,   "progress_color",   ProgressNormal, "Colour of the large text.")
// clang-format on

/// What the backend publishes of the automatic run and of the bath tests. Lives on the GUI thread; written
/// from any Python thread under its mutex. Decides nothing.
class Auto : public SharedObject, public SharedSingleton<Auto>
{
    Q_OBJECT
    QML_NAMED_ELEMENT(Auto_)
    QML_SINGLETON

public:
    enum ProgressColor : int { ProgressNormal, ProgressSuccess, ProgressWarning, ProgressError };
    Q_ENUM(ProgressColor)

    /// The operator's commands.
    enum AutoEnum : int { ToggleAuto, ToggleLwTestSaure, ToggleLwTestLauge };
    Q_ENUM(AutoEnum)

    AUTO_PROPERTIES(SHARED_PROPERTY)

Q_SIGNALS:
    /// A command for the backend. Raised by screens alone, with null.
    void toPy(Auto::AutoEnum action, const QJSValue &value);

private:
    friend class SharedSingleton<Auto>;
    Auto() = default;
};
