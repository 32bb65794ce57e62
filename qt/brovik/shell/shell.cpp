#include "brovik/shell/shell.h"

#include <QDebug>

void Shell::setChangelogs(const Changelogs &entries)
{
    change(m_changelogs, entries, &Shell::changelogsChanged);
}

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

void Shell::writeStdout(const QString &text)
{
    announce(*this, &Shell::appendStdout, text);
}

void Shell::writeStderr(const QString &text)
{
    announce(*this, &Shell::appendStderr, text);
}

QDebug operator<<(QDebug debug, const Shell &shell)
{
    const QDebugStateSaver saver(debug);
    const Shell::Changelogs entries = shell.changelogs();
    QStringList descriptions;
    for (qsizetype index = 0; index < entries.size(); ++index) {
        descriptions.append(entries.at(index)->description());
    }
    debug.nospace().noquote() << "Shell([" << descriptions.join(QStringLiteral(", ")) << "])";
    return debug;
}
