#include "brovik/chart/trace_points.h"

#include <algorithm>
#include <cmath>
#include <limits>

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
        const double column = columnOf(first->x());
        if (columnOf(last->x()) == column) {
            add(column, first, lowest, highest, last);
        } else {
            std::for_each(first, last + 1, [this](const QPointF &point) { add(point); });
        }
    }

    QList<QPointF> result()
    {
        flush(true);
        return std::move(m_result);
    }

private:
    /// What is beyond the window on one side is one column, far away.
    double columnOf(double x) const
    {
        constexpr double farAway = std::numeric_limits<double>::infinity();
        if (x < m_from) {
            return -farAway;
        }
        return x > m_to ? farAway : static_cast<int>((x - m_from) * m_perSecond);
    }

    void add(double column, const QPointF *first, const QPointF *lowest, const QPointF *highest,
             const QPointF *last)
    {
        if (column != m_column) {
            const bool isNext = std::abs(column - m_column) <= 1.0;
            flush(!isNext);
            m_column = column;
            m_keepsFirst = !isNext;
            m_first = m_lowest = m_highest = first;
        }
        m_lowest = lowest->y() < m_lowest->y() ? lowest : m_lowest;
        m_highest = highest->y() > m_highest->y() ? highest : m_highest;
        m_last = last;
    }

    /// In a crowded column the order of the extremes does not show; the shorter way to them costs less to
    /// draw.
    void flush(bool keepsLast)
    {
        if (m_first == nullptr) {
            return;
        }
        if (m_keepsFirst) {
            append(m_first);
        }
        const bool highestFirst = isCrowded() ? isNearer(m_highest, m_lowest) : m_highest < m_lowest;
        append(highestFirst ? m_highest : m_lowest);
        append(highestFirst ? m_lowest : m_highest);
        if (keepsLast) {
            append(m_last);
        }
    }

    /// The points lie in one list: the order of their addresses is that of the line.
    bool isCrowded() const { return m_last - m_first > 1; }

    bool isNearer(const QPointF *one, const QPointF *other) const
    {
        const double present = m_result.isEmpty() ? m_first->y() : m_result.constLast().y();
        return std::abs(one->y() - present) < std::abs(other->y() - present);
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
    double m_column = std::numeric_limits<double>::quiet_NaN();
    bool m_keepsFirst = false;
    const QPointF *m_first = nullptr;
    const QPointF *m_lowest = nullptr;
    const QPointF *m_highest = nullptr;
    const QPointF *m_last = nullptr;
    const QPointF *m_appended = nullptr;
    QList<QPointF> m_result;
};

namespace {

/// Moves an end of the line that lies far outside closer, along the line: the paths of the chart cannot be
/// longer than an int.
void pullCloser(QPointF &end, const QPointF &next, double nearest, double farthest)
{
    const double x = std::clamp(end.x(), nearest, farthest);
    if (x != end.x() && next.x() != end.x()) {
        end = {x, end.y() + (next.y() - end.y()) * ((x - end.x()) / (next.x() - end.x()))};
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

/// What was on goes off, whatever the height of the point.
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

QList<QPointF> withShortRises(const QList<QPointF> &points, double rise)
{
    constexpr double mostPieces = 100.0;
    QList<QPointF> result;
    for (const QPointF &point : points) {
        const QPointF from = result.isEmpty() ? point : result.constLast();
        const double pieces = std::min(std::ceil(std::abs(point.y() - from.y()) / rise), mostPieces);
        for (double piece = 1.0; piece < pieces; piece += 1.0) {
            result.append(from + (point - from) * (piece / pieces));
        }
        result.append(point);
    }
    return result;
}
