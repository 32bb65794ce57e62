#include "brovik/chart/chart.h"

#include <algorithm>
#include <array>
#include <utility>

namespace {

/// The lines of the outputs; the heater has none.
constexpr std::pair<ActuatorEnum, Chart::LineEnum> linesOfActuators[] = {
    {ActuatorEnums::MvLaugeIn, Chart::LineLIn},   {ActuatorEnums::MvSaureIn, Chart::LineSIn},
    {ActuatorEnums::MvKalt, Chart::LineKalt},     {ActuatorEnums::MvHeiss, Chart::LineHeiss},
    {ActuatorEnums::MvKreis, Chart::LineKreis},   {ActuatorEnums::MvSaureOut, Chart::LineSOut},
    {ActuatorEnums::MvLaugeOut, Chart::LineLOut}, {ActuatorEnums::MvLuft, Chart::LineLuft},
    {ActuatorEnums::MvCo2, Chart::LineCo2},       {ActuatorEnums::MvKanal, Chart::LineKanal},
    {ActuatorEnums::Pumpe, Chart::LinePumpe},     {ActuatorEnums::MvSteam, Chart::LineSteam},
};

} // namespace

#define CHART_LINE_POINTER(lineEnum, pyEnum, name, ...) &m_##name,
Chart::Chart()
    : m_lines{CHART_LINES(CHART_LINE_POINTER)}
{}
#undef CHART_LINE_POINTER

ChartLine *Chart::lineFromLineEnum(Chart::LineEnum line) const
{
    return line > LineInvalid && line <= LineStep ? m_lines.at(static_cast<std::size_t>(line) - 1) : nullptr;
}

ChartLine *Chart::lineFromActuatorEnum(ActuatorEnum actuator) const
{
    const auto *const found = std::find_if(std::begin(linesOfActuators), std::end(linesOfActuators),
                                           [actuator](const auto &entry) { return entry.first == actuator; });
    return found != std::end(linesOfActuators) ? lineFromLineEnum(found->second) : nullptr;
}

void Chart::clear()
{
    for (ChartLine *line : m_lines) {
        line->clear();
    }
}

void Chart::setMetaDataList(const MetaDataList &list)
{
    change(m_metaDataList, list, &Chart::metaDataListChanged);
}

void Chart::emitMetaDataListChanged()
{
    const Hold hold(*this);
    announce(*this, &Chart::metaDataListChanged);
}

void Chart::sortAndEmitMetaDataListChanged()
{
    const Hold hold(*this);
    m_metaDataList.sort([](const ChartMetaData &left, const ChartMetaData &right) {
        return QString::compare(left.name(), right.name(), Qt::CaseInsensitive) < 0;
    });
    announce(*this, &Chart::metaDataListChanged);
}

Chart::MetaDataList::Reference Chart::findMetaDataByName(const QString &name) const
{
    return m_metaDataList.find([&](const ChartMetaData &record) { return record.name() == name; });
}
