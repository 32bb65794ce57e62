#include "brovik/shell/changelog_entry.h"
#include "brovik/shell/shell.h"
#include "declared.h"
#include "log_capture.h"
#include "qml_binding.h"

#include <gmock/gmock.h>

#include <QCoreApplication>
#include <QDebug>
#include <QThread>

#include <memory>

using testing::ElementsAre;
using testing::IsEmpty;

namespace {

const QColor lowColor = Qt::green;
const QColor highColor = Qt::red;
const QColor otherColor = Qt::gray;

/// The fields that decide whether two entries are equal.
using Field = void (ChangelogEntry::*)(const QString &);
const std::pair<const char *, Field> fields[] = {
    {"name", &ChangelogEntry::setName},
    {"date", &ChangelogEntry::setDate},
    {"distribution", &ChangelogEntry::setDistribution},
    {"version", &ChangelogEntry::setVersion},
    {"urgencyStr", &ChangelogEntry::setUrgencyStr},
};

/// All fields have this text in them, and their own name.
void fill(ChangelogEntry &entry, const QString &text)
{
    for (const auto &[name, set] : fields) {
        (entry.*set)(text + QString::fromLatin1(name));
    }
    entry.setChanges({text + QStringLiteral("1"), text + QStringLiteral("2")});
}

/// With the colours of the urgencies set; leaves the Shell as it was made.
class ChangelogEntryTest : public testing::Test
{
protected:
    void SetUp() override { setColors(lowColor, Qt::yellow, highColor, otherColor); }
    void TearDown() override { setColors(QColor(), QColor(), QColor(), QColor()); }

    void setColors(const QColor &low, const QColor &medium, const QColor &high, const QColor &other)
    {
        shell.setColorUrgencyLow(low);
        shell.setColorUrgencyMedium(medium);
        shell.setColorUrgencyHigh(high);
        shell.setColorUrgencyOther(other);
    }

    Shell &shell = Shell::instance();
    ChangelogEntry entry{shell};
};

} // namespace

TEST_F(ChangelogEntryTest, Declarations)
{
    EXPECT_THAT(declaredProperties(ChangelogEntry::staticMetaObject),
                ElementsAre("QColor color -> colorChanged()", "QString name -> nameChanged()",
                            "QString date -> dateChanged()", "QString distribution -> distributionChanged()",
                            "QString version -> versionChanged()",
                            "QString urgencyStr -> urgencyStrChanged()",
                            "QStringList changes -> changesChanged()"));
    EXPECT_THAT(declaredSignals(ChangelogEntry::staticMetaObject),
                ElementsAre("nameChanged()", "dateChanged()", "distributionChanged()", "versionChanged()",
                            "urgencyStrChanged()", "changesChanged()", "colorChanged()"));
    EXPECT_THAT(declaredInvokables(ChangelogEntry::staticMetaObject), ElementsAre("void _setColor()"));
    EXPECT_THAT(declaredEnumerators(ChangelogEntry::staticMetaObject, "Urgency"),
                ElementsAre("Low = 0", "Medium = 1", "High = 2", "Other = 3"));
}

TEST_F(ChangelogEntryTest, IsEmptyWithoutAColorWhenMade)
{
    ChangelogEntry byDefault;
    for (const ChangelogEntry *made : {&byDefault, &entry}) {
        EXPECT_EQ(made->text(),
                  QStringLiteral("name=, date=, distribution=, version=, urgency=, changes=[]"));
        EXPECT_FALSE(made->color().isValid());
    }
}

TEST_F(ChangelogEntryTest, QmlKnowsTheTypeAndItsUrgencies)
{
    const QmlBinding binding({QStringLiteral("brovik.shell")},
                             QStringLiteral("[ChangelogEntry.Low, ChangelogEntry.Medium, "
                                            "ChangelogEntry.High, ChangelogEntry.Other].join()"));
    EXPECT_EQ(binding.value(), QStringLiteral("0,1,2,3"));
    EXPECT_EQ(refusalOf("import brovik.shell; ChangelogEntry {}"), "");
    EXPECT_THAT(refusalOf("import brovik.shell; ChangelogEntry { name: 'x' }"),
                testing::HasSubstr("read-only"));
}

TEST_F(ChangelogEntryTest, AFieldNotifiesOnce)
{
    const SignalLog log(entry, {"nameChanged", "dateChanged", "distributionChanged", "versionChanged",
                                "changesChanged", "colorChanged"});
    fill(entry, QStringLiteral("a"));
    fill(entry, QStringLiteral("a"));
    EXPECT_THAT(log.names(), ElementsAre("nameChanged", "dateChanged", "distributionChanged",
                                         "versionChanged", "colorChanged", "changesChanged"));
}

TEST_F(ChangelogEntryTest, TakesTheColorOfItsUrgencyAtOnce)
{
    const std::pair<const char *, QColor> rows[] = {
        {"low", lowColor},   {"medium", Qt::yellow}, {"high", highColor},
        {"LOW", otherColor}, {"low", lowColor},      {"", otherColor},
    };
    for (const auto &[urgency, color] : rows) {
        entry.setUrgencyStr(QString::fromLatin1(urgency));
        EXPECT_EQ(entry.color(), color) << urgency;
    }
}

TEST_F(ChangelogEntryTest, TheSameColorNotifiesNothing)
{
    entry.setUrgencyStr(QStringLiteral("emergency"));
    const SignalLog log(entry);
    entry.setUrgencyStr(QStringLiteral("critical"));
    EXPECT_THAT(log.names(), ElementsAre("urgencyStrChanged"));
}

