#pragma once

#include "brovik/chart/trace_schedule.h"
#include "shared/gui_thread.h"

#include <QObject>
#include <QValueAxis>
#include <QtQml/qqmlregistration.h>

#include <cmath>

/// Both ends of an axis at once. QML can set them one by one only, and the chart would be laid out for each.
/// GUI thread.
class AxisRange : public QObject
{
    Q_OBJECT
    QML_ELEMENT
    QML_SINGLETON

public:
    using QObject::QObject;

    /// Does nothing if the ends are the wrong way round, or no numbers.
    Q_INVOKABLE void set(QValueAxis *axis, double min, double max) const
    {
        Q_ASSERT(onGuiThread());
        if (axis != nullptr && std::isfinite(min) && std::isfinite(max)) {
            const TraceSchedule::ViewMove move;
            axis->setRange(min, max);
        }
    }
};
