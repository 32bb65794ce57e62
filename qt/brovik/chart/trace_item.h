#pragma once

#include <QChart>
#include <QGraphicsObject>
#include <QList>
#include <QPen>
#include <QPointF>
#include <QRectF>

/// Paints a line over the plot of a chart, as the chart itself would, but without the outline that it makes
/// of each line for the mouse: that takes longer than all else. GUI thread; belongs to the chart.
class TraceItem : public QGraphicsObject
{
public:
    explicit TraceItem(QChart &chart);

    /// Shows the line through these points, pixels from the plot's upper left corner.
    void show(const QList<QPointF> &points, const QPen &pen, const QRectF &plot);

    /// The plot to whole pixels, or a line along its edge would be thinner.
    QRectF boundingRect() const override { return m_plot.toAlignedRect(); }
    void paint(QPainter *painter, const QStyleOptionGraphicsItem *option, QWidget *widget) override;

private:
    QList<QPointF> m_points;
    QPen m_pen;
    QRectF m_plot; ///< In the chart.
};
