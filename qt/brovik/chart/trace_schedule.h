#pragma once

#include <QList>
#include <QObject>
#include <QPointer>

class ChartTrace;

/// Lets all traces that have something to draw do so together, once per turn of the event loop. GUI thread.
///
/// First each takes in its news and announces them, which moves the view, the one that got news last at the
/// end: it is its point that the view is to end at. Then each draws, for the view as it then is.
class TraceSchedule : public QObject
{
    Q_OBJECT

public:
    static TraceSchedule &instance();

    /// Points came: behind all the other points that wait.
    void requestForNews(ChartTrace *trace);
    /// The view moved: before the chart paints, else it paints twice.
    void requestForView(ChartTrace *trace);

    bool event(QEvent *event) override;

private:
    using Traces = QList<QPointer<ChartTrace>>;
    static constexpr int notPosted = Qt::LowEventPriority;

    void post(int priority);
    void run();

    Traces m_withNews; ///< The one that got news last at the end.
    Traces m_moved;
    int m_posted = notPosted; ///< The highest priority with which a run is posted.
};
