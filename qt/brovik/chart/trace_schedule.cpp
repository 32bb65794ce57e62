#include "trace_schedule.h"

#include "chart_trace.h"

#include <utility>

TraceSchedule &TraceSchedule::instance()
{
    static TraceSchedule schedule;
    return schedule;
}

void TraceSchedule::request(ChartTrace *trace)
{
    m_waiting.removeOne(trace);
    m_waiting.append(trace);
    if (!std::exchange(m_posted, true)) {
        QMetaObject::invokeMethod(this, &TraceSchedule::run, Qt::QueuedConnection);
    }
}

void TraceSchedule::run()
{
    const Traces withNews = std::exchange(m_waiting, {});
    for (const QPointer<ChartTrace> &trace : withNews) {
        if (trace) {
            trace->catchUp();
        }
    }
    // Those that only follow the view have come to wait meanwhile.
    for (const QPointer<ChartTrace> &trace : withNews) {
        if (trace && !m_waiting.contains(trace)) {
            m_waiting.append(trace);
        }
    }
    for (const QPointer<ChartTrace> &trace : std::as_const(m_waiting)) {
        trace->draw();
    }
    m_waiting.clear();
    m_posted = false;
}
