#include "chart_trace.h"

void ChartTrace::setLine(ChartLine *line)
{
    if (m_line != line) {
        m_line = line;
        Q_EMIT lineChanged();
    }
}

void ChartTrace::setKind(Kind kind)
{
    if (m_kind != kind) {
        m_kind = kind;
        Q_EMIT kindChanged();
    }
}

void ChartTrace::redraw() {}

void ChartTrace::componentComplete() {}
