#pragma once

#include "brovik/shell/changelog_entry.h"
#include "shared/qml_records.h"
#include "shared/record_list.h"
#include "shared/shared_object.h"
#include "shared/shared_property.h"

#include <QColor>
#include <QJSValue>
#include <QQmlListProperty>
#include <QVariantMap>
#include <QtQml/qqmlregistration.h>

// clang-format off
#define SHELL_COLORS(P) \
    P(QColor, colorUrgencyLow,    setColorUrgencyLow,    "color_urgency_low",    QColor(), "Colour of the urgency \"low\".") \
    P(QColor, colorUrgencyMedium, setColorUrgencyMedium, "color_urgency_medium", QColor(), "Colour of the urgency \"medium\".") \
    P(QColor, colorUrgencyHigh,   setColorUrgencyHigh,   "color_urgency_high",   QColor(), "Colour of the urgency \"high\".") \
    P(QColor, colorUrgencyOther,  setColorUrgencyOther,  "color_urgency_other",  QColor(), "Colour of every other urgency.")

#define SHELL_STATES(P) \
    P(bool,   testingRepoEnabled, setTestingRepoEnabled, "testing_repo_enabled", false,    "The testing component of the package source is on.") \
    P(bool,   locked,             setLocked,             "locked",               false,    "The backend is at work; the update actions are locked.") \
    P(bool,   upgradeInProgressOrFinished, setUpgradeInProgressOrFinished, "upgrade_in_progress_or_finished", false, "An upgrade was started; no automatic run until a restart.")

// Two tables, since Python has the changelogs between them.
#define SHELL_INSTALLED(P) \
    P(QList<QVariantMap>, installed,   setInstalled,   "installed",   {}, "The installed packages, one record each.")
#define SHELL_UPGRADABLES(P) \
    P(QList<QVariantMap>, upgradables, setUpgradables, "upgradables", {}, "The packages with an update, one record each.")
// clang-format on

/// A colour that is read without the mutex of its Shell: an entry reads it while it holds its own, and
/// entries are compared while that of the Shell is held. Any thread.
class UrgencyColor
{
public:
    explicit UrgencyColor(const QColor &color)
        : m_color(color)
    {}

    UrgencyColor &operator=(const QColor &color)
    {
        const InnerLocker lock(&m_mutex);
        m_color = color;
        return *this;
    }

    QColor value() const
    {
        const InnerLocker lock(&m_mutex);
        return m_color;
    }

    friend bool operator==(const UrgencyColor &left, const QColor &right) { return left.value() == right; }

private:
    mutable InnerMutex m_mutex;
    QColor m_color;
};

/// As SHARED_PROPERTY, for an UrgencyColor.
#define SHELL_COLOR(type, name, setter, pyName, initial, doc)                                                \
    SHARED_ACCESS(type, name, setter, m_##name.value(),                                                      \
                  change<type>(m_##name, value, SHARED_SIGNAL(name##Changed)))                               \
private:                                                                                                     \
    UrgencyColor m_##name{initial};

/// State of the update facility. Starts no process and knows no package: the backend does. Lives on the GUI
/// thread; written from any Python thread under its mutex. The colours and the list of changelog entries have
/// mutexes of their own, under which the screens read them.
class Shell : public SharedObject, public SharedSingleton<Shell>
{
    Q_OBJECT
    QML_ELEMENT
    QML_SINGLETON

    SHELL_COLORS(SHELL_COLOR)
    SHELL_STATES(SHARED_PROPERTY)
    SHELL_INSTALLED(SHARED_PROPERTY)
    SHELL_UPGRADABLES(SHARED_PROPERTY)

    Q_PROPERTY(QQmlListProperty<ChangelogEntry> changelogs READ qmlChangelogs NOTIFY changelogsChanged)

public:
    enum ShellAction : int {
        Update,
        Upgrade,
        Changelog,
        LocalChangelog,
        ClearCache,
        TestConsole,
        ToggleTesting
    };
    Q_ENUM(ShellAction)

    using Changelogs = RecordList<ChangelogEntry>;

    /// The changelog asked for last, as a copy.
    Changelogs changelogs() const { return read(m_changelogs); }
    /// Does nothing if the new list is as long as the old one and each pair of entries compares equal, for
    /// which one common field is enough.
    void setChangelogs(const Changelogs &entries);
    /// The list as copies, each made at the moment of reading. GUI thread.
    QQmlListProperty<ChangelogEntry> qmlChangelogs() { return m_qmlChangelogs.property(this); }

    /// The colour of an urgency, compared exactly; that of the others for any unknown word.
    Q_INVOKABLE QColor getUrgencyColor(const QString &urgency) const;

    /// Each writes to the console of the screens, from any thread. A thread that writes faster than they read
    /// is held back.
    void writeStdout(const QString &text);
    void writeStderr(const QString &text);

Q_SIGNALS:
    void changelogsChanged();
    /// A piece of console output. It is lost if no screen is connected.
    void appendStdout(const QString &text);
    void appendStderr(const QString &text);
    /// A request of the operator.
    void toPy(Shell::ShellAction action, const QJSValue &value);

private:
    friend class SharedSingleton<Shell>;
    Shell() = default;

    Changelogs m_changelogs;
    QmlRecords<ChangelogEntry> m_qmlChangelogs{m_changelogs, *this, &Shell::changelogsChanged};
};

#undef SHELL_COLOR

/// Writes the entries of the changelog.
QDebug operator<<(QDebug debug, const Shell &shell);
