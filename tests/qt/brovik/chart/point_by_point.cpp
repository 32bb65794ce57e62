#include "point_by_point.h"

PointByPoint::PointByPoint(TraceKind kind)
    : m_kind(kind)
{}

double PointByPoint::lastY() const
{
    return m_points.isEmpty() ? 0.0 : m_points.last().y();
}

void PointByPoint::add(const QPointF &point)
{
    switch (m_kind) {
    case TraceKind::Measured:
        return addMeasured(point);
    case TraceKind::Actuator:
        return addActuator(point);
    case TraceKind::Step:
        return addStep(point);
    }
}

void PointByPoint::replace(const QList<QPointF> &points)
{
    m_points.clear();
    m_maxY = 0.5;
    for (const QPointF &point : points) {
        addStored(point);
    }
}

void PointByPoint::addStored(const QPointF &point)
{
    switch (m_kind) {
    case TraceKind::Measured:
        return addMeasured(point);
    case TraceKind::Actuator:
        return addStoredActuator(point);
    case TraceKind::Step:
        m_points.append({point.x(), lastY()});
        m_points.append({point.x(), point.y()});
    }
}

void PointByPoint::addMeasured(const QPointF &point)
{
    if (point.y() > m_maxY) {
        m_maxY = point.y();
    }
    m_points.append(point);
}

void PointByPoint::addActuator(const QPointF &point)
{
    const double last = lastY();
    if (last != 0) {
        m_points.removeLast();
        m_points.append({point.x(), last});
        m_points.append({point.x(), 0.0});
    } else {
        m_points.append({point.x(), 0.0});
        m_points.append({point.x(), point.y()});
        m_points.append({10000, point.y()});
    }
}

void PointByPoint::addStoredActuator(const QPointF &point)
{
    const double last = lastY();
    if (last == point.y()) {
        m_points.append({point.x(), point.y()});
    } else if (last != 0) {
        m_points.append({point.x(), last});
        m_points.append({point.x(), 0.0});
    } else {
        m_points.append({point.x(), 0.0});
        m_points.append({point.x(), point.y()});
    }
}

void PointByPoint::addStep(const QPointF &point)
{
    double last = 0;
    if (!m_points.isEmpty()) {
        m_points.removeLast();
        last = lastY();
    }
    m_points.append({point.x(), last});
    m_points.append({point.x(), point.y()});
    m_points.append({10000, point.y()});
}
