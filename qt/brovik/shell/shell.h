#pragma once

#include "shared_object.h"
#include "shared_property.h"

#include <QColor>
#include <QJSValue>
#include <QVariantMap>
#include <QtQml/qqmlregistration.h>

// clang-format off
#define SHELL_PROPERTIES(P) \
    P(QColor, colorUrgencyLow,    setColorUrgencyLow,    "color_urgency_low",    QColor(), "Colour of the urgency \"low\".") \
    P(QColor, colorUrgencyMedium, setColorUrgencyMedium, "color_urgency_medium", QColor(), "Colour of the urgency \"medium\".") \
    P(QColor, colorUrgencyHigh,   setColorUrgencyHigh,   "color_urgency_high",   QColor(), "Colour of the urgency \"high\".") \
    P(QColor, colorUrgencyOther,  setColorUrgencyOther,  "color_urgency_other",  QColor(), "Colour of every other urgency.") \
    P(bool,   testingRepoEnabled, setTestingRepoEnabled, "testing_repo_enabled", false,    "The testing component of the package source is on.") \
    P(bool,   locked,             setLocked,             "locked",               false,    "The backend is at work; the update actions are locked.") \
    P(bool,   upgradeInProgressOrFinished, setUpgradeInProgressOrFinished, "upgrade_in_progress_or_finished", false, "An upgrade was started; no automatic run until a restart.") \
    P(QList<QVariantMap>, installed,   setInstalled,   "installed",   {}, "The installed packages, one record each.") \
    P(QList<QVariantMap>, upgradables, setUpgradables, "upgradables", {}, "The packages with an update, one record each.")
// clang-format on

/// State of the update facility. Starts no process and knows no package: the backend does. Lives on the GUI
/// thread; written from any Python thread under its mutex.
class Shell : public SharedObject, public SharedSingleton<Shell>
{
    Q_OBJECT
    QML_ELEMENT
    QML_SINGLETON

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

    SHELL_PROPERTIES(SHARED_PROPERTY)

public:
    /// The colour of an urgency, compared exactly; that of the others for any unknown word.
    Q_INVOKABLE QColor getUrgencyColor(const QString &urgency) const;

Q_SIGNALS:
    /// A piece of console output. Nothing keeps what no screen takes.
    void appendStdout(const QString &text);
    void appendStderr(const QString &text);
    /// A request of the operator.
    void toPy(Shell::ShellAction action, const QJSValue &value);

private:
    friend class SharedSingleton<Shell>;
    Shell() = default;
};
