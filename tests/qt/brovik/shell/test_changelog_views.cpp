#include "brovik/shell/changelog_entry.h"
#include "brovik/shell/shell.h"
#include "object_hooks.h"
#include "qml_binding.h"
#include "repeats.h"

#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QQmlEngine>
#include <QQuickItem>
#include <QQuickView>
#include <QTest>

#include <mutex>
#include <unordered_set>

namespace {

constexpr qsizetype entryCount = 300;
constexpr int reloads = repeats(50);

/// All objects that live, whoever owns them, while this does.
class LivingObjects
{
public:
    LivingObjects() { watchObjects(&added, &removed); }

    ~LivingObjects()
    {
        watchObjects(nullptr, nullptr);
        s_living.clear();
    }

    Q_DISABLE_COPY_MOVE(LivingObjects)

    /// Not while another thread makes or ends objects.
    static qsizetype entries()
    {
        const std::lock_guard lock(s_mutex);
        return std::ranges::count_if(
            s_living, [](QObject *object) { return qobject_cast<ChangelogEntry *>(object) != nullptr; });
    }

private:
    static void added(QObject *object)
    {
        const std::lock_guard lock(s_mutex);
        s_living.insert(object);
    }

    static void removed(QObject *object)
    {
        const std::lock_guard lock(s_mutex);
        s_living.erase(object);
    }

    static inline std::mutex s_mutex;
    static inline std::unordered_set<QObject *> s_living;
};

/// A changelog that compares unequal to that of any other round.
Shell::Changelogs changelog(int round)
{
    Shell::Changelogs entries;
    ChangelogEntry entry(Shell::instance());
    for (int index = 0; index < entryCount; ++index) {
        const QString number = QStringLiteral("%1.%2").arg(round).arg(index);
        for (const auto set :
             {&ChangelogEntry::setName, &ChangelogEntry::setDate, &ChangelogEntry::setDistribution,
              &ChangelogEntry::setVersion, &ChangelogEntry::setUrgencyStr}) {
            (entry.*set)(number);
        }
        entries.append(entry);
    }
    return entries;
}

/// The two ways in which a screen shows a list.
struct ViewRow
{
    const char *name;
    const char *source;
};

const ViewRow views[] = {
    {"Repeater", R"(
import QtQuick
import brovik.shell
Column {
    property Item first: repeater.count > 0 ? repeater.itemAt(0) : null
    Repeater {
        id: repeater
        model: Shell.changelogs
        delegate: Text {
            required property string name
            required property string version
            text: name + ' ' + version
        }
    }
})"},
    {"ListView", R"(
import QtQuick
import brovik.shell
ListView {
    id: list
    property Item first: count > 0 ? itemAtIndex(0) : null
    width: 400
    height: 400
    model: Shell.changelogs
    delegate: Text {
        required property ChangelogEntry modelData
        text: modelData.name + ' ' + modelData.version
    }
})"},
};

class ChangelogViews : public testing::TestWithParam<ViewRow>
{
protected:
    ChangelogViews()
    {
        m_view.engine()->addImportPath(QStringLiteral(":/"));
        QQmlComponent component(m_view.engine());
        component.setData(GetParam().source, QUrl());
        auto *root = qobject_cast<QQuickItem *>(component.create());
        EXPECT_NE(root, nullptr) << component.errorString().toStdString();
        m_view.setContent(QUrl(), nullptr, root);
        m_view.show();
        EXPECT_TRUE(QTest::qWaitForWindowExposed(&m_view));
    }

    ~ChangelogViews() override
    {
        Shell::instance().setChangelogs({});
        QCoreApplication::processEvents();
    }

    /// Writes a changelog as a backend does, and waits until the screen shows it.
    void show(int round)
    {
        onForeignThread([round] { Shell::instance().setChangelogs(changelog(round)); });
        const QString expected = QStringLiteral("%1.0 %1.0").arg(round);
        EXPECT_TRUE(QTest::qWaitFor([&] { return shown() == expected; })) << shown().toStdString();
        settle();
    }

    QString shown() const
    {
        const auto *first = root()->property("first").value<QObject *>();
        return first != nullptr ? first->property("text").toString() : QString();
    }

    /// Shows each entry once, if the view scrolls.
    void scroll()
    {
        if (root()->property("contentY").isValid()) {
            for (int index = 0; index < entryCount; index += 10) {
                QMetaObject::invokeMethod(root(), "positionViewAtIndex", Q_ARG(int, index), Q_ARG(int, 0));
                QCoreApplication::processEvents();
            }
            QMetaObject::invokeMethod(root(), "positionViewAtBeginning");
        }
    }

    /// Handles all that is queued, delegates that go included.
    static void settle()
    {
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        QCoreApplication::processEvents();
    }

    void collectGarbage()
    {
        m_view.engine()->collectGarbage();
        settle();
    }

    void close()
    {
        m_view.setSource(QUrl());
        settle();
    }

    QObject *root() const { return m_view.rootObject(); }

private:
    QQuickView m_view;
};

} // namespace

TEST_P(ChangelogViews, ReloadsLeaveNoEntriesBehind)
{
    const LivingObjects living;
    ASSERT_EQ(LivingObjects::entries(), 0);
    for (int round = 1; round <= reloads; ++round) {
        show(round);
        scroll();
        // The list itself and what was read of it; what comes back into view is read again.
        ASSERT_TRUE(QTest::qWaitFor([] { return LivingObjects::entries() <= 3 * entryCount; }))
            << LivingObjects::entries() << " entries after reload " << round;
    }
    close();
    for (const auto &last : {Shell::Changelogs(), changelog(0), Shell::Changelogs()}) {
        Shell::instance().setChangelogs(last);
        settle();
    }
    EXPECT_TRUE(QTest::qWaitFor([] { return LivingObjects::entries() == 0; }));
}

TEST_P(ChangelogViews, GarbageCollectionTakesNothingThatIsShown)
{
    show(1);
    collectGarbage();
    EXPECT_EQ(shown(), QStringLiteral("1.0 1.0"));
    const auto *first = root()->property("first").value<QObject *>();
    ASSERT_NE(first, nullptr);
    EXPECT_EQ(first->property("text").toString(), QStringLiteral("1.0 1.0"));
    scroll();
    collectGarbage();
    show(2);
}

TEST(Changelog, OldEntriesAreGoneWhenTheChangeIsTold)
{
    Shell &shell = Shell::instance();
    const LivingObjects living;
    shell.setChangelogs(changelog(1));
    const Shell::Changelogs next = changelog(2);
    qsizetype counted = 0;
    const auto connection = QObject::connect(
        &shell, &Shell::changelogsChanged, &shell, [&] { counted = LivingObjects::entries(); },
        Qt::DirectConnection);
    shell.setChangelogs(next);
    QObject::disconnect(connection);
    EXPECT_EQ(counted, 2 * entryCount);
    shell.setChangelogs({});
    EXPECT_EQ(LivingObjects::entries(), entryCount);
}

INSTANTIATE_TEST_SUITE_P(All, ChangelogViews, testing::ValuesIn(views),
                         [](const auto &row) { return std::string(row.param.name); });