TEST_F(ChangelogEntryTest, ALaterChangeOfTheColorsDoesNotReachIt)
{
    entry.setUrgencyStr(QStringLiteral("high"));
    const SignalLog log(entry);
    shell.setColorUrgencyHigh(Qt::black);
    entry.setUrgencyStr(QStringLiteral("high"));
    EXPECT_EQ(entry.color(), highColor);
    EXPECT_THAT(log.names(), IsEmpty());
    EXPECT_EQ(ChangelogEntry(entry).color(), QColor(Qt::black));
}

TEST_F(ChangelogEntryTest, HasNoColorUntilTheBackendHasWrittenThem)
{
    setColors(QColor(), QColor(), QColor(), QColor());
    entry.setUrgencyStr(QStringLiteral("high"));
    EXPECT_FALSE(entry.color().isValid());
}

TEST_F(ChangelogEntryTest, IsColoredOnTheThreadOfTheWriter)
{
    std::unique_ptr<ChangelogEntry> made;
    std::unique_ptr<SignalLog> log;
    QColor within;
    onForeignThread([&] {
        made = std::make_unique<ChangelogEntry>(shell);
        log = std::make_unique<SignalLog>(*made);
    });
    onForeignThread([&] { // neither the one that made it nor the one with an event loop
        made->setUrgencyStr(QStringLiteral("high"));
        within = made->color();
    });
    EXPECT_EQ(within, highColor);
    ASSERT_THAT(log->names(), ElementsAre("colorChanged", "urgencyStrChanged"));
    EXPECT_FALSE(log->emissions()[0].onGuiThread);
    EXPECT_FALSE(log->emissions()[1].onGuiThread);
}

TEST_F(ChangelogEntryTest, ACopyHasTheFieldsAndAColorOfItsOwn)
{
    fill(entry, QStringLiteral("a"));
    entry.setUrgencyStr(QStringLiteral("low"));
    ChangelogEntry copy(entry);
    EXPECT_EQ(copy.text(), entry.text());
    EXPECT_EQ(copy.color(), lowColor);
    copy.setUrgencyStr(QStringLiteral("high"));
    EXPECT_EQ(copy.color(), highColor);
    EXPECT_EQ(entry.color(), lowColor);
    const ChangelogEntry empty(shell);
    EXPECT_EQ(ChangelogEntry(empty).color(), otherColor);
}

TEST_F(ChangelogEntryTest, AnAssignmentDropsConnectionsAndNotifiesOfNothing)
{
    ChangelogEntry other(shell);
    fill(other, QStringLiteral("b"));
    other.setUrgencyStr(QStringLiteral("low"));
    const SignalLog log(entry);
    entry = other;
    EXPECT_EQ(entry.text(), other.text());
    EXPECT_EQ(entry.color(), lowColor);
    entry.setUrgencyStr(QStringLiteral("high"));
    EXPECT_EQ(entry.color(), highColor);
    EXPECT_THAT(log.names(), IsEmpty());
}

TEST_F(ChangelogEntryTest, IsColoredOnceAfterAnAssignment)
{
    entry = ChangelogEntry(shell);
    entry = ChangelogEntry(shell);
    const SignalLog log(entry);
    entry.setUrgencyStr(QStringLiteral("high"));
    EXPECT_THAT(log.names(), ElementsAre("colorChanged", "urgencyStrChanged"));
}

TEST_F(ChangelogEntryTest, MayBeAssignedToItself)
{
    fill(entry, QStringLiteral("a"));
    const QString before = entry.text();
    const ChangelogEntry &same = entry;
    entry = same;
    EXPECT_EQ(entry.text(), before);
}

TEST_F(ChangelogEntryTest, OneCommonFieldMakesTwoEqual)
{
    fill(entry, QStringLiteral("a"));
    for (const auto &[name, set] : fields) {
        ChangelogEntry other(shell);
        fill(other, QStringLiteral("b"));
        EXPECT_FALSE(entry == other) << name;
        (other.*set)(QStringLiteral("A") + QString::fromLatin1(name));
        EXPECT_FALSE(entry == other) << name << ", in another case";
        (other.*set)(QStringLiteral("a") + QString::fromLatin1(name));
        EXPECT_TRUE(entry == other) << name;
    }
}

TEST_F(ChangelogEntryTest, ChangesAndColorDoNotMakeTwoEqual)
{
    fill(entry, QStringLiteral("a"));
    ChangelogEntry other(shell);
    fill(other, QStringLiteral("b"));
    other.setChanges(entry.changes());
    EXPECT_EQ(entry.color(), other.color());
    EXPECT_FALSE(entry == other);
}

TEST_F(ChangelogEntryTest, TextIsInsertedAsItIs)
{
    fill(entry, QStringLiteral("%1"));
    EXPECT_EQ(entry.text(), QStringLiteral("name=%1name, date=%1date, distribution=%1distribution, "
                                           "version=%1version, urgency=%1urgencyStr, changes=[%11, %12]"));
}

TEST_F(ChangelogEntryTest, TheLogGetsTheDescription)
{
    entry.setName(QStringLiteral("\"ä\" \\ <b>"));
    entry.setChanges({QStringLiteral("x")});
    const LogCapture log;
    qDebug() << 1 << entry << QStringLiteral("2");
    EXPECT_THAT(log.texts(QtDebugMsg),
                ElementsAre(QStringLiteral("1 ChangelogEntry(name=\"ä\" \\ <b>, date=, distribution=, "
                                           "version=, urgency=, changes=[x]) \"2\"")));
}
