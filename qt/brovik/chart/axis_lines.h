#pragma once

#include "brovik/chart/raster.h"
#include "shared/gui_thread.h"

#include <QAbstractAxis>
#include <QObject>
#include <QPen>
#include <QtQml/qqmlregistration.h>

#include <algorithm>

/// How the lines of an axis are drawn. GUI thread.
class AxisLines : public QObject
{
    Q_OBJECT
    QML_ELEMENT
    QML_SINGLETON

public:
    using QObject::QObject;

    /// From now on, the lines from the chart's top to its bottom are drawn in pieces: the grid of a
    /// horizontal axis, a vertical axis itself. They look as before. The axis belongs to a chart.
    Q_INVOKABLE void cutSteep(QAbstractAxis *axis) const
    {
        Q_ASSERT(onGuiThread());
        if (axis == nullptr) {
            return;
        }
        if (axis->orientation() == Qt::Horizontal) {
            axis->setGridLinePen(cut(axis->gridLinePen()));
        } else {
            axis->setLinePen(cut(axis->linePen()));
        }
    }

private:
    /// Pixels. All pieces of a line of one pixel or less would be drawn together again.
    static constexpr double justAbovePixel = 1.001;

    static QPen cut(QPen pen)
    {
        pen.setWidthF(std::max(pen.widthF(), justAbovePixel));
        pen.setDashPattern({Raster::longestSteepLine / pen.widthF(), 0.0});
        pen.setCapStyle(Qt::FlatCap); // or the pieces would overlap
        return pen;
    }
};
