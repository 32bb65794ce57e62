#include "brovik/gui/window_memory.h"

#include "shared/gui_thread.h"
#include "shared/log.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSaveFile>
#include <QSettings>

namespace {

const char *const group = "[window]";

/// The key of a line "key=value"; empty for any other one.
QByteArray keyOf(const QByteArray &line)
{
    const qsizetype separator = line.indexOf('=');
    return separator < 0 ? QByteArray() : line.left(separator).trimmed();
}

QByteArrayList asLines(const QMap<QByteArray, QByteArray> &values)
{
    QByteArrayList lines;
    for (auto value = values.cbegin(); value != values.cend(); ++value) {
        lines.append(value.key() + '=' + value.value());
    }
    return lines;
}

/// Adds the group at the end, with an empty line before it. Returns the place of its first value.
qsizetype addGroup(QByteArrayList &lines)
{
    while (!lines.isEmpty() && lines.constLast().isEmpty()) {
        lines.removeLast();
    }
    if (!lines.isEmpty()) {
        lines.append(QByteArray());
    }
    lines.append(group);
    lines.append(QByteArray());
    return lines.size() - 1;
}

} // namespace

bool WindowMemory::keep(const QVariantMap &values)
{
    Q_ASSERT(onGuiThread());
    for (auto value = values.cbegin(); value != values.cend(); ++value) {
        m_waiting[value.key().toLatin1()] = value.value().toString().toLatin1();
    }
    const QString path = QSettings().fileName();
    const std::optional<QByteArray> content = read(path);
    if (!content || !replace(path, withValues(*content, m_waiting))) {
        return false;
    }
    m_waiting.clear();
    return true;
}

QByteArray WindowMemory::withValues(const QByteArray &content, const QMap<QByteArray, QByteArray> &values)
{
    QByteArrayList lines;
    qsizetype end = -1; // Of the first group of that name: the new lines go there.
    bool inside = false;
    const QByteArrayList before = content.isEmpty() ? QByteArrayList() : content.split('\n');
    for (const QByteArray &line : before) {
        if (line.trimmed().startsWith('[')) {
            inside = line.trimmed() == group;
        }
        if (inside && values.contains(keyOf(line))) {
            continue;
        }
        lines.append(line);
        if (inside && !line.trimmed().isEmpty() && (end < 0 || end == lines.size() - 1)) {
            end = lines.size();
        }
    }
    if (end < 0) {
        end = addGroup(lines);
    }
    return (lines.mid(0, end) + asLines(values) + lines.mid(end)).join('\n');
}

std::optional<QByteArray> WindowMemory::read(const QString &path)
{
    QFile file(path);
    const bool opened = file.open(QIODevice::ReadOnly);
    if (!opened && !QFileInfo::exists(path)) {
        return QByteArray();
    }
    const QByteArray content = opened ? file.readAll() : QByteArray();
    if (file.error() != QFile::NoError) {
        criticalStream().noquote()
            << QStringLiteral("Die Datei %1 ist nicht lesbar: %2").arg(path, file.errorString());
        return std::nullopt;
    }
    return content;
}

bool WindowMemory::replace(const QString &path, const QByteArray &content)
{
    QDir().mkpath(QFileInfo(path).path());
    QSaveFile file(path);
    // Its last step does not look at what has become of what it had in memory.
    if (file.open(QIODevice::WriteOnly) && file.write(content) == content.size() && file.flush() &&
        file.commit()) {
        return true;
    }
    criticalStream().noquote()
        << QStringLiteral(
               "Die Datei %1 ist nicht beschreibbar: %2. Das Fenster ist beim nächsten Start, wie es war")
               .arg(path, file.errorString());
    return false;
}
