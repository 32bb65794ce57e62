#pragma once

#include "brovik/chart/chart_line.h"
#include "brovik/chart/trace_item.h"
#include "brovik/chart/trace_points.h"

#include <QChart>
#include <QLineSeries>
#include <QObject>
#include <QPointer>
#include <QProperty>
#include <QQmlParserStatus>
#include <QValueAxis>
#include <QtQml/qqmlregistration.h>

#include <optional>

/// Draws one line of the chart in the place of the series that the page registered for it. GUI thread.
///
/// The points stay here; the series gets what the visible part of the time axis shows, in one piece and at
/// most once for all that happened in one turn of the event loop. So neither a point nor a move of the view
/// costs more in a long recording than in a short one. The series only keeps these points and is transparent:
/// the chart is not told of them, and `TraceItem` paints them with the pen of the series.
class ChartTrace : public QObject, public QQmlParserStatus
{
    Q_OBJECT
    QML_ELEMENT
    Q_INTERFACES(QQmlParserStatus)

    Q_PROPERTY(ChartLine *line READ line WRITE setLine NOTIFY lineChanged REQUIRED)
    Q_PROPERTY(TraceKinds::TraceKind kind READ kind WRITE setKind NOTIFY kindChanged REQUIRED)
    Q_PROPERTY(double maxY READ maxY NOTIFY maxYChanged)
    Q_PROPERTY(double lastX READ lastX NOTIFY lastXChanged)

public:
    static constexpr double lowestMaxY = 0.5;
    static constexpr double endOfNothing = 1.0;

    using QObject::QObject;
    ~ChartTrace() override;

    ChartLine *line() const { return m_line; }
    void setLine(ChartLine *line);
    TraceKind kind() const { return m_kind; }
    void setKind(TraceKind kind);

    /// Of a measured line: its highest value since the data was last replaced, at least 0.5.
    double maxY() const { return m_maxY; }
    /// x of the last drawn point, seconds; 0 without points.
    double lastX() const { return m_lastX; }

    /// Draws at once what is known, without moving the view.
    Q_INVOKABLE void redraw();

    void classBegin() override { m_complete = false; }
    void componentComplete() override;

Q_SIGNALS:
    void lineChanged();
    void kindChanged();
    void maxYChanged();
    void lastXChanged();
    /// A measured line was drawn up to this x, 1.0 if it is empty. The page moves its view.
    void pointsDrawn(double xLast);
    /// The series has other points.
    void drawn();

private:
    friend class TraceSchedule;
    using Points = ChartLine::Points;

    void start();
    void followSeries();
    void followAxes(QLineSeries &series);
    void followAxis(QPointer<QValueAxis> &followed, QValueAxis *axis);
    void requestForNews();
    void requestForView();
    void viewMoves();
    void pointCame(const QPointF &point);
    void wholeListCame();

    void catchUp();
    void readNews();
    void readWhole(const Points &points);
    void readLive(const Points &points);
    void take(const QPointF &point, TracePoints::Arrival arrival);
    void publish();
    void draw();
    Points picture(const QLineSeries &series) const;
    void fill(const Points &points);
    void paint();

    QPointer<ChartLine> m_line;
    TraceKind m_kind = TraceKind::Measured;
    bool m_complete = true;
    ChartLine::Mark m_mark;
    TracePoints m_points;
    double m_highest = lowestMaxY;
    double m_maxY = lowestMaxY;
    double m_lastX = 0.0;
    double m_endOfWhole = endOfNothing; ///< x of the last point that came with a whole list.
    std::optional<double> m_drawnTo;    ///< The x of the next pointsDrawn().
    bool m_wholeListCame = false;
    QPropertyNotifier m_seriesNotifier;
    QPointer<QLineSeries> m_series;
    QPointer<QValueAxis> m_time;
    QPointer<QValueAxis> m_value;
    QPointer<QChart> m_chart;
    QPointer<TraceItem> m_item;
};
