#include "brovik/chart/trace_points.h"

#include <algorithm>
#include <cmath>
#include <optional>

namespace {

/// Where a point lies: in one of the window's columns, or beyond the window on one side. What is beyond on
/// one side is one column, far away from all others.
struct Column
{
    enum class Place { Before, Within, Behind };

    bool operator==(const Column &other) const = default;

    bool isNextTo(const Column &other) const
    {
        return place == Place::Within && other.place == Place::Within && std::abs(index - other.index) <= 1;
    }

    Place place;
    int index = 0; ///< Of the columns within the window.
};

} // namespace

/// Collapses each run of neighbouring points in one column to its extremes. Where the line comes from or goes
/// on to a column that is not the next one, the point at that end stays, too: the long way there shows.
class TracePoints::Columns
{
public:
    Columns(double from, double to, int count)
        : m_from(from)
        , m_to(to)
        , m_perSecond(count / (to - from))
    {}

    void add(const QPointF &point) { add(columnOf(point.x()), &point, &point, &point, &point); }

    /// Neighbouring points that do not go back, with the lowest and the highest of them.
    void add(const QPointF *first, const QPointF *lowest, const QPointF *highest, const QPointF *last)
    {
        const Column column = columnOf(first->x());
        if (columnOf(last->x()) == column) {
            add(column, first, lowest, highest, last);
        } else {
            std::for_each(first, last + 1, [this](const QPointF &point) { add(point); });
        }
    }

    QList<QPointF> result()
    {
        collapse(true);
        return std::move(m_result);
    }

private:
    /// Neighbouring points in one column. All points lie in one list: the order of their addresses is that of
    /// the line.
    struct Run
    {
        bool isCrowded() const { return last - first > 1; }

        Column column;
        bool keepsFirst;
        const QPointF *first;
        const QPointF *lowest;
        const QPointF *highest;
        const QPointF *last;
    };

    Column columnOf(double x) const
    {
        if (x < m_from) {
            return {Column::Place::Before};
        }
        return x > m_to ? Column{Column::Place::Behind}
                        : Column{Column::Place::Within, static_cast<int>((x - m_from) * m_perSecond)};
    }

    void add(const Column &column, const QPointF *first, const QPointF *lowest, const QPointF *highest,
             const QPointF *last)
    {
        if (!m_run || m_run->column != column) {
            begin(column, first);
        }
        Run &run = *m_run;
        run.lowest = lowest->y() < run.lowest->y() ? lowest : run.lowest;
        run.highest = highest->y() > run.highest->y() ? highest : run.highest;
        run.last = last;
    }

    void begin(const Column &column, const QPointF *first)
    {
        const bool isNext = m_run && column.isNextTo(m_run->column);
        collapse(!isNext);
        m_run = Run{column, !isNext, first, first, first, first};
    }

    void collapse(bool keepsLast)
    {
        if (!m_run) {
            return;
        }
        if (m_run->keepsFirst) {
            append(m_run->first);
        }
        const bool highestFirst = startsWithHighest(*m_run);
        append(highestFirst ? m_run->highest : m_run->lowest);
        append(highestFirst ? m_run->lowest : m_run->highest);
        if (keepsLast) {
            append(m_run->last);
        }
    }

    /// In a crowded column the order does not show; the shorter way to the extremes costs less to draw.
    bool startsWithHighest(const Run &run) const
    {
        if (!run.isCrowded()) {
            return run.highest < run.lowest;
        }
        const double present = m_result.isEmpty() ? run.first->y() : m_result.constLast().y();
        return std::abs(run.highest->y() - present) < std::abs(run.lowest->y() - present);
    }

    void append(const QPointF *point)
    {
        if (m_appended != point) {
            m_appended = point;
            m_result.append(*point);
        }
    }

    const double m_from;
    const double m_to;
    const double m_perSecond;
    std::optional<Run> m_run; ///< The one that goes on; none before the first point.
    const QPointF *m_appended = nullptr;
    QList<QPointF> m_result;
};

namespace {

/// Whether columns of that width can be counted.
bool hasColumns(double from, double to, int columns)
{
    return from < to && std::isfinite(to - from) && std::isfinite(columns / (to - from));
}

/// Moves an end of the line that lies far outside closer, along the line: the paths of the chart cannot be
/// longer than an int.
void pullCloser(QPointF &end, const QPointF &next, double nearest, double farthest)
{
    const double x = std::clamp(end.x(), nearest, farthest);
    // Halves, since the distance of two numbers may be too large for one.
    const double halfWay = next.x() / 2 - end.x() / 2;
    if (x != end.x() && halfWay != 0.0) {
        // A line that goes back does not pass x.
        const double share = (x / 2 - end.x() / 2) / halfWay;
        end = {x, std::lerp(end.y(), next.y(), std::clamp(share, 0.0, 1.0))};
    }
}

} // namespace

