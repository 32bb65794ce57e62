#include "brovik/chart/chart_trace.h"

#include "brovik/chart/raster.h"
#include "brovik/chart/trace_schedule.h"
#include "shared/gui_thread.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace {

/// A line two pixels wide needs more than one column for each, or steep parts come out too thin.
constexpr double columnsPerPixel = 2.0;

/// NaN and infinity have no place on the axes.
bool isDrawable(const QPointF &point)
{
    return std::isfinite(point.x()) && std::isfinite(point.y());
}

QValueAxis *axisOf(QLineSeries &series, Qt::Orientation orientation)
{
    for (QAbstractAxis *axis : series.attachedAxes()) {
        if (axis->orientation() == orientation) {
            return qobject_cast<QValueAxis *>(axis);
        }
    }
    return nullptr;
}

/// Lets `receiver` follow another object than before.
template <typename Object, typename Signal, typename Receiver, typename Slot>
void followInstead(QPointer<Object> &followed, Object *object, Signal signal, Receiver *receiver, Slot slot)
{
    if (followed == object) {
        return;
    }
    if (followed) {
        QObject::disconnect(followed, signal, receiver, slot);
    }
    followed = object;
    if (object != nullptr) {
        QObject::connect(object, signal, receiver, slot);
    }
}

} // namespace

void ChartTrace::setLine(ChartLine *line)
{
    Q_ASSERT(onGuiThread());
    if (m_line == line) {
        return;
    }
    if (m_line) {
        disconnect(m_line, nullptr, this, nullptr);
    }
    m_line = line;
    start();
    Q_EMIT lineChanged();
}

void ChartTrace::setKind(TraceKind kind)
{
    Q_ASSERT(onGuiThread());
    if (m_kind != kind) {
        m_kind = kind;
        start();
        Q_EMIT kindChanged();
    }
}

void ChartTrace::redraw()
{
    Q_ASSERT(onGuiThread());
    readNews();
    publish();
    draw();
}

void ChartTrace::componentComplete()
{
    Q_ASSERT(onGuiThread());
    m_complete = true;
    start();
}

/// A trace that starts later than the recording takes all points as one whole list.
void ChartTrace::start()
{
    if (!m_complete || !m_line) {
        return;
    }
    connect(m_line, &ChartLine::pointAdded, this, &ChartTrace::pointCame, Qt::UniqueConnection);
    connect(m_line, &ChartLine::dataChanged, this, &ChartTrace::wholeListCame, Qt::UniqueConnection);
    m_seriesNotifier = QPropertyNotifier(m_line->series(), [this] { followSeries(); });
    const ChartLine::News news = m_line->newsSince({});
    m_mark = news.mark;
    readWhole(news.whole + news.added);
    m_wholeListCame = !m_points.all().isEmpty();
    followSeries();
}

void ChartTrace::followSeries()
{
    Q_ASSERT(onGuiThread());
    followInstead(m_series, m_line->series().value(), &QLineSeries::visibleChanged, this,
                  &ChartTrace::requestForView);
    requestForNews();
}

void ChartTrace::followAxes(QLineSeries &series)
{
    followAxis(m_time, axisOf(series, Qt::Horizontal));
    followAxis(m_value, axisOf(series, Qt::Vertical));
    followInstead(m_chart, series.chart(), &QChart::plotAreaChanged, this, &ChartTrace::requestForView);
}

/// These signals come before the chart itself learns of the range.
void ChartTrace::followAxis(QPointer<QValueAxis> &followed, QValueAxis *axis)
{
    if (followed == axis) {
        return;
    }
    if (followed) {
        disconnect(followed, nullptr, this, nullptr);
    }
    followed = axis;
    if (axis != nullptr) {
        connect(axis, &QValueAxis::minChanged, this, &ChartTrace::viewMoves);
        connect(axis, &QValueAxis::maxChanged, this, &ChartTrace::viewMoves);
    }
}

void ChartTrace::requestForNews()
{
    TraceSchedule::instance().requestForNews(this);
}

void ChartTrace::requestForView()
{
    TraceSchedule::instance().requestForView(this);
}

void ChartTrace::viewMoves()
{
    Q_ASSERT(onGuiThread());
    if (TraceSchedule::instance().isViewMoving() && m_series && m_series->count() > 0) {
        m_series->replace(Points());
    }
    requestForView();
}

void ChartTrace::pointCame(const QPointF &point)
{
    Q_ASSERT(onGuiThread());
    if (isDrawable(point)) {
        m_wholeListCame = false;
        m_drawnTo = point.x();
        requestForNews();
    }
}

void ChartTrace::wholeListCame()
{
    Q_ASSERT(onGuiThread());
    m_wholeListCame = true;
    requestForNews();
}

void ChartTrace::catchUp()
{
    readNews();
    publish();
    if (std::exchange(m_wholeListCame, false)) {
        m_drawnTo = m_endOfWhole;
    }
    const std::optional<double> drawnTo = std::exchange(m_drawnTo, std::nullopt);
    if (drawnTo && m_kind == TraceKind::Measured) {
        Q_EMIT pointsDrawn(*drawnTo);
    }
}

/// What the signals carried may be older than the line: only the line itself is asked.
void ChartTrace::readNews()
{
    if (!m_line) {
        return;
    }
    const ChartLine::News news = m_line->newsSince(m_mark);
    m_mark = news.mark;
    if (news.replaced) {
        readWhole(news.whole);
    }
    readLive(news.added);
}

void ChartTrace::readWhole(const Points &points)
{
    m_points.clear();
    m_highest = lowestMaxY;
    m_endOfWhole = endOfNothing;
    for (const QPointF &point : points) {
        if (isDrawable(point)) {
            take(point, TracePoints::Arrival::Stored);
            m_endOfWhole = point.x();
        }
    }
}

void ChartTrace::readLive(const Points &points)
{
    for (const QPointF &point : points) {
        if (isDrawable(point)) {
            take(point, TracePoints::Arrival::Live);
        }
    }
}

void ChartTrace::take(const QPointF &point, TracePoints::Arrival arrival)
{
    m_points.add(m_kind, arrival, point);
    m_highest = std::max(m_highest, point.y());
}

void ChartTrace::publish()
{
    if (m_kind == TraceKind::Measured && std::exchange(m_maxY, m_highest) != m_highest) {
        Q_EMIT maxYChanged();
    }
    const double lastX = m_points.last().x();
    if (std::exchange(m_lastX, lastX) != lastX) {
        Q_EMIT lastXChanged();
    }
}

void ChartTrace::draw()
{
    if (!m_series) {
        return;
    }
    followAxes(*m_series);
    const Points points = picture(*m_series);
    if (m_series->points() != points) {
        m_series->replace(points);
    }
}

ChartTrace::Points ChartTrace::picture(const QLineSeries &series) const
{
    if (!series.isVisible()) {
        return {}; // the chart computes the path of a hidden series, too
    }
    if (!m_time || !m_value || !m_chart) {
        return m_points.all();
    }
    const QSizeF size = m_chart->plotArea().size();
    if (size.isEmpty() || m_time->min() >= m_time->max() || m_value->min() >= m_value->max()) {
        return {};
    }
    // A point beyond the edge shows if it is nearer than the pen is wide.
    const double beyond = (m_time->max() - m_time->min()) / size.width() * series.pen().widthF();
    const int columns = qCeil((size.width() + 2 * series.pen().widthF()) * columnsPerPixel);
    const double rise = (m_value->max() - m_value->min()) / size.height() * Raster::longestSteepLine;
    return withShortRises(m_points.seen(m_time->min() - beyond, m_time->max() + beyond, columns), rise);
}
