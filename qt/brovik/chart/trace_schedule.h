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
    /// While one exists, a move of the view takes the lines away, and the end of the last one draws them for
    /// the view as it then is. Else the chart would draw the old points at their new places first.
    class ViewMove
    {
    public:
        ViewMove();
        ~ViewMove();
        Q_DISABLE_COPY_MOVE(ViewMove)
    };

    /// How the next run stands.
    enum class State {
        Idle,        ///< Nobody has anything to draw.
        Queued,      ///< It waits behind the events that were there before it.
        QueuedFirst, ///< It waits ahead of all other events. One that was `Queued` is overtaken, and does
                     ///< nothing.
        Running,     ///< What is requested now is drawn at its end, or in a further run that is queued then.
    };

    static TraceSchedule &instance();
    State state() const { return m_state; }
    bool isViewMoving() const { return m_viewMoves > 0; }

    /// Points came: behind all the other points that wait.
    void requestForNews(ChartTrace *trace);
    /// The view moved: before the chart paints, else it paints twice.
    void requestForView(ChartTrace *trace);

    bool event(QEvent *event) override;

private:
    using Traces = QList<QPointer<ChartTrace>>;

    void queue(State state);
    void run();
    void takeNews();
    void drawMoved();

    Traces m_withNews; ///< The one that got news last at the end.
    Traces m_moved;
    State m_state = State::Idle;
    int m_viewMoves = 0;
};
