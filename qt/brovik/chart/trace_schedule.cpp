#include "brovik/chart/trace_schedule.h"

#include "brovik/chart/chart_trace.h"
#include "shared/gui_thread.h"

#include <QCoreApplication>
#include <QEvent>

#include <algorithm>
#include <iterator>
#include <utility>

namespace {

const auto runEvent = static_cast<QEvent::Type>(QEvent::registerEventType());

} // namespace

TraceSchedule::ViewMove::ViewMove()
{
    ++instance().m_viewMoves;
}

TraceSchedule::ViewMove::~ViewMove()
{
    TraceSchedule &schedule = instance();
    if (--schedule.m_viewMoves == 0) {
        schedule.drawMoved();
    }
}

TraceSchedule &TraceSchedule::instance()
{
    Q_ASSERT(onGuiThread());
    static TraceSchedule schedule;
    return schedule;
}

void TraceSchedule::requestForNews(ChartTrace *trace)
{
    m_withNews.removeOne(trace);
    m_withNews.append(trace);
    if (m_state == State::Idle) {
        queue(State::Queued);
    }
}

void TraceSchedule::requestForView(ChartTrace *trace)
{
    if (!m_moved.contains(trace)) {
        m_moved.append(trace);
    }
    if (m_state == State::Idle || m_state == State::Queued) {
        queue(State::QueuedFirst);
    }
}

void TraceSchedule::queue(State state)
{
    m_state = state;
    const bool isFirst = state == State::QueuedFirst;
    QCoreApplication::postEvent(this, new QEvent(runEvent),
                                isFirst ? Qt::HighEventPriority : Qt::NormalEventPriority);
}

bool TraceSchedule::event(QEvent *event)
{
    if (event->type() != runEvent) {
        return QObject::event(event);
    }
    if (m_state == State::Queued || m_state == State::QueuedFirst) {
        run();
    }
    return true;
}

void TraceSchedule::run()
{
    m_state = State::Running;
    takeNews();
    m_state = State::Idle;
    if (!m_withNews.isEmpty() || !m_moved.isEmpty()) {
        queue(State::Queued);
    }
}

void TraceSchedule::takeNews()
{
    const ViewMove move;
    const Traces withNews = std::exchange(m_withNews, {});
    for (const QPointer<ChartTrace> &trace : withNews) {
        if (trace) {
            trace->catchUp();
        }
    }
    std::copy_if(withNews.begin(), withNews.end(), std::back_inserter(m_moved),
                 [this](const QPointer<ChartTrace> &trace) { return !m_moved.contains(trace); });
}

void TraceSchedule::drawMoved()
{
    const Traces moved = std::exchange(m_moved, {});
    for (const QPointer<ChartTrace> &trace : moved) {
        if (trace) {
            trace->draw();
        }
    }
}
