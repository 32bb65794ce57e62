#pragma once

#include "brovik/actuator/actuator_enums.h"
#include "brovik/chart/chart_line.h"
#include "brovik/chart/chart_meta_data.h"
#include "shared/gui_thread.h"
#include "shared/qml_records.h"
#include "shared/record_list.h"
#include "shared/shared_object.h"
#include "shared/shared_property.h"

#include <QJSValue>
#include <QProperty>
#include <QQmlListProperty>
#include <QStringList>
#include <QtQml/qqmlregistration.h>

#include <array>

// clang-format off
/// The lines, in the order of their numbers. Each: enumerator, its name in Python, QML name, Python name, documentation.
#define CHART_LINES(P) \
    P(LineCo2,   "Co2",   co2,   "co2",   "CO2: off, or at the height of its label.")           \
    P(LineHeiss, "Heiss", heiss, "heiss", "Hot water: off, or at the height of its label.")     \
    P(LineKalt,  "Kalt",  kalt,  "kalt",  "Cold water: off, or at the height of its label.")    \
    P(LineKanal, "Kanal", kanal, "kanal", "Drain: off, or at the height of its label.")         \
    P(LineKreis, "Kreis", kreis, "kreis", "Circulation: off, or at the height of its label.")   \
    P(LineLIn,   "LIn",   lIn,   "l_in",  "Lye inlet: off, or at the height of its label.")     \
    P(LineLOut,  "LOut",  lOut,  "l_out", "Lye outlet: off, or at the height of its label.")    \
    P(LineLuft,  "Luft",  luft,  "luft",  "Air: off, or at the height of its label.")           \
    P(LineLw,    "Lw",    lw,    "lw",    "Conductivity, mS/cm.")                               \
    P(LineP,     "P",     p,     "p",     "Pressure, bar.")                                     \
    P(LinePumpe, "Pumpe", pumpe, "pumpe", "Pump: off, or at the height of its label.")          \
    P(LineSIn,   "SIn",   sIn,   "s_in",  "Acid inlet: off, or at the height of its label.")    \
    P(LineSOut,  "SOut",  sOut,  "s_out", "Acid outlet: off, or at the height of its label.")   \
    P(LineSteam, "Steam", steam, "steam", "Steam: off, or at the height of its label.")         \
    P(LineStep,  "Step",  step,  "step",  "Number of the step.")

#define CHART_PROPERTIES(P) \
    P(bool,        active,        setActive,        "active",          false,                               "A recording is running.") \
    P(bool,        savable,       setSavable,       "savable",         false,                               "The chart in memory can be saved.") \
    P(QString,     currentName,   setCurrentName,   "current_name",    QStringLiteral("Kein Chart geladen"), "Title of the chart in memory.") \
    P(QStringList, assignedNames, setAssignedNames, "assigned_names",  QStringList(),                       "Names that saved charts already have.") \
    P(QStringList, stepNames,     setStepNames,     "step_names",      QStringList(),                       "Labels of the steps, the first at height 1.") \
    P(QStringList, actuatorNames, setActuatorNames, "actuator_names",  QStringList(),                       "Labels of the actuators, the first at height 1.")
// clang-format on

/// A line as a member of its owner.
#define CHART_LINE(lineEnum, pyEnum, name, ...) SHARED_PART(ChartLine, name, QStringLiteral(#name), this)

/// The chart in memory and the list of saved charts. Lives on the GUI thread; written from any Python thread
/// under its mutex. Each line, each record and the list of records have a mutex of their own. What keeps the
/// view of the screens belongs to the GUI thread alone and takes no lock.
class Chart : public SharedObject, public SharedSingleton<Chart>
{
    Q_OBJECT
    QML_ELEMENT
    QML_SINGLETON

    CHART_LINES(CHART_LINE)

