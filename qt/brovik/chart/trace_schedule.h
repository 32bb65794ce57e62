#pragma once

#include <QList>
#include <QObject>
#include <QPointer>

class ChartTrace;

/// Lets all traces that have something to draw do so together, once per turn of the event loop. GUI thread.
///
/// First each takes in its news and announces them, which moves the view, the last one that got news last: it
/// is its point that the view ends at. Then each draws, for the view as it then is.
class TraceSchedule : public QObject
{
    Q_OBJECT

public:
    static TraceSchedule &instance();

    void request(ChartTrace *trace);

private:
    using Traces = QList<QPointer<ChartTrace>>;

    void run();

    Traces m_waiting;
    bool m_posted = false;
};
