#include "shared/qml_records.h"

#include <gtest/gtest.h>

#include <QAbstractEventDispatcher>
#include <QCoreApplication>
#include <QPointer>

namespace {

class Element : public QObject
{
public:
    Element() = default;
    Element(const Element & /*other*/)
        : QObject(nullptr)
    {}
};

class Owner : public QObject
{
    Q_OBJECT

public:
    RecordList<Element> records;
    QmlRecords<Element> shown{records, *this, &Owner::changed};

    Owner() { records.append({}); }

Q_SIGNALS:
    void changed();
};

class Copies : public QmlGenerations
{
public:
    explicit Copies(const Owner &owner)
        : QmlGenerations(owner, &Owner::changed)
    {}

    QPointer<QObject> add()
    {
        QPointer<QObject> copy = new QObject;
        adopt(*copy);
        return copy;
    }

    bool anyRest() { return !QAbstractEventDispatcher::instance()->registeredTimers(this).isEmpty(); }
};

void handleEventsUntilGone(const QPointer<QObject> &copy)
{
    while (copy != nullptr) {
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    }
}

} // namespace

TEST(QmlRecords, GivesNothingForARecordThatHasGone)
{
    Owner owner;
    QQmlListProperty<Element> property = owner.shown.property(&owner);
    EXPECT_EQ(property.count(&property), 1);
    EXPECT_NE(property.at(&property, 0), nullptr);
    EXPECT_EQ(property.at(&property, 1), nullptr);
}

TEST(QmlRecords, KeepsWhatItHasGivenFromTheGarbageCollector)
{
    Owner owner;
    QQmlListProperty<Element> property = owner.shown.property(&owner);
    Element *const given = property.at(&property, 0);
    ASSERT_NE(given, nullptr);
    EXPECT_NE(given->parent(), nullptr);
    EXPECT_EQ(QJSEngine::objectOwnership(given), QJSEngine::CppOwnership);
}

TEST(QmlGenerations, TheTimerEndsWithWhatHasRested)
{
    Owner owner;
    Copies copies(owner);
    for (int round = 0; round < 2; ++round) {
        const QPointer<QObject> shown = copies.add();
        EXPECT_FALSE(copies.anyRest());
        Q_EMIT owner.changed();
        const QPointer<QObject> next = copies.add();
        QCoreApplication::processEvents();
        EXPECT_TRUE(copies.anyRest());
        EXPECT_NE(shown, nullptr);
        handleEventsUntilGone(shown);
        EXPECT_NE(next, nullptr);
        EXPECT_FALSE(copies.anyRest());
    }
}

#include "test_qml_records.moc"
