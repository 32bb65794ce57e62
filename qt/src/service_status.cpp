#include "src/service_status.h"

namespace {

/// What fits beside the name of the service on a terminal.
constexpr qsizetype longest = 160;

/// A text may be of any size: only what is shown is looked at.
QString shortened(const QString &text)
{
    if (text.size() <= longest) {
        return text;
    }
    const bool splitsPair = text.at(longest - 1).isHighSurrogate();
    return text.left(splitsPair ? longest - 1 : longest) + QStringLiteral("…");
}

} // namespace

QByteArray serviceStatus(const QString &status, bool automaticRuns)
{
    QString line = shortened(status);
    // A line end would begin another message to the manager, and what controls terminals has no place there.
    for (QChar &character : line) {
        if (character.category() == QChar::Other_Control || character.category() == QChar::Separator_Line ||
            character.category() == QChar::Separator_Paragraph) {
            character = QLatin1Char(' ');
        }
    }
    return (automaticRuns ? QStringLiteral("Automatik läuft, ") + line : line).toUtf8();
}
