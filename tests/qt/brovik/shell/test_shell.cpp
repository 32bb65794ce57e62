#include "declared.h"
#include "qml_binding.h"
#include "shell.h"

#include <gmock/gmock.h>

using testing::ElementsAre;
using testing::IsEmpty;

namespace {

const QStringList modules = {QStringLiteral("brovik.shell")};

QList<QVariantMap> oneUpgrade(const QString &version)
{
    return {{{QStringLiteral("name"), QStringLiteral("a")},
             {QStringLiteral("versionNew"), version},
             {QStringLiteral("lastChange"), QStringList{QStringLiteral("x"), QStringLiteral("y")}}}};
}

/// Leaves the object as it was made.
class ShellTest : public testing::Test
{
protected:
    void TearDown() override
    {
        setColors(QColor(), QColor(), QColor(), QColor());
        shell.setUpgradables({});
        shell.setUpgradeInProgressOrFinished(false);
    }

    void setColors(const QColor &low, const QColor &medium, const QColor &high, const QColor &other)
    {
        shell.setColorUrgencyLow(low);
        shell.setColorUrgencyMedium(medium);
        shell.setColorUrgencyHigh(high);
        shell.setColorUrgencyOther(other);
    }

    Shell &shell = Shell::instance();
};

} // namespace

TEST_F(ShellTest, DeclaredProperties)
{
    const std::vector<std::string> declared = declaredProperties(Shell::staticMetaObject);
    ASSERT_GE(declared.size(), 9U);
    EXPECT_THAT(std::vector(declared.begin(), declared.begin() + 9),
                ElementsAre("QColor colorUrgencyLow -> colorUrgencyLowChanged()",
                            "QColor colorUrgencyMedium -> colorUrgencyMediumChanged()",
                            "QColor colorUrgencyHigh -> colorUrgencyHighChanged()",
                            "QColor colorUrgencyOther -> colorUrgencyOtherChanged()",
                            "bool testingRepoEnabled -> testingRepoEnabledChanged()",
                            "bool locked -> lockedChanged()",
                            "bool upgradeInProgressOrFinished -> upgradeInProgressOrFinishedChanged()",
                            "QList<QMap<QString,QVariant>> installed -> installedChanged()",
                            "QList<QMap<QString,QVariant>> upgradables -> upgradablesChanged()"));
}

TEST_F(ShellTest, DeclaredSignalsAndInvokables)
{
    const std::vector<std::string> declared = declaredSignals(Shell::staticMetaObject);
    ASSERT_GE(declared.size(), 12U);
    EXPECT_THAT(
        std::vector(declared.begin(), declared.begin() + 9),
        ElementsAre("colorUrgencyLowChanged()", "colorUrgencyMediumChanged()", "colorUrgencyHighChanged()",
                    "colorUrgencyOtherChanged()", "testingRepoEnabledChanged()", "lockedChanged()",
                    "upgradeInProgressOrFinishedChanged()", "installedChanged()", "upgradablesChanged()"));
    EXPECT_THAT(
        std::vector(declared.end() - 3, declared.end()),
        ElementsAre("appendStdout(QString)", "appendStderr(QString)", "toPy(Shell::ShellAction,QJSValue)"));
    EXPECT_THAT(declaredInvokables(Shell::staticMetaObject), ElementsAre("QColor getUrgencyColor(QString)"));
    EXPECT_THAT(declaredEnumerators(Shell::staticMetaObject, "ShellAction"),
                ElementsAre("Update = 0", "Upgrade = 1", "Changelog = 2", "LocalChangelog = 3",
                            "ClearCache = 4", "TestConsole = 5", "ToggleTesting = 6"));
}

TEST_F(ShellTest, UrgencyWordsAreComparedExactly)
{
    setColors(Qt::green, Qt::yellow, Qt::red, Qt::gray);
    EXPECT_EQ(shell.getUrgencyColor(QStringLiteral("low")), QColor(Qt::green));
    EXPECT_EQ(shell.getUrgencyColor(QStringLiteral("medium")), QColor(Qt::yellow));
    EXPECT_EQ(shell.getUrgencyColor(QStringLiteral("high")), QColor(Qt::red));
    for (const char *word : {"LOW", "High", " low", "emergency", ""}) {
        EXPECT_EQ(shell.getUrgencyColor(QString::fromLatin1(word)), QColor(Qt::gray)) << word;
    }
}

TEST_F(ShellTest, ColorsAreInvalidUntilTheyAreWritten)
{
    for (const char *word : {"low", "medium", "high", "other"}) {
        EXPECT_FALSE(shell.getUrgencyColor(QString::fromLatin1(word)).isValid()) << word;
    }
}

TEST_F(ShellTest, EqualRecordsNotifyNothing)
{
    shell.setUpgradables(oneUpgrade(QStringLiteral("1.0")));
    const SignalLog log(shell);
    shell.setUpgradables(oneUpgrade(QStringLiteral("1.0")));
    EXPECT_THAT(log.names(), IsEmpty());
    shell.setUpgradables(oneUpgrade(QStringLiteral("1.1")));
    EXPECT_THAT(log.names(), ElementsAre("upgradablesChanged"));
}

TEST_F(ShellTest, ForeignWriteReachesABindingOnTheGuiThread)
{
    const QmlBinding binding(
        modules, QStringLiteral(
                     "[Shell.upgradeInProgressOrFinished, Shell.upgradables.map(r => r.lastChange)].join()"));
    EXPECT_EQ(binding.value(), QStringLiteral("false,"));
    onForeignThread([this] {
        shell.setUpgradables(oneUpgrade(QStringLiteral("1.0")));
        shell.setUpgradeInProgressOrFinished(true);
    });
    ASSERT_TRUE(binding.becomes(QStringLiteral("true,x,y")));
    EXPECT_TRUE(binding.changes().emissions().back().onGuiThread);
}