    Q_PROPERTY(double shownSecs READ shownSecs WRITE setShownSecs)
    Q_PROPERTY(double prevXMin READ prevXMin WRITE setPrevXMin BINDABLE bindablePrevXMin)
    Q_PROPERTY(double prevXMax READ prevXMax WRITE setPrevXMax BINDABLE bindablePrevXMax)

    CHART_PROPERTIES(SHARED_PROPERTY)

    Q_PROPERTY(QQmlListProperty<ChartMetaData> metaDataList READ qmlMetaDataList NOTIFY metaDataListChanged)

public:
    enum ChartEnum : int { ChartInvalid, ChartSave, ChartLoad, ChartDelete, ChartRename, ChartHand };
    Q_ENUM(ChartEnum)

#define CHART_LINE_ENUMERATOR(lineEnum, ...) , lineEnum
    enum LineEnum : int { LineInvalid CHART_LINES(CHART_LINE_ENUMERATOR) };
#undef CHART_LINE_ENUMERATOR
    Q_ENUM(LineEnum)

    using MetaDataList = RecordList<ChartMetaData>;

    static constexpr std::size_t lineCount = LineStep;
    using Lines = std::array<ChartLine *, lineCount>;

    /// All lines, in the order of their numbers.
    const Lines &lines() const
    {
        return m_lines;
    }
    /// Null for LineInvalid and for a number that is no line.
    ChartLine *lineFromLineEnum(Chart::LineEnum line) const;
    /// Null for what has no line in the chart.
    ChartLine *lineFromActuatorEnum(ActuatorEnum actuator) const;
    /// Empties all lines.
    void clear();

    /// Width of the time axis while it follows the recording, seconds.
    double shownSecs() const
    {
        Q_ASSERT(onGuiThread());
        return m_shownSecs;
    }
    void setShownSecs(double secs)
    {
        Q_ASSERT(onGuiThread());
        m_shownSecs = secs;
    }
    /// The visible window of the time axis, seconds.
    double prevXMin() const
    {
        Q_ASSERT(onGuiThread());
        return m_prevXMin;
    }
    void setPrevXMin(double secs)
    {
        Q_ASSERT(onGuiThread());
        m_prevXMin = secs;
    }
    QBindable<double> bindablePrevXMin()
    {
        Q_ASSERT(onGuiThread());
        return &m_prevXMin;
    }
    double prevXMax() const
    {
        Q_ASSERT(onGuiThread());
        return m_prevXMax;
    }
    void setPrevXMax(double secs)
    {
        Q_ASSERT(onGuiThread());
        m_prevXMax = secs;
    }
    QBindable<double> bindablePrevXMax()
    {
        Q_ASSERT(onGuiThread());
        return &m_prevXMax;
    }

    /// The list itself. Who has changed it calls one of the two functions that follow.
    MetaDataList &metaDataList()
    {
        return m_metaDataList;
    }
    void setMetaDataList(const MetaDataList &list);
    void emitMetaDataListChanged();
    /// Sorts by name, whatever the case of the letters.
    void sortAndEmitMetaDataListChanged();
    /// The first record of exactly this name; null if there is none.
    MetaDataList::Reference findMetaDataByName(const QString &name) const;

    /// The list as copies, each made at the moment of reading. GUI thread.
    QQmlListProperty<ChartMetaData> qmlMetaDataList()
    {
        return m_qmlMetaDataList.property(this);
    }

Q_SIGNALS:
    void metaDataListChanged();
    /// A request of the operator.
    void toPy(Chart::ChartEnum action, const QJSValue &value);

private:
    friend class SharedSingleton<Chart>;
    Chart();

    double m_shownSecs = 60.0;
    QProperty<double> m_prevXMin{0.0};
    QProperty<double> m_prevXMax{60.0};
    MetaDataList m_metaDataList;
    QmlRecords<ChartMetaData> m_qmlMetaDataList{m_metaDataList, *this, &Chart::metaDataListChanged};
    const Lines m_lines;
};

#undef CHART_LINE
