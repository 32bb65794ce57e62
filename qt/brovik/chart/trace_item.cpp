#include "brovik/chart/trace_item.h"

#include "brovik/chart/raster.h"
#include "brovik/chart/strokes.h"
#include "shared/gui_thread.h"

#include <QPainter>

namespace {

/// Above all that a chart paints itself.
constexpr double topmost = 100.0;

/// Of the pen's width: a stroke that begins so much aside leaves no gap.
constexpr double inkOfPen = 0.75;

/// Pixels. A smaller difference between two heights does not show.
constexpr double sameHeight = 0.5;

} // namespace

TraceItem::TraceItem(QChart &chart)
    : QGraphicsObject(&chart)
{
    Q_ASSERT(onGuiThread());
    setZValue(topmost);
    setAcceptedMouseButtons(Qt::NoButton);
}

void TraceItem::show(const QList<QPointF> &points, const QPen &pen, const QRectF &plot)
{
    Q_ASSERT(onGuiThread());
    if (m_plot != plot) {
        prepareGeometryChange();
        m_plot = plot;
    }
    if (m_points != points || m_pen != pen) {
        m_points = points;
        m_pen = pen;
        update();
    }
}

void TraceItem::paint(QPainter *painter, const QStyleOptionGraphicsItem * /*option*/, QWidget * /*widget*/)
{
    painter->setClipRect(boundingRect());
    painter->translate(m_plot.topLeft());
    painter->setPen(m_pen);
    const QSizeF ink(m_pen.widthF() * inkOfPen, sameHeight);
    const QList<QPointF> ends = withShortRises(withoutRepeats(m_points, ink), Raster::longestSteepLine);
    for (qsizetype index = 1; index < ends.size(); ++index) {
        painter->drawLine(ends[index - 1], ends[index]);
    }
}
