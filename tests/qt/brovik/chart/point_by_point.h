#pragma once

#include "brovik/chart/trace_kind.h"

#include <QList>
#include <QPointF>

/// What a screen would do that appends each point to its series: slow, and plain enough to be believed.
class PointByPoint
{
public:
    explicit PointByPoint(TraceKind kind);

    /// A point that comes while the recording runs.
    void add(const QPointF &point);
    /// A whole list that takes the place of all points.
    void replace(const QList<QPointF> &points);

    const QList<QPointF> &points() const { return m_points; }
    /// Highest y of a measured line, at least 0.5.
    double maxY() const { return m_maxY; }

private:
    /// y of the last point; 0 for an empty series.
    double lastY() const;
    void addMeasured(const QPointF &point);
    void addActuator(const QPointF &point);
    void addStoredActuator(const QPointF &point);
    void addStep(const QPointF &point);
    void addStored(const QPointF &point);

    TraceKind m_kind;
    QList<QPointF> m_points;
    double m_maxY = 0.5;
};
