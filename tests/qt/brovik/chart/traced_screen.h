#pragma once

#include "brovik/chart/chart_trace.h"
#include "point_by_point.h"

#include <QImage>
#include <QLineSeries>
#include <QQuickView>
#include <QValueAxis>

/// A chart on a screen with one line of one kind, and beside it the same line drawn point by point. GUI
/// thread.
class TracedScreen
{
public:
    explicit TracedScreen(TraceKind kind);

    /// Writes the point as a backend does, and shows it to the reference.
    void add(const QPointF &point);
    void replace(const ChartLine::Points &points);

    void look(double from, double to);

    /// Handles all that is queued.
    static void settle();

    ChartTrace &trace();
    QLineSeries &series();
    QValueAxis &time();
    QValueAxis &value();
    ChartLine::Points shown();

    /// Share of the line's pixels that have no ink next to them on the other picture, be it the traced one or
    /// the one drawn point by point. That is more than antialiasing can do.
    double difference();

    /// Number of the pixels that belong to the line, as it is traced and as it is drawn point by point.
    int inked() const;
    int expectedInk() const;

    ChartLine line{QStringLiteral("test"), nullptr};

private:
    QQuickView m_view;
    PointByPoint m_reference;
    QImage m_drawn;
    QImage m_expected;
};

/// A record of a kind, of so many points, half a second apart.
ChartLine::Points record(TraceKind kind, int count);
