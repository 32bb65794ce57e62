#pragma once

#include "shared/shared_object.h"

#include <QList>
#include <QPointF>
#include <QProperty>
#include <QtQml/qqmlregistration.h>

#include <atomic>
#include <limits>

class QLineSeries;
class QValueAxis;

/// One line of the chart: all its points, complete and in the order in which they came. Lives on the GUI
/// thread; points are written from any Python thread under its own mutex, what the page registers on the GUI
/// thread alone.
class ChartLine : public SharedObject
{
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("The lines belong to Chart")
    Q_MOC_INCLUDE(<QLineSeries>)
    Q_MOC_INCLUDE(<QValueAxis>)

    Q_PROPERTY(QList<QPointF> data READ data NOTIFY dataChanged)
    Q_PROPERTY(QString name READ name NOTIFY nameChanged)

public:
    using Points = QList<QPointF>;

    /// How far somebody has read the line; a new one, that nothing of it has been read.
    struct Mark
    {
        quint64 replacements = std::numeric_limits<quint64>::max();
        qsizetype count = 0;
    };

    /// What the line has beyond a mark.
    struct News
    {
        bool replaced = false; ///< `whole` takes the place of all that was read before.
        Points whole;
        Points added; ///< Points that came singly, after `whole`.
        Mark mark;    ///< Where the next reading goes on.
    };

    ChartLine(const QString &name, QObject *parent);

    /// x in seconds since the start of the recording, y in the unit of the line.
    Points data() const { return read(m_data); }
    /// Replaces all points, unless they are the same.
    void setData(const Points &data);
    void clear() { setData({}); }
    /// Appends one point. Without a series to draw it in it says so in the log, and keeps the point.
    void addPoint(const QPointF &point);
    /// What the line has got since the mark was taken. Always consistent, while the signals that tell of it
    /// may come late.
    News newsSince(const Mark &mark) const;

    QString name() const { return read(m_name); }
    void setName(const QString &name);

    /// Tells in which series and against which axis the page draws the line.
    Q_INVOKABLE void registerQmlLine(QLineSeries *series, QValueAxis *axis);
    /// Null until the page has registered it, and when it is gone. GUI thread.
    const QProperty<QLineSeries *> &series() const;
    QValueAxis *axis() const;

Q_SIGNALS:
    /// The whole list was replaced.
    void dataChanged();
    void nameChanged();
    /// One point was appended.
    void pointAdded(const QPointF &point);

private:
    void forget(const QObject *gone);

    Points m_data;
    quint64 m_replacements = 0;
    qsizetype m_wholeCount = 0; ///< So many of the points came by the last replacement.
    QString m_name;
    QProperty<QLineSeries *> m_series{nullptr};
    QValueAxis *m_axis = nullptr;
    std::atomic<bool> m_drawable = false; ///< There is a series. For the threads that add points.
};
