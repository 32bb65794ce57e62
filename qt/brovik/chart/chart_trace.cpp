#include "brovik/chart/chart_trace.h"

#include "brovik/chart/trace_schedule.h"
#include "shared/gui_thread.h"

#include <QSignalBlocker>

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

/// Lets `receiver` follow another object than before. Whether there is one that it has not followed.
template <typename Object, typename Receiver, typename Slot, typename... Signals>
bool followInstead(QPointer<Object> &followed, Object *object, Receiver *receiver, Slot slot,
                   Signals... signals_)
{
    if (followed == object) {
        return false;
    }
    if (followed) {
        QObject::disconnect(followed, nullptr, receiver, nullptr);
    }
    followed = object;
    if (object != nullptr) {
        (QObject::connect(object, signals_, receiver, slot), ...);
    }
    return object != nullptr;
}

} // namespace

ChartTrace::~ChartTrace()
{
    delete m_item;
}

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
    if (followInstead(m_series, m_line->series().value(), this, &ChartTrace::requestForView,
                      &QLineSeries::visibleChanged, &QLineSeries::penChanged)) {
        m_series->setOpacity(0.0);
    }
    requestForNews();
}

/// The signals of the axes come before the chart itself learns of the range.
void ChartTrace::followAxes(QLineSeries &series)
{
    followInstead(m_time, axisOf(series, Qt::Horizontal), this, &ChartTrace::viewMoves,
                  &QValueAxis::minChanged, &QValueAxis::maxChanged);
    followInstead(m_value, axisOf(series, Qt::Vertical), this, &ChartTrace::viewMoves,
                  &QValueAxis::minChanged, &QValueAxis::maxChanged);
    if (followInstead(m_chart, series.chart(), this, &ChartTrace::requestForView, &QChart::plotAreaChanged)) {
        delete m_item;
        m_item = new TraceItem(*m_chart);
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

/// The chart works out anew what a series has when the view moves.
void ChartTrace::viewMoves()
{
    Q_ASSERT(onGuiThread());
    if (TraceSchedule::instance().isViewMoving() && m_series) {
        fill({});
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
    if (m_series) {
        followAxes(*m_series);
        fill(picture(*m_series));
    }
    if (m_item) {
        paint();
    }
}

/// The chart would stroke the line for the mouse if it heard of its points.
void ChartTrace::fill(const Points &points)
{
    if (m_series->points() != points) {
        const QSignalBlocker unheard(m_series);
        m_series->replace(points);
        Q_EMIT drawn();
    }
}

void ChartTrace::paint()
{
    if (!m_series || !m_time || !m_value) {
        m_item->show({}, {}, {});
        return;
    }
    const QRectF plot = m_chart->plotArea();
    Points pixels = m_series->points();
    for (QPointF &point : pixels) {
        point = {(point.x() - m_time->min()) / (m_time->max() - m_time->min()) * plot.width(),
                 (m_value->max() - point.y()) / (m_value->max() - m_value->min()) * plot.height()};
    }
    m_item->show(pixels, m_series->pen(), plot);
}

ChartTrace::Points ChartTrace::picture(const QLineSeries &series) const
{
    if (!series.isVisible()) {
        return {};
    }
    if (!m_time || !m_value || !m_chart) {
        return m_points.all();
    }
    const QSizeF size = m_chart->plotArea().size();
    if (size.isEmpty() || m_time->min() >= m_time->max() || m_value->min() >= m_value->max()) {
        return {};
    }
    // A point beyond the edge shows if it is nearer than the pen is wide.
    const double penWidth = series.pen().widthF();
    const double beyond = (m_time->max() - m_time->min()) / size.width() * penWidth;
    const int columns = qCeil((size.width() + 2 * penWidth) * columnsPerPixel);
    return m_points.seen(m_time->min() - beyond, m_time->max() + beyond, columns);
}
