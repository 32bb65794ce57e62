#pragma once

#include "brovik/chart/trace_kind.h"

#include <QList>
#include <QPointF>

/// The points that a line is drawn through, and what a picture of a given width needs of them. All are
/// finite. One thread.
///
/// A line of changes is turned into steps. A change that comes while the recording runs is drawn on to
/// `tailX`, and the next change takes that tail away; a change that comes with a whole list has no tail.
class TracePoints
{
public:
    /// Far beyond the end of a usual run, seconds.
    static constexpr double tailX = 10000.0;
    /// So many points are drawn as they are.
    static constexpr qsizetype few = 3000;

    /// How a point comes: with a whole list, or alone while the recording runs.
    enum class Arrival { Stored, Live };

    void clear();
    void add(TraceKind kind, Arrival arrival, const QPointF &point);

    const QList<QPointF> &all() const { return m_points; }
    /// (0, 0) without points.
    QPointF last() const { return m_points.isEmpty() ? QPointF() : m_points.constLast(); }

    /// The points that give the same picture between two values of x, seconds, on so many columns: those in
    /// the window and one beyond it on either side; if they are more than `few`, in each column the lowest
    /// and the highest. Nothing if the window has no width, or one that is beyond all numbers.
    QList<QPointF> seen(double from, double to, int columns) const;

private:
    class Columns;

    /// So many points in a row, from a multiple of that number.
    static constexpr qsizetype blockSize = 16;
    struct Block
    {
        qsizetype lowest = 0;
        qsizetype highest = 0;
    };

    void addStoredActuator(const QPointF &point);
    void addLiveActuator(const QPointF &point);
    void addStoredStep(const QPointF &point);
    void addLiveStep(const QPointF &point);
    void append(const QPointF &point);
    void appendBlock();
    void removeLast();
    bool isOrdered() const { return m_orderedCount == m_points.size(); }
    QList<QPointF> reduced(qsizetype index, qsizetype end, Columns columns) const;

    QList<QPointF> m_points;
    QList<Block> m_blocks;        ///< All full ones.
    qsizetype m_orderedCount = 0; ///< So many points from the first have no smaller x than those before.
};