void TracePoints::clear()
{
    m_points = {};
    m_blocks = {};
    m_orderedCount = 0;
}

void TracePoints::append(const QPointF &point)
{
    if (isOrdered() && (m_points.isEmpty() || point.x() >= m_points.constLast().x())) {
        ++m_orderedCount;
    }
    m_points.append(point);
    if (m_points.size() % blockSize == 0) {
        appendBlock();
    }
}

void TracePoints::appendBlock()
{
    const auto [lowest, highest] =
        std::minmax_element(m_points.cend() - blockSize, m_points.cend(),
                            [](const QPointF &left, const QPointF &right) { return left.y() < right.y(); });
    m_blocks.append({lowest - m_points.cbegin(), highest - m_points.cbegin()});
}

void TracePoints::removeLast()
{
    m_points.removeLast();
    m_blocks.resize(m_points.size() / blockSize);
    m_orderedCount = std::min(m_orderedCount, m_points.size());
}

void TracePoints::add(TraceKind kind, Arrival arrival, const QPointF &point)
{
    const bool isLive = arrival == Arrival::Live;
    switch (kind) {
    case TraceKind::Measured:
        return append(point);
    case TraceKind::Actuator:
        return isLive ? addLiveActuator(point) : addStoredActuator(point);
    case TraceKind::Step:
        return isLive ? addLiveStep(point) : addStoredStep(point);
    }
}

void TracePoints::addStoredActuator(const QPointF &point)
{
    const double lastY = last().y();
    if (lastY == point.y()) {
        append(point);
    } else if (lastY != 0.0) {
        append({point.x(), lastY});
        append({point.x(), 0.0});
    } else {
        append({point.x(), 0.0});
        append(point);
    }
}

/// An output that is on goes off, whatever the height of the point.
void TracePoints::addLiveActuator(const QPointF &point)
{
    const double lastY = last().y();
    if (lastY != 0.0) {
        removeLast();
        append({point.x(), lastY});
        append({point.x(), 0.0});
    } else {
        append({point.x(), 0.0});
        append(point);
        append({tailX, point.y()});
    }
}

void TracePoints::addStoredStep(const QPointF &point)
{
    append({point.x(), last().y()});
    append(point);
}

void TracePoints::addLiveStep(const QPointF &point)
{
    if (!m_points.isEmpty()) {
        removeLast();
    }
    append({point.x(), last().y()});
    append(point);
    append({tailX, point.y()});
}

QList<QPointF> TracePoints::seen(double from, double to, int columns) const
{
    if (!hasColumns(from, to, columns)) {
        return {};
    }
    auto first = m_points.begin();
    auto end = m_points.end();
    if (isOrdered()) {
        first =
            std::lower_bound(first, end, from, [](const QPointF &point, double x) { return point.x() < x; });
        first -= first != m_points.begin() ? 1 : 0;
        end = std::upper_bound(first, end, to, [](double x, const QPointF &point) { return x < point.x(); });
        end += end != m_points.end() ? 1 : 0;
    }
    const bool isSmall = end - first <= few;
    QList<QPointF> points =
        isSmall ? QList<QPointF>(first, end)
                : reduced(first - m_points.begin(), end - m_points.begin(), Columns(from, to, columns));
    if (points.size() > 1) {
        const double width = to - from;
        pullCloser(points.first(), points.at(1), from - width, to + width);
        pullCloser(points.last(), points.at(points.size() - 2), from - width, to + width);
    }
    return points;
}

/// One look at a block instead of each of its points: a long recording has hundreds of thousands.
QList<QPointF> TracePoints::reduced(qsizetype index, qsizetype end, Columns columns) const
{
    while (index < end) {
        const QPointF *point = &m_points[index];
        if (isOrdered() && index % blockSize == 0 && index + blockSize <= end) {
            const Block &block = m_blocks[index / blockSize];
            columns.add(point, &m_points[block.lowest], &m_points[block.highest], point + blockSize - 1);
            index += blockSize;
        } else {
            columns.add(*point);
            ++index;
        }
    }
    return columns.result();
}
