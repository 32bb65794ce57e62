#pragma once

#include <QList>
#include <QPointF>
#include <QSizeF>

/// The same line without strokes that a pen has drawn already: those between the same heights as the stroke
/// before, less than `ink` aside and above.
QList<QPointF> withoutRepeats(const QList<QPointF> &points, const QSizeF &ink);

/// The same line with points added so that none of its pieces rises or falls by more than this.
QList<QPointF> withShortRises(const QList<QPointF> &points, double rise);
