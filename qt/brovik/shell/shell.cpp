#include "shell.h"

QColor Shell::getUrgencyColor(const QString &urgency) const
{
    if (urgency == QLatin1String("low")) {
        return colorUrgencyLow();
    }
    if (urgency == QLatin1String("medium")) {
        return colorUrgencyMedium();
    }
    if (urgency == QLatin1String("high")) {
        return colorUrgencyHigh();
    }
    return colorUrgencyOther();
}
