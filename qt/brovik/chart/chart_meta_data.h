#pragma once

#include "shared/shared_object.h"
#include "shared/shared_property.h"

#include <QtQml/qqmlregistration.h>

// clang-format off
#define CHART_META_DATA_PROPERTIES(P) \
    P(QString, name,        setName,        "name",         QString(), "Name of the saved chart, by which all requests call it.") \
    P(QString, result,      setResult,      "result",       QString(), "How the run ended: success, warning, error, or another word.") \
    P(QString, status,      setStatus,      "status",       QString(), "Text shown behind the name.") \
    P(QString, dateTimeStr, setDateTimeStr, "datetime_str", QString(), "Date and time as the operator reads them.") \
    P(int,     duration,    setDuration,    "duration",     0,         "Length of the process, seconds.")
// clang-format on

/// What the list of saved charts tells of one of them. A value, although it has signals: it is copied, and
/// equal if all its fields are. Written from any Python thread under its own mutex.
class ChartMetaData : public SharedObject
{
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("The backend makes the records of saved charts")

public:
    ChartMetaData() = default;
    ChartMetaData(const QString &name, const QString &result, const QString &status,
                  const QString &dateTimeStr, int duration);
    ChartMetaData(const ChartMetaData &other);
    /// Notifies of each field that differs.
    ChartMetaData &operator=(const ChartMetaData &other);

    friend bool operator==(const ChartMetaData &left, const ChartMetaData &right);

    CHART_META_DATA_PROPERTIES(SHARED_PROPERTY)
};
