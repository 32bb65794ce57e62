// Lines of the chart with any points in any view: the series gets the points of a screen that appends each
// one, and a picture made of fewer points covers the same.
#include "fuzzing.h"

#include "brovik/chart/chart_trace.h"
#include "brovik/chart/trace_points.h"
#include "point_by_point.h"

#include <QCoreApplication>
#include <QLineSeries>

#include <algorithm>
#include <cmath>
#include <limits>
#include <map>
#include <utility>
#include <vector>

namespace {

using Points = QList<QPointF>;

// Enough for pictures that do not show each point: all of it is looked at point by point, column by column.
constexpr int mostAtOnce = 4000;
constexpr int mostColumns = 250;

double consumeWithin(FuzzedDataProvider &data, double most)
{
    const double number = consumeNumber(data);
    return std::isfinite(number) ? std::clamp(number, -most, most) : 0.0;
}

/// Some points, or so many that a picture does not show each.
Points consumePoints(FuzzedDataProvider &data, double from)
{
    if (data.ConsumeIntegralInRange(0, 3) != 0) {
        Points points;
        for (int count = data.ConsumeIntegralInRange(0, 8); count > 0; --count) {
            const double x = consumeNumber(data);
            points.append({data.ConsumeBool() ? x : from, consumeNumber(data)});
        }
        return points;
    }
    const int count = data.ConsumeIntegralInRange(1, mostAtOnce);
    const double step = data.PickValueInArray({0.0, 0.01, 0.1, 0.5, 1.0, 7.0, -0.3});
    const int period = data.ConsumeIntegralInRange(1, 97);
    const double height = consumeWithin(data, 1e6);
    Points points;
    points.reserve(count);
    for (int index = 0; index < count; ++index) {
        points.append({from + index * step, height * (index * 7919 % period) / period});
    }
    return points;
}

Points finite(const Points &points)
{
    Points result;
    std::copy_if(points.begin(), points.end(), std::back_inserter(result),
                 [](const QPointF &point) { return std::isfinite(point.x()) && std::isfinite(point.y()); });
    return result;
}

struct Range
{
    double low = INFINITY;
    double high = -INFINITY;

    void add(double value)
    {
        low = std::min(low, value);
        high = std::max(high, value);
    }
    void add(const Range &other)
    {
        low = std::min(low, other.low);
        high = std::max(high, other.high);
    }
    bool isEmpty() const { return low > high; }
    bool holds(const Range &other, double tolerance) const
    {
        return other.isEmpty() || (low - tolerance <= other.low && other.high <= high + tolerance);
    }
    bool operator==(const Range &) const = default;
};

struct View
{
    double from;
    double to;
    int columns;

