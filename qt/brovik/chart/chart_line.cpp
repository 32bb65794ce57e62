#include "brovik/chart/chart_line.h"

#include "shared/gui_thread.h"

#include <QLineSeries>
#include <QValueAxis>

ChartLine::ChartLine(const QString &name, QObject *parent)
    : SharedObject(parent)
    , m_name(name)
{
    QJSEngine::setObjectOwnership(this, QJSEngine::CppOwnership);
}

void ChartLine::setData(const Points &data)
{
    const Hold hold(*this);
    if (isSame(m_data, data)) {
        return;
    }
    m_data = data;
    m_wholeCount = m_data.size();
    ++m_replacements;
    announce(*this, &ChartLine::dataChanged);
}

void ChartLine::addPoint(const QPointF &point)
{
    const Hold hold(*this);
    m_data.append(point);
    announce(*this, &ChartLine::pointAdded, point);
    if (!m_drawable) {
        criticalStream() << "Der ChartLine" << m_name
                         << "wurde noch keine LineSeries zugeordnet, daher kann der Punkt" << point
                         << "nicht hinzugefügt werden";
    }
}

ChartLine::News ChartLine::newsSince(const Mark &mark) const
{
    const SharedLocker lock(&m_mutex);
    const Mark now{m_replacements, m_data.size()};
    if (mark.replacements == m_replacements) {
        return {false, {}, m_data.sliced(mark.count), now};
    }
    return {true, m_data.first(m_wholeCount), m_data.sliced(m_wholeCount), now};
}

void ChartLine::setName(const QString &name)
{
    change(m_name, name, &ChartLine::nameChanged);
}

void ChartLine::registerQmlLine(QLineSeries *series, QValueAxis *axis)
{
    Q_ASSERT(onGuiThread());
    for (QObject *object : {static_cast<QObject *>(series), static_cast<QObject *>(axis)}) {
        if (object != nullptr) {
            connect(object, &QObject::destroyed, this, &ChartLine::forget, Qt::UniqueConnection);
        }
    }
    m_axis = axis;
    m_drawable = series != nullptr;
    m_series = series;
}

const QProperty<QLineSeries *> &ChartLine::series() const
{
    Q_ASSERT(onGuiThread());
    return m_series;
}

QValueAxis *ChartLine::axis() const
{
    Q_ASSERT(onGuiThread());
    return m_axis;
}

void ChartLine::forget(const QObject *gone)
{
    Q_ASSERT(onGuiThread());
    if (m_axis == gone) {
        m_axis = nullptr;
    }
    if (m_series.value() == gone) {
        m_drawable = false;
        m_series = nullptr;
    }
}
