#include "src/window_settings.h"

#include "shared/gui_thread.h"
#include "shared/log.h"

#include "brovik/gui/gui.h"
#include "brovik/gui/window_memory.h"

#include <QDateTime>
#include <QFile>
#include <QFileInfo>
#include <QSettings>

namespace {

/// Renames a settings file that cannot be parsed, since what was read of it may be wrong as well. Shows the
/// new name once the screens are loaded.
void putDamagedSettingsAside()
{
    const QSettings settings;
    settings.allKeys(); // a group is parsed when somebody looks into it
    if (settings.status() != QSettings::FormatError) {
        return;
    }
    const QString file = settings.fileName();
    const QString stamp = QDateTime::currentDateTime().toString(QStringLiteral("yyyyMMdd-hhmmss-zzz"));
    const QString aside = QStringLiteral("%1.damaged-%2").arg(file, stamp);
    const bool moved = QFile::rename(file, aside);
    const QString text =
        QStringLiteral("Die Datei %1 ist beschädigt. Für das Fenster gelten die Standardwerte.").arg(file) +
        (moved ? QStringLiteral(" Die beschädigte Datei liegt nun in %1.").arg(aside) : QString());
    criticalStream().noquote() << text;
    Gui::instance().showMessage(QStringLiteral("Einstellungen"), text.toHtmlEscaped(),
                                QStringLiteral("error"));
}

} // namespace

void readWindowSettings()
{
    Q_ASSERT(onGuiThread());
    putDamagedSettingsAside();
    const QSettings settings;
    const std::optional<QByteArray> content = WindowMemory::read(settings.fileName());
    if (content && content->contains('=') && settings.allKeys().isEmpty()) {
        // It has failed to read, and takes that for a file that is not there.
        criticalStream().noquote()
            << QStringLiteral("Die Datei %1 wurde nicht gelesen. Für das Fenster gelten die Standardwerte.")
                   .arg(settings.fileName());
    }
    qputenv("BROVIK_CONFIG_DIR", QFileInfo(settings.fileName()).path().toLocal8Bit());
    Gui::instance().setDarkThemeEnabled(settings.value(QStringLiteral("window/dark"), true).toBool());
}
