#include "brovik/chart/trace_schedule.h"

#include "brovik/chart/chart_trace.h"

#include <QCoreApplication>
#include <QEvent>

#include <algorithm>
#include <iterator>
#include <limits>
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
    static TraceSchedule schedule;
    return schedule;
}

void TraceSchedule::requestForNews(ChartTrace *trace)
{
    m_withNews.removeOne(trace);
    m_withNews.append(trace);
    post(Qt::NormalEventPriority);
}

void TraceSchedule::requestForView(ChartTrace *trace)
{
    if (!m_moved.contains(trace)) {
        m_moved.append(trace);
    }
    post(Qt::HighEventPriority);
}

void TraceSchedule::post(int priority)
{
    if (m_posted < priority) {
        m_posted = priority;
        QCoreApplication::postEvent(this, new QEvent(runEvent), priority);
    }
}

bool TraceSchedule::event(QEvent *event)
{
    if (event->type() != runEvent) {
        return QObject::event(event);
    }
    run();
    return true;
}

void TraceSchedule::run()
{
    m_posted = std::numeric_limits<int>::max(); // those that the news move draw at the end of this
    takeNews();
    m_posted = notPosted;
    if (!m_withNews.isEmpty() || !m_moved.isEmpty()) {
        post(Qt::NormalEventPriority);
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
