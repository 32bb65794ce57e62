#include "src/py/uncaught_errors.h"

#include "bridge_test.h"
#include "log_capture.h"
#include "src/py/warning_budget.h"

#include <pybind11/embed.h>

using testing::AllOf;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::StartsWith;

namespace {

/// A run of the backend `dying`, which fails where the test says. The GUI thread stands still meanwhile.
class UncaughtErrorsTest : public BridgeTest
{
protected:
    void fail(const char *place)
    {
        run.waitForStart();
        log.clear();
        act("brovik.gui",
            qPrintable(QStringLiteral("Gui.toPy(Gui.DialogData, '%1')").arg(QLatin1String(place))));
    }

    /// What one exception was shown with.
    QVariant shown(const char *key) const
    {
        const auto emissions = exceptions.emissions();
        return emissions.size() == 1 ? emissions[0].values[0].toMap().value(QString::fromLatin1(key))
                                     : QVariant();
    }

    std::vector<std::string> criticals() const
    {
        std::vector<std::string> result;
        for (const QString &text : log.texts(QtCriticalMsg)) {
            result.push_back(text.toStdString());
        }
        return result;
    }

    bool told(const char *text) const { return run.tellings.texts().contains(QString::fromUtf8(text)); }

    LogCapture log;
    const SignalLog exceptions{gui, {"exception"}};
    BackendRun run{"dying"};
};

const QString pump = QStringLiteral("falsch\nDer Thread Pumpe ist gestorben.");

} // namespace

TEST_F(UncaughtErrorsTest, DeadThreadIsShownWithItsName)
{
    fail("thread");
    EXPECT_EQ(shown("type"), QStringLiteral("ValueError"));
    EXPECT_EQ(shown("text"), pump);
    EXPECT_EQ(shown("withTraceback"), true);
    EXPECT_EQ(shown("trace").toList().constLast().toMap().value(QStringLiteral("func")),
              QStringLiteral("_fail"));
    EXPECT_THAT(criticals(), ElementsAre(AllOf(StartsWith("Der Thread Pumpe ist gestorben.\nTraceback"),
                                               HasSubstr("ValueError: falsch"))));
    EXPECT_FALSE(exceptions.emissions()[0].onGuiThread);
}

TEST_F(UncaughtErrorsTest, SystemExitIsSilent)
{
    fail("exit");
    EXPECT_THAT(exceptions.emissions(), IsEmpty());
    EXPECT_THAT(log.messages(), IsEmpty());
}

TEST_F(UncaughtErrorsTest, HookOfTheBackendTakesItsPlace)
{
    fail("own hook");
    EXPECT_TRUE(told("own hook falsch"));
    EXPECT_THAT(exceptions.emissions(), IsEmpty());
    EXPECT_THAT(criticals(), IsEmpty());
}

TEST_F(UncaughtErrorsTest, UnreadableExceptionIsShownAllTheSame)
{
    fail("unreadable");
    EXPECT_EQ(shown("type"), QStringLiteral("_Unreadable"));
    EXPECT_THAT(shown("text").toString().toStdString(),
                AllOf(StartsWith("Der Text der Exception ist nicht zu lesen: RuntimeError: kein Text"),
                      HasSubstr("Der Thread Pumpe ist gestorben.")));
    EXPECT_THAT(criticals(), ElementsAre(StartsWith("Der Thread Pumpe ist gestorben.\nTraceback")));
}

TEST_F(UncaughtErrorsTest, ThreadWithoutANameHasAQuestionMark)
{
    fail("nameless");
    EXPECT_EQ(shown("text"), QStringLiteral("falsch\nDer Thread ? ist gestorben."));
}

TEST_F(UncaughtErrorsTest, HookThatIsCalledWithoutAThread)
{
    fail("elsewhere");
    EXPECT_EQ(shown("text"), QStringLiteral("fremd\nDer Thread ? ist gestorben."));
    EXPECT_EQ(shown("withTraceback"), false);
}

TEST_F(UncaughtErrorsTest, FloodOfDeadThreadsIsLoggedAndNotPiledUp)
{
    constexpr int threads = 2'000;
    fail("flood");
    const auto emissions = exceptions.emissions();
    ASSERT_EQ(emissions.size(), static_cast<std::size_t>(WarningBudget::most));
    for (std::size_t number = 0; number + 1 < emissions.size(); ++number) {
        EXPECT_EQ(emissions[number].values[0].toMap().value(QStringLiteral("text")), pump);
    }
    EXPECT_EQ(emissions.back().values[0].toMap().value(QStringLiteral("text")),
              pump + QStringLiteral("\nWeitere Fehler dieser Art stehen vorerst nur im Log."));
    EXPECT_EQ(log.texts(QtCriticalMsg).size(), threads);
}

