#include "brovik/shell/shell.h"
#include "declared.h"
#include "log_capture.h"
#include "qml_binding.h"

#include <gmock/gmock.h>

#include <QCoreApplication>
#include <QDebug>
#include <QPointer>
#include <QQmlListReference>
#include <QTest>
#include <QThread>

#include <memory>

using testing::ElementsAre;
using testing::IsEmpty;

namespace {

const QStringList shellModules = {QStringLiteral("brovik.shell")};

QList<QVariantMap> oneUpgrade(const QString &version)
{
    return {{{QStringLiteral("name"), QStringLiteral("a")},
             {QStringLiteral("versionNew"), version},
             {QStringLiteral("lastChange"), QStringList{QStringLiteral("x"), QStringLiteral("y")}}}};
}

/// An entry that has nothing in common with another name's, but for what is set afterwards.
ChangelogEntry entry(const QString &name)
{
    ChangelogEntry made(Shell::instance());
    made.setName(name);
    made.setDate(QStringLiteral("date of ") + name);
    made.setDistribution(QStringLiteral("distribution of ") + name);
    made.setVersion(QStringLiteral("version of ") + name);
    made.setUrgencyStr(QStringLiteral("urgency of ") + name);
    return made;
}

Shell::Changelogs listOf(const QStringList &names)
{
    Shell::Changelogs list;
    for (const QString &name : names) {
        list.append(entry(name));
    }
    return list;
}

QStringList namesIn(const Shell::Changelogs &list)
{
    QStringList names;
    for (qsizetype index = 0; index < list.size(); ++index) {
        names.append(list.at(index)->name());
    }
    return names;
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
        shell.setChangelogs({});
        QCoreApplication::processEvents();
    }

    /// What QML reads at this moment.
    QList<ChangelogEntry *> listInQml()
    {
        const QQmlListReference list(&shell, "changelogs");
        QList<ChangelogEntry *> entries;
        for (qsizetype index = 0; index < list.count(); ++index) {
            entries.append(qobject_cast<ChangelogEntry *>(list.at(index)));
        }
        return entries;
    }

    QStringList names() const { return namesIn(shell.changelogs()); }

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
    EXPECT_THAT(declaredProperties(Shell::staticMetaObject),
                ElementsAre("QColor colorUrgencyLow -> colorUrgencyLowChanged()",
                            "QColor colorUrgencyMedium -> colorUrgencyMediumChanged()",
                            "QColor colorUrgencyHigh -> colorUrgencyHighChanged()",
                            "QColor colorUrgencyOther -> colorUrgencyOtherChanged()",
                            "bool testingRepoEnabled -> testingRepoEnabledChanged()",
                            "bool locked -> lockedChanged()",
                            "bool upgradeInProgressOrFinished -> upgradeInProgressOrFinishedChanged()",
                            "QList<QMap<QString,QVariant>> installed -> installedChanged()",
                            "QList<QMap<QString,QVariant>> upgradables -> upgradablesChanged()",
                            "QQmlListProperty<ChangelogEntry> changelogs -> changelogsChanged()"));
}

TEST_F(ShellTest, DeclaredSignalsAndInvokables)
{
    EXPECT_THAT(declaredSignals(Shell::staticMetaObject),
                ElementsAre("colorUrgencyLowChanged()", "colorUrgencyMediumChanged()",
                            "colorUrgencyHighChanged()", "colorUrgencyOtherChanged()",
                            "testingRepoEnabledChanged()", "lockedChanged()",
                            "upgradeInProgressOrFinishedChanged()", "installedChanged()",
                            "upgradablesChanged()", "changelogsChanged()", "appendStdout(QString)",
                            "appendStderr(QString)", "toPy(Shell::ShellAction,QJSValue)"));
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
    const QmlBinding label({QStringLiteral("QtQuick"), QStringLiteral("brovik.shell")},
                           QStringLiteral("Shell.getUrgencyColor('high').valid"));
    EXPECT_EQ(label.value(), false);
}

TEST_F(ShellTest, ColorsAreReadWhileTheShellIsLocked)
{
    setColors(Qt::green, Qt::yellow, Qt::red, Qt::gray);
    QColor color;
    QObject::connect(
        &shell, &Shell::lockedChanged, &shell,
        [&] { onForeignThread([&] { color = shell.getUrgencyColor(QStringLiteral("high")); }); },
        Qt::DirectConnection);
    shell.setLocked(true);
    shell.disconnect(&shell);
    shell.setLocked(false);
    EXPECT_EQ(color, QColor(Qt::red));
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
        shellModules,
        QStringLiteral(
            "[Shell.upgradeInProgressOrFinished, Shell.upgradables.map(r => r.lastChange)].join()"));
    EXPECT_EQ(binding.value(), QStringLiteral("false,"));
    onForeignThread([this] {
        shell.setUpgradables(oneUpgrade(QStringLiteral("1.0")));
        shell.setUpgradeInProgressOrFinished(true);
    });
    ASSERT_TRUE(binding.becomes(QStringLiteral("true,x,y")));
    EXPECT_TRUE(binding.changes().emissions().back().onGuiThread);
}

