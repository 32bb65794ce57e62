#include "brovik/shell/changelog_entry.h"

#include "brovik/shell/shell.h"

#include <QDebug>

ChangelogEntry::ChangelogEntry()
    : ChangelogEntry(Shell::instance())
{}

ChangelogEntry::ChangelogEntry(const Shell &shell)
    : m_shell(&shell)
{
    followUrgency();
}

ChangelogEntry::ChangelogEntry(const ChangelogEntry &other)
    : SharedObject()
{
    take(other);
}

ChangelogEntry &ChangelogEntry::operator=(const ChangelogEntry &other)
{
    if (this != &other) {
        disconnect();
        take(other);
    }
    return *this;
}

bool operator==(const ChangelogEntry &left, const ChangelogEntry &right)
{
    const auto shared = [&](QString (ChangelogEntry::*field)() const) {
        return (left.*field)() == (right.*field)();
    };
    return shared(&ChangelogEntry::name) || shared(&ChangelogEntry::date) ||
           shared(&ChangelogEntry::distribution) || shared(&ChangelogEntry::version) ||
           shared(&ChangelogEntry::urgencyStr);
}

QString ChangelogEntry::text() const
{
    const SharedLocker lock(&m_mutex);
    return QStringLiteral("name=%1, date=%2, distribution=%3, version=%4, urgency=%5, changes=[%6]")
        .arg(m_name, m_date, m_distribution, m_version, m_urgencyStr, m_changes.join(QStringLiteral(", ")));
}

QString ChangelogEntry::description() const
{
    return QStringLiteral("ChangelogEntry(%1)").arg(text());
}

void ChangelogEntry::_setColor()
{
    const Hold hold(*this);
    change(m_color, m_shell->getUrgencyColor(m_urgencyStr), &ChangelogEntry::colorChanged);
}

/// Directly, on whichever thread writes: that of the entry may be one of the backend's, without an event
/// loop.
void ChangelogEntry::followUrgency() const
{
    connect(this, &ChangelogEntry::urgencyStrChanged, this, &ChangelogEntry::_setColor, Qt::DirectConnection);
}

/// Each field is read before the own mutex is taken: two entries may be assigned to each other.
void ChangelogEntry::take(const ChangelogEntry &other)
{
    const auto put = [this](auto &member, const auto &value) {
        const SharedLocker lock(&m_mutex);
        member = value;
    };
#define TAKE_FIELD(type, name, ...) put(m_##name, other.name());
    CHANGELOG_ENTRY_PROPERTIES(TAKE_FIELD)
#undef TAKE_FIELD
    put(m_shell, other.read(other.m_shell));
    _setColor();
    followUrgency();
}

QDebug operator<<(QDebug debug, const ChangelogEntry &entry)
{
    const QDebugStateSaver saver(debug);
    debug.nospace().noquote() << entry.description();
    return debug;
}