TEST_F(UncaughtErrorsTest, ThreadThatDiesWhilePythonEnds)
{
    fail("late");
    gui.changePage(Gui::PageChart);
    run.end();
    EXPECT_EQ(shown("text"), pump);
}

TEST_F(UncaughtErrorsTest, WhatCannotBeRaisedIsLogged)
{
    fail("undead");
    EXPECT_THAT(criticals(),
                ElementsAre(AllOf(StartsWith("Exception ignored in: <function _Undead.__del__ at "),
                                  HasSubstr("Traceback"), HasSubstr("ValueError: untot"))));
    EXPECT_THAT(exceptions.emissions(), IsEmpty());
}

TEST_F(UncaughtErrorsTest, TheHostDoesWithoutAsyncio)
{
    run.waitForStart();
    EXPECT_TRUE(told("asyncio False"));
}

TEST_F(UncaughtErrorsTest, LostTaskIsShownAndLoggedAsEver)
{
    fail("task");
    EXPECT_EQ(shown("type"), QStringLiteral("ValueError"));
    EXPECT_EQ(shown("text"), QStringLiteral("falsch\nasyncio: Task exception was never retrieved (Netz)"));
    EXPECT_EQ(shown("withTraceback"), true);
    EXPECT_THAT(criticals(), ElementsAre(StartsWith("asyncio: Task exception was never retrieved (Netz)\n")));
    EXPECT_TRUE(told("asyncio has written True"));
}

TEST_F(UncaughtErrorsTest, CallbackThatRaisesIsShown)
{
    fail("callback");
    EXPECT_THAT(shown("text").toString().toStdString(),
                StartsWith("falsch\nasyncio: Exception in callback _fail"));
    EXPECT_TRUE(told("asyncio has written True"));
}

TEST_F(UncaughtErrorsTest, LoopThatHasOnlyATextIsShown)
{
    fail("text");
    EXPECT_EQ(shown("type"), QStringLiteral("RuntimeError"));
    EXPECT_EQ(shown("text"), QStringLiteral("nur Text\nasyncio: nur Text"));
    EXPECT_EQ(shown("withTraceback"), false);
    EXPECT_TRUE(told("asyncio has written True"));
}

TEST_F(UncaughtErrorsTest, HandlerOfTheBackendTakesItsPlace)
{
    fail("own handler");
    EXPECT_TRUE(told("own handler"));
    EXPECT_TRUE(told("asyncio has written False"));
    EXPECT_THAT(exceptions.emissions(), IsEmpty());
}

TEST_F(UncaughtErrorsTest, WhatTheBackendsHandlerPassesOnIsWrittenOnly)
{
    fail("passing handler");
    EXPECT_TRUE(told("own handler"));
    EXPECT_TRUE(told("asyncio has written True"));
    EXPECT_THAT(exceptions.emissions(), IsEmpty());
}

TEST_F(UncaughtErrorsTest, HandlerThatFailsItselfIsShown)
{
    fail("failing handler");
    EXPECT_EQ(shown("type"), QStringLiteral("OSError"));
    EXPECT_EQ(shown("text"), QStringLiteral("Handler\nasyncio: Unhandled error in exception handler"));
}

TEST_F(BridgeTest, ThreadThatDiesDuringTheImportIsShown)
{
    const SignalLog exceptions(gui, {"exception"});
    qputenv("TEST_AT_IMPORT", "1");
    BackendRun run("dying");
    run.waitForStart();
    EXPECT_THAT(typesOf(exceptions), ElementsAre(QStringLiteral("ValueError")));
}

TEST_F(BridgeTest, LoopsThatWereImportedBeforeAreWatchedToo)
{
    const SignalLog exceptions(gui, {"exception"});
    const pybind11::scoped_interpreter interpreter(false);
    pybind11::exec("import asyncio");
    showUncaughtErrors();
    pybind11::exec("loop = asyncio.new_event_loop()\n"
                   "loop.call_exception_handler({'message': 'nur Text'})\n"
                   "loop.close()");
    EXPECT_THAT(typesOf(exceptions), ElementsAre(QStringLiteral("RuntimeError")));
}
