#include "brovik/gui/in_turn.h"
#include "log_capture.h"
#include "shared/notification_brake.h"
#include "standing_clock.h"

#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QJSEngine>

namespace {

class InTurnTest : public testing::Test
{
protected:
    InTurnTest()
    {
        QObject::connect(&time, &QObject::objectNameChanged,
                         [] { StandingClock::advance(InTurn::longestTurn + std::chrono::milliseconds(1)); });
        for (QObject *object : {static_cast<QObject *>(&time), static_cast<QObject *>(&inTurn)}) {
            QJSEngine::setObjectOwnership(object, QJSEngine::CppOwnership);
        }
        engine.globalObject().setProperty(QStringLiteral("time"), engine.newQObject(&time));
        engine.globalObject().setProperty(QStringLiteral("inTurn"), engine.newQObject(&inTurn));
        engine.evaluate(QStringLiteral("var notes = []; function takeLong(number) {"
                                       "notes.push(number); time.objectName = number; }"));
    }

    QJSValue function(const QString &body)
    {
        return engine.evaluate(QStringLiteral("(() => { %1 })").arg(body));
    }

    void run(const QString &body) { inTurn.run(function(body)); }

    /// What the functions have noted so far.
    QString notes() { return engine.evaluate(QStringLiteral("notes.join()")).toString(); }

    const StandingClock clock;
    QJSEngine engine;
    QObject time; ///< Passes when it gets another name.
    InTurn inTurn;
};

} // namespace

TEST_F(InTurnTest, WhatFitsIntoTheTurnIsDoneAtOnce)
{
    run(QStringLiteral("notes.push(1)"));
    run(QStringLiteral("notes.push(2)"));
    EXPECT_EQ(notes(), QStringLiteral("1,2"));
    EXPECT_EQ(inTurn.waiting(), 0);
}

TEST_F(InTurnTest, TheRestIsDoneInTheNextTurnsInItsOrder)
{
    for (int number = 1; number <= 4; ++number) {
        run(QStringLiteral("takeLong(%1)").arg(number));
    }
    EXPECT_EQ(notes(), QStringLiteral("1"));
    QCoreApplication::processEvents();
    EXPECT_EQ(notes(), QStringLiteral("1,2"));
    QCoreApplication::processEvents();
    EXPECT_EQ(notes(), QStringLiteral("1,2,3"));
    QCoreApplication::processEvents();
    EXPECT_EQ(notes(), QStringLiteral("1,2,3,4"));
}

TEST_F(InTurnTest, WhoComesLaterDoesNotOvertake)
{
    run(QStringLiteral("takeLong(1)"));
    run(QStringLiteral("takeLong(2)"));
    run(QStringLiteral("notes.push(3)"));
    EXPECT_EQ(notes(), QStringLiteral("1"));
    while (inTurn.waiting() > 0) {
        QCoreApplication::processEvents();
    }
    EXPECT_EQ(notes(), QStringLiteral("1,2,3"));
}

TEST_F(InTurnTest, AFunctionMayAskForAnotherOne)
{
    run(QStringLiteral("takeLong(1); inTurn.run(() => notes.push(2))"));
    EXPECT_EQ(notes(), QStringLiteral("1"));
    QCoreApplication::processEvents();
    EXPECT_EQ(notes(), QStringLiteral("1,2"));
}

TEST_F(InTurnTest, WhatWaitsIsOnTheBrakesAccountUntilItIsDoneOrGone)
{
    const NotificationBrake &brake = NotificationBrake::instance();
    const qint64 before = brake.waiting();
    run(QStringLiteral("takeLong(1)"));
    run(QStringLiteral("takeLong(2)"));
    EXPECT_GT(brake.waiting(), before);
    QCoreApplication::processEvents();
    EXPECT_EQ(brake.waiting(), before);
    {
        InTurn ofAnotherEngine;
        ofAnotherEngine.run(function(QStringLiteral("takeLong(3)")));
        ofAnotherEngine.run(function(QStringLiteral("takeLong(4)")));
        EXPECT_GT(brake.waiting(), before);
    }
    EXPECT_EQ(brake.waiting(), before);
    EXPECT_EQ(notes(), QStringLiteral("1,2,3"));
}

TEST_F(InTurnTest, AnExceptionIsLoggedAndTheOthersHaveTheirTurn)
{
    const LogCapture log;
    run(QStringLiteral("throw new Error('kein Dialog')"));
    run(QStringLiteral("notes.push(1)"));
    ASSERT_EQ(log.texts(QtWarningMsg).size(), 1);
    EXPECT_TRUE(log.texts(QtWarningMsg)[0].endsWith(QStringLiteral("Error: kein Dialog")));
    EXPECT_EQ(notes(), QStringLiteral("1"));
}