TEST_F(ShellTest, RecordsAreComparedByTypeAndValue)
{
    const auto withValue = [](const QVariant &value) {
        return QList<QVariantMap>{{{QStringLiteral("a"), QVariantList{value}}}};
    };
    shell.setUpgradables(withValue(3));
    const SignalLog log(shell);
    shell.setUpgradables(withValue(QStringLiteral("3")));
    shell.setUpgradables(withValue(3.0));
    shell.setUpgradables(withValue(3));
    shell.setUpgradables(withValue(3));
    EXPECT_THAT(log.names(), ElementsAre("upgradablesChanged", "upgradablesChanged", "upgradablesChanged"));
    EXPECT_EQ(shell.upgradables()[0].first().toList()[0].typeId(), QMetaType::Int);
}

TEST_F(ShellTest, AChangelogOfAnotherLengthIsTaken)
{
    const SignalLog log(shell);
    shell.setChangelogs({});
    EXPECT_THAT(log.names(), IsEmpty());
    for (const QStringList &list : {QStringList{"a"}, {"a", "b"}, {"a"}, {}}) {
        shell.setChangelogs(listOf(list));
        EXPECT_EQ(names(), list);
    }
    EXPECT_THAT(log.names(), ElementsAre("changelogsChanged", "changelogsChanged", "changelogsChanged",
                                         "changelogsChanged"));
}

TEST_F(ShellTest, OneFieldInCommonAtEachPlaceKeepsTheOldChangelog)
{
    shell.setChangelogs(listOf({QStringLiteral("a"), QStringLiteral("b")}));
    Shell::Changelogs similar = listOf({QStringLiteral("c"), QStringLiteral("d")});
    similar.at(0)->setDistribution(QStringLiteral("distribution of a"));
    const SignalLog log(shell);
    similar.at(1)->setDistribution(QStringLiteral("distribution of b"));
    shell.setChangelogs(similar);
    shell.setChangelogs(shell.changelogs());
    EXPECT_THAT(log.names(), IsEmpty());
    EXPECT_EQ(names(), (QStringList{"a", "b"}));

    similar.at(1)->setDistribution(QStringLiteral("distribution of a"));
    shell.setChangelogs(similar);
    EXPECT_THAT(log.names(), ElementsAre("changelogsChanged")) << "entries are compared place by place";
    EXPECT_EQ(names(), (QStringList{"c", "d"}));
}

TEST_F(ShellTest, TheReaderOfAChangelogGetsACopy)
{
    shell.setChangelogs(listOf({QStringLiteral("a")}));
    Shell::Changelogs copy = shell.changelogs();
    copy.at(0)->setName(QStringLiteral("x"));
    copy.append(entry(QStringLiteral("y")));
    EXPECT_EQ(names(), QStringList{"a"});
}

TEST_F(ShellTest, AChangelogIsWrittenOnTheWritersThread)
{
    const SignalLog log(shell);
    onForeignThread([this] { shell.setChangelogs(listOf({QStringLiteral("a")})); });
    ASSERT_THAT(log.names(), ElementsAre("changelogsChanged"));
    EXPECT_FALSE(log.emissions()[0].onGuiThread);
}

TEST_F(ShellTest, QmlGetsANewCopyEachTime)
{
    setColors(Qt::green, Qt::yellow, Qt::red, Qt::gray);
    Shell::Changelogs list = listOf({QStringLiteral("a")});
    list.at(0)->setUrgencyStr(QStringLiteral("high"));
    onForeignThread([&] { shell.setChangelogs(list); });
    const QmlBinding binding(
        shellModules, QStringLiteral("{ const one = Shell.changelogs[0], other = Shell.changelogs[0]; return "
                                     "[one === other, one.name, other.name, other.color].join(); }"));
    EXPECT_EQ(binding.value(), QStringLiteral("false,a,a,#ff0000"));

    const ChangelogEntry *copy = listInQml().constFirst();
    EXPECT_EQ(copy->thread(), QCoreApplication::instance()->thread());
    EXPECT_EQ(QJSEngine::objectOwnership(const_cast<ChangelogEntry *>(copy)), QJSEngine::CppOwnership);
}