    double width() const { return to - from; }
    bool holds(double x) const { return x >= from && x <= to; }
    int columnOf(double x) const { return static_cast<int>((x - from) * (columns / width())); }
};

/// Lowest and highest point of each column.
std::map<int, Range> extremes(const Points &points, const View &view)
{
    std::map<int, Range> result;
    for (const QPointF &point : points) {
        if (view.holds(point.x())) {
            result[view.columnOf(point.x())].add(point.y());
        }
    }
    return result;
}

/// Whether a piece of the line has no width, or one that is nothing once it is halved.
bool isUpright(const QPointF &from, const QPointF &to)
{
    return from.x() / 2 == to.x() / 2;
}

/// y of a piece of the line that is not upright at x. It does not overflow where the ends do not.
double heightAt(const QPointF &from, const QPointF &to, double x)
{
    const double share = (x / 2 - from.x() / 2) / (to.x() / 2 - from.x() / 2);
    return from.y() * (1 - share) + to.y() * share;
}

/// What the line covers of each column, its pieces between the points included.
std::vector<Range> coverage(const Points &points, const View &view)
{
    std::vector<Range> result(static_cast<std::size_t>(view.columns) + 1);
    for (qsizetype index = 1; index < points.size(); ++index) {
        const QPointF &from = points[index - 1];
        const QPointF &to = points[index];
        const double left = std::max(std::min(from.x(), to.x()), view.from);
        const double right = std::min(std::max(from.x(), to.x()), view.to);
        if (left > right) {
            continue;
        }
        for (int column = view.columnOf(left); column <= view.columnOf(right); ++column) {
            Range &covered = result[static_cast<std::size_t>(column)];
            if (isUpright(from, to)) {
                covered.add(from.y());
                covered.add(to.y());
            } else {
                const double width = view.width() / view.columns;
                covered.add(heightAt(from, to, std::clamp(view.from + column * width, left, right)));
                covered.add(heightAt(from, to, std::clamp(view.from + (column + 1) * width, left, right)));
            }
        }
    }
    return result;
}

/// A column with its neighbours: between two of them the line may be drawn another way.
Range around(const std::vector<Range> &covered, std::size_t column)
{
    Range result = covered[column];
    if (column > 0) {
        result.add(covered[column - 1]);
    }
    if (column + 1 < covered.size()) {
        result.add(covered[column + 1]);
    }
    return result;
}

void checkPicture(const TracePoints &trace, const View &view)
{
    const Points all = trace.all();
    const Points seen = trace.seen(view.from, view.to, view.columns);
    require(finite(seen).size() == seen.size(), "a picture is made of numbers", seen.size(), view.from,
            view.to);
    const bool isOrdered =
        std::is_sorted(all.begin(), all.end(),
                       [](const QPointF &left, const QPointF &right) { return left.x() < right.x(); });
    const qsizetype most = isOrdered ? 2 * qsizetype(view.columns) + 10 : all.size();
    require(seen.size() <= std::max(TracePoints::few, most), "points are bounded by the width", seen.size(),
            most);
    require(extremes(seen, view) == extremes(all, view), "each column keeps its extremes", view.from, view.to,
            view.columns);

    double largest = 0.0;
    for (const QPointF &point : all) {
        largest = std::max(largest, std::abs(point.y()));
    }
    const double tolerance = std::max(largest * 1e-6, std::numeric_limits<double>::min());
    const std::vector<Range> wanted = coverage(all, view);
    const std::vector<Range> shown = coverage(seen, view);
    for (std::size_t column = 0; column < wanted.size(); ++column) {
        require(around(wanted, column).holds(shown[column], tolerance), "nothing shows where no line is",
                column, shown[column].low, shown[column].high);
        require(around(shown, column).holds(wanted[column], tolerance), "the line shows wherever it is",
                column, wanted[column].low, wanted[column].high);
    }
}

/// Whether the numbers are such that the check itself is exact enough.
bool isComparable(const Points &points, const View &view)
{
    constexpr double large = 1e9;
    const auto isSmall = [](const QPointF &point) {
        return std::abs(point.x()) <= large && std::abs(point.y()) <= large;
    };
    return std::abs(view.from) <= large && std::abs(view.to) <= large && view.width() >= 1e-3 &&
           std::all_of(points.begin(), points.end(), isSmall);
}

View consumeView(FuzzedDataProvider &data)
{
    View view{.from = consumeNumber(data), .to = 0, .columns = data.ConsumeIntegralInRange(1, mostColumns)};
    view.to =
        data.ConsumeBool() ? consumeNumber(data) : view.from + data.ConsumeIntegralInRange(1, 20000) / 4.0;
    return view;
}

void look(FuzzedDataProvider &data, const TracePoints &trace)
{
    const View view = consumeView(data);
    const Points seen = trace.seen(view.from, view.to, view.columns);
    require(finite(seen).size() == seen.size(), "a picture is made of numbers", seen.size(), view.from,
            view.to);
    if (view.from < view.to && isComparable(trace.all(), view)) {
        checkPicture(trace, view);
    }
}

} // namespace

void fuzzingBegins() {}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *bytes, std::size_t size)
{
    FuzzedDataProvider data(bytes, size);
    const auto kind = data.PickValueInArray({TraceKind::Measured, TraceKind::Actuator, TraceKind::Step});
    QLineSeries series;
    ChartLine line(QStringLiteral("line"), nullptr);
    line.registerQmlLine(&series, nullptr);
    ChartTrace trace;
    trace.setKind(kind);
    trace.setLine(&line);
    PointByPoint reference(kind);
    TracePoints points;
    constexpr int mostSteps = 12;
    for (int step = 0; step < mostSteps && data.remaining_bytes() > 0; ++step) {
        const Points consumed = consumePoints(data, points.last().x());
        if (data.ConsumeIntegralInRange(0, 3) == 0) {
            if (line.data() == consumed) {
                continue; // nothing new: what came live stays so
            }
            line.setData(consumed);
            reference.replace(finite(consumed));
            points.clear();
            for (const QPointF &point : finite(consumed)) {
                points.add(kind, TracePoints::Arrival::Stored, point);
            }
        } else {
            for (const QPointF &point : consumed) {
                line.addPoint(point);
            }
            for (const QPointF &point : finite(consumed)) {
                reference.add(point);
                points.add(kind, TracePoints::Arrival::Live, point);
            }
        }
        if (data.ConsumeBool()) {
            trace.redraw();
        } else {
            QCoreApplication::processEvents();
        }
        require(points.all() == reference.points(), "the points are those of point by point",
                points.all().size());
        require(series.points() == reference.points(), "the series gets them", series.count());
        require(kind != TraceKind::Measured || trace.maxY() == reference.maxY(), "the highest value",
                trace.maxY());
        look(data, points);
    }
    return 0;
}
