#pragma once

#include <QList>
#include <QPointF>
#include <QSizeF>

/// The same line without strokes that a pen has drawn already: from the same heights to the same as the
/// stroke before, up to `ink` aside and above. A level line stays level however long it is.
QList<QPointF> withoutRepeats(const QList<QPointF> &points, const QSizeF &ink);

/// The same line with points added so that none of its pieces rises or falls by more than this.
QList<QPointF> withShortRises(const QList<QPointF> &points, double rise);
