#include "brovik/chart/strokes.h"

#include <algorithm>
#include <cmath>

namespace {

/// A piece of a line.
struct Stroke
{
    double low() const { return std::min(from.y(), to.y()); }
    double high() const { return std::max(from.y(), to.y()); }

    bool isRepeatedBy(const Stroke &next, const QSizeF &ink) const
    {
        const bool isLevel = high() - low() < ink.height();
        return (isLevel ? goesOnTo(next) : isNear(next, ink.width())) &&
               std::abs(next.low() - low()) < ink.height() && std::abs(next.high() - high()) < ink.height();
    }

    bool goesOnTo(const Stroke &next) const
    {
        return from.x() <= to.x() && to.x() <= next.from.x() && next.from.x() <= next.to.x();
    }

    bool isNear(const Stroke &next, double reach) const
    {
        const auto [left, right] = std::minmax({from.x(), to.x(), next.from.x(), next.to.x()});
        return right - left < reach;
    }

    QPointF from;
    QPointF to;
};

} // namespace

QList<QPointF> withoutRepeats(const QList<QPointF> &points, const QSizeF &ink)
{
    QList<QPointF> result;
    result.reserve(points.size());
    for (qsizetype index = 0; index < points.size(); ++index) {
        // The last point stays, or the line would end too early.
        const bool mayRepeat = result.size() > 1 && index + 2 < points.size();
        if (mayRepeat && Stroke{result.end()[-2], result.constLast()}.isRepeatedBy(
                             {points[index], points[index + 1]}, ink)) {
            ++index;
        } else {
            result.append(points[index]);
        }
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
