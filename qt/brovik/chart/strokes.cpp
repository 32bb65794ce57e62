#include "brovik/chart/strokes.h"

#include <algorithm>
#include <cmath>
#include <optional>
#include <utility>

namespace {

/// A piece of a line that is drawn already.
class Stroke
{
public:
    Stroke(const QPointF &from, const QPointF &to, const QSizeF &ink)
        : m_from(from)
        , m_to(to)
        , m_ink(ink)
    {}

    bool isRepeatedBy(const QPointF &from, const QPointF &to) const
    {
        const auto [left, right] = std::minmax({m_from.x(), m_to.x(), from.x(), to.x()});
        const auto [low, high] = std::minmax({from.y(), to.y()});
        return right - left < m_ink.width() && std::abs(low - m_low) < m_ink.height() &&
               std::abs(high - m_high) < m_ink.height();
    }

    /// Whether the way to a point is covered by the way from here.
    bool reaches(const QPointF &point) const
    {
        return std::abs(point.x() - m_to.x()) < 2 * m_ink.width() && point.y() > m_low - m_ink.height() &&
               point.y() < m_high + m_ink.height();
    }

private:
    QPointF m_from;
    QPointF m_to;
    QSizeF m_ink;
    double m_low = std::min(m_from.y(), m_to.y());
    double m_high = std::max(m_from.y(), m_to.y());
};

} // namespace

QList<QPointF> withoutRepeats(const QList<QPointF> &points, const QSizeF &ink)
{
    QList<QPointF> result;
    result.reserve(points.size());
    const QPointF *leftOut = nullptr;
    for (qsizetype index = 0; index < points.size(); ++index) {
        const QPointF &point = points[index];
        const auto before = result.size() > 1 ? std::optional<Stroke>(std::in_place, result.end()[-2],
                                                                      result.constLast(), ink)
                                              : std::nullopt;
        // The last point stays, or the line would end too early.
        if (before && index + 2 < points.size() && before->isRepeatedBy(point, points[index + 1])) {
            leftOut = &points[++index];
            continue;
        }
        if (before && leftOut != nullptr && !before->reaches(point)) {
            result.append(*leftOut);
        }
        leftOut = nullptr;
        result.append(point);
    }
    return result;
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
