#include "brovik/chart/chart_meta_data.h"

ChartMetaData::ChartMetaData(const QString &name, const QString &result, const QString &status,
                             const QString &dateTimeStr, int duration)
    : m_name(name)
    , m_result(result)
    , m_status(status)
    , m_dateTimeStr(dateTimeStr)
    , m_duration(duration)
{}

ChartMetaData::ChartMetaData(const ChartMetaData &other)
    : ChartMetaData(other.name(), other.result(), other.status(), other.dateTimeStr(), other.duration())
{}

ChartMetaData &ChartMetaData::operator=(const ChartMetaData &other)
{
    if (this != &other) {
#define ASSIGN_FIELD(type, name, setter, ...) setter(other.name());
        CHART_META_DATA_PROPERTIES(ASSIGN_FIELD)
#undef ASSIGN_FIELD
    }
    return *this;
}

bool operator==(const ChartMetaData &left, const ChartMetaData &right)
{
    bool areEqual = true;
#define COMPARE_FIELD(type, name, ...) areEqual = left.name() == right.name() && areEqual;
    CHART_META_DATA_PROPERTIES(COMPARE_FIELD)
#undef COMPARE_FIELD
    return areEqual;
}
