#include "bridge_test.h"

QStringList typesOf(const SignalLog &exceptions)
{
    QStringList result;
    for (const SignalLog::Emission &shown : exceptions.emissions()) {
        result.append(shown.values[0].toMap().value(QStringLiteral("type")).toString());
    }
    return result;
}

QStringList expectedTellings()
{
    QStringList result;
    for (const Press &press : presses) {
        result.append(QString::fromUtf8(press.told));
    }
    return result;
}

QStringList expectedCriticals()
{
    QStringList result;
    for (const Press &press : presses) {
        result.append(QString::fromUtf8(press.missing));
    }
    return result;
}
