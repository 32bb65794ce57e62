// When the traces are drawn: the states of the schedule, and what each lets happen in which order.

#include "brovik/chart/chart_trace.h"
#include "brovik/chart/trace_schedule.h"

#include <gmock/gmock.h>

#include <QCoreApplication>
#include <QLineSeries>
#include <QValueAxis>

#include <string>
#include <vector>

using testing::ElementsAre;
using State = TraceSchedule::State;

namespace {

using Log = std::vector<std::string>;

State state()
{
    return TraceSchedule::instance().state();
}

/// A measured line with its series. Writes to the log when it has taken in points, and when it is drawn
/// empty.
class TracedLine
{
public:
    TracedLine(const char *name, Log &log)
    {
        line.registerQmlLine(&series, &axis);
        trace.setLine(&line);
        const std::string text(name);
        QObject::connect(&trace, &ChartTrace::pointsDrawn, &trace,
                         [=, &log] { log.push_back(text + " takes"); });
        QObject::connect(&trace, &ChartTrace::drawn, &trace, [=, this, &log] {
            if (series.points().isEmpty()) {
                log.push_back(text + " empties");
            }
        });
    }

    /// News.
    void add(double x) { line.addPoint({x, 1}); }
    /// Asks to be drawn, since a hidden series is empty.
    void hide() { series.setVisible(false); }

    ChartLine line{QStringLiteral("test"), nullptr};
    QLineSeries series;
    QValueAxis axis;
    ChartTrace trace;
};

class Schedule : public testing::Test
{
protected:
    Schedule()
    {
        one.add(1);
        other.add(1);
        QCoreApplication::processEvents();
        log.clear();
    }

    ~Schedule() override { QCoreApplication::processEvents(); }

    /// An event of somebody else.
    void post(const char *name)
    {
        QMetaObject::invokeMethod(
            &context, [this, name] { log.emplace_back(name); }, Qt::QueuedConnection);
    }

    Log log;
    QObject context;
    TracedLine one{"one", log};
    TracedLine other{"other", log};
    TraceSchedule &schedule = TraceSchedule::instance();
};

} // namespace

TEST_F(Schedule, IsIdleUntilAnybodyAsks)
{
    EXPECT_EQ(state(), State::Idle);
    schedule.requestForNews(&one.trace);
    EXPECT_EQ(state(), State::Queued);
    QCoreApplication::processEvents();
    EXPECT_EQ(state(), State::Idle);
    schedule.requestForView(&one.trace);
    EXPECT_EQ(state(), State::QueuedFirst);
    QCoreApplication::processEvents();
    EXPECT_EQ(state(), State::Idle);
}

TEST_F(Schedule, OnlyAMovedViewPutsAQueuedRunFirst)
{
    schedule.requestForNews(&one.trace);
    schedule.requestForNews(&other.trace);
    EXPECT_EQ(state(), State::Queued);
    schedule.requestForView(&one.trace);
    EXPECT_EQ(state(), State::QueuedFirst);
    schedule.requestForNews(&one.trace);
    EXPECT_EQ(state(), State::QueuedFirst);
    schedule.requestForView(&other.trace);
    EXPECT_EQ(state(), State::QueuedFirst);
}

TEST_F(Schedule, NewsWaitsBehindTheOtherEvents)
{
    post("before");
    one.add(2);
    post("after");
    QCoreApplication::processEvents();
    EXPECT_THAT(log, ElementsAre("before", "one takes", "after"));
}

TEST_F(Schedule, AMovedViewIsDrawnAheadOfTheOtherEvents)
{
    post("before");
    one.hide();
    QCoreApplication::processEvents();
    EXPECT_THAT(log, ElementsAre("one empties", "before"));
}

TEST_F(Schedule, AMovedViewTakesTheNewsAlong)
{
    post("before");
    one.add(2);
    other.hide();
    QCoreApplication::processEvents();
    EXPECT_THAT(log, ElementsAre("one takes", "other empties", "before")) << "the overtaken run does nothing";
    EXPECT_EQ(state(), State::Idle);
}

TEST_F(Schedule, NewsDuringARunWaitsForAnother)
{
    std::vector<State> states;
    QObject::connect(&one.trace, &ChartTrace::pointsDrawn, &context, [&] {
        states.push_back(state());
        other.add(2);
        states.push_back(state());
    });
    one.add(2);
    post("after");
    QCoreApplication::processEvents();
    EXPECT_THAT(states, ElementsAre(State::Running, State::Running));
    EXPECT_EQ(state(), State::Queued);
    EXPECT_THAT(log, ElementsAre("one takes", "after"));
    QCoreApplication::processEvents();
    EXPECT_THAT(log, ElementsAre("one takes", "after", "other takes"));
    EXPECT_EQ(state(), State::Idle);
}

TEST_F(Schedule, AViewThatMovesDuringARunIsDrawnAtItsEnd)
{
    std::vector<State> states;
    QObject::connect(&one.trace, &ChartTrace::pointsDrawn, &context, [&] {
        other.hide();
        states.push_back(state());
    });
    one.add(2);
    post("after");
    QCoreApplication::processEvents();
    EXPECT_THAT(states, ElementsAre(State::Running));
    EXPECT_THAT(log, ElementsAre("one takes", "other empties", "after"));
}

TEST_F(Schedule, TheEndOfAMoveDrawsWithoutARun)
{
    {
        const TraceSchedule::ViewMove outer;
        {
            const TraceSchedule::ViewMove inner;
            one.hide();
        }
        EXPECT_TRUE(schedule.isViewMoving());
        EXPECT_THAT(log, ElementsAre()) << "the view still moves";
    }
    EXPECT_FALSE(schedule.isViewMoving());
    EXPECT_THAT(log, ElementsAre("one empties"));
    EXPECT_EQ(state(), State::QueuedFirst) << "it finds nothing to do";
    QCoreApplication::processEvents();
    EXPECT_THAT(log, ElementsAre("one empties"));
}