TEST_F(ShellTest, QmlCannotChangeTheChangelog)
{
    const QQmlListReference list(&shell, "changelogs");
    EXPECT_TRUE(list.canAt());
    EXPECT_TRUE(list.canCount());
    EXPECT_FALSE(list.canAppend());
    EXPECT_FALSE(list.canClear());
    EXPECT_FALSE(list.canReplace());
    EXPECT_FALSE(list.canRemoveLast());
    auto property = shell.qmlChangelogs();
    EXPECT_EQ(property.at(&property, 0), nullptr);
    EXPECT_EQ(property.at(&property, -1), nullptr);
}

TEST_F(ShellTest, CopiesGoWhenTheScreensHaveNewerOnes)
{
    shell.setChangelogs(listOf({QStringLiteral("a")}));
    QCoreApplication::processEvents();
    const QPointer<ChangelogEntry> first = listInQml().constFirst();
    int round = 0;
    const auto reload = [&] {
        onForeignThread([&] { shell.setChangelogs(listOf({QString::number(++round)})); });
        QCoreApplication::processEvents();
    };
    reload();
    EXPECT_FALSE(first.isNull()) << "a view may show it until its next frame";
    EXPECT_TRUE(QTest::qWaitFor([&] {
        reload();
        return first.isNull();
    }));
}

TEST_F(ShellTest, AViewFollowsTheChangelog)
{
    const QmlBinding binding(
        shellModules, QStringLiteral("{ let all = ''; for (let i = 0; i < Shell.changelogs.length; ++i) "
                                     "all += Shell.changelogs[i].name; return all; }"));
    onForeignThread([this] { shell.setChangelogs(listOf({QStringLiteral("a"), QStringLiteral("b")})); });
    EXPECT_TRUE(binding.becomes(QStringLiteral("ab")));
    onForeignThread([this] { shell.setChangelogs(listOf({QStringLiteral("c"), QStringLiteral("d")})); });
    EXPECT_TRUE(binding.becomes(QStringLiteral("cd")));
}

TEST_F(ShellTest, TheChangelogMayChangeWhileItIsRead)
{
    std::atomic<bool> ended = false;
    const std::unique_ptr<QThread> backend(QThread::create([&] {
        for (int round = 0; round < 1000; ++round) {
            shell.setChangelogs(listOf(QStringList(round % 4, QString::number(round))));
            shell.setColorUrgencyOther(QColor::fromRgb(static_cast<QRgb>(round)));
        }
        ended = true;
    }));
    backend->start();
    while (!ended) {
        for (const ChangelogEntry *read : listInQml()) {
            EXPECT_TRUE(read == nullptr || !read->name().isEmpty());
        }
        QCoreApplication::processEvents();
    }
    backend->wait();
    EXPECT_EQ(names().size(), 3);
}

TEST_F(ShellTest, ConsoleOutputArrivesOnceInOrder)
{
    const SignalLog log(shell, {"appendStdout", "appendStderr"});
    QObject screen;
    QStringList arrived;
    const auto take = [&](const QString &text) { arrived.append(text); };
    QObject::connect(&shell, &Shell::appendStdout, &screen, take);
    QObject::connect(&shell, &Shell::appendStderr, &screen, take);
    onForeignThread([this] {
        shell.writeStdout(QStringLiteral("a"));
        shell.writeStderr(QStringLiteral("b"));
        shell.writeStdout(QStringLiteral("a"));
    });
    EXPECT_THAT(log.names(), ElementsAre("appendStdout", "appendStderr", "appendStdout"));
    EXPECT_FALSE(log.emissions()[0].onGuiThread);
    EXPECT_THAT(arrived, IsEmpty());
    QCoreApplication::processEvents();
    EXPECT_EQ(arrived, (QStringList{"a", "b", "a"}));
}

TEST_F(ShellTest, TheLogGetsTheEntriesOfTheChangelog)
{
    const LogCapture log;
    qDebug() << shell;
    shell.setChangelogs(listOf({QStringLiteral("a"), QStringLiteral("b")}));
    qDebug() << shell << 1;
    EXPECT_THAT(log.texts(QtDebugMsg),
                ElementsAre(QStringLiteral("Shell([])"), QStringLiteral("Shell([%1, %2]) 1")
                                                             .arg(entry(QStringLiteral("a")).description(),
                                                                  entry(QStringLiteral("b")).description())));
}

TEST_F(ShellTest, ARequestCarriesItsNumberAndValue)
{
    const SignalLog log(shell, {"toPy"});
    const QmlBinding emitter(shellModules,
                             QStringLiteral("{ Shell.toPy(Shell.ToggleTesting, 'geheim'); return 1; }"));
    ASSERT_EQ(log.emissions().size(), 1U);
    EXPECT_EQ(log.emissions()[0].values[0].toInt(), 6);
    EXPECT_EQ(log.emissions()[0].values[1].value<QJSValue>().toString(), QStringLiteral("geheim"));
}
