#include "bridge_test.h"
#include "log_capture.h"
#include "src/py/backend_activity.h"

#include <pybind11/embed.h>

#include <csignal>

using testing::ElementsAre;
using testing::ElementsAreArray;
using testing::IsEmpty;

TEST_F(BridgeTest, InterpreterIsStartedWithPathArgumentsAndUtf8)
{
    BackendRun run("recording", false, {QStringLiteral("--make-stubs"), QStringLiteral("-"), QString()});
    run.waitForStart();
    EXPECT_THAT(
        run.tellings.texts().mid(0, 6),
        ElementsAre(
            QStringLiteral("sys.path ['%1', '/usr/bin']").arg(QStringLiteral(TEST_BACKEND_DIR)),
            QStringLiteral("sys.argv ['%1', '--make-stubs', '-', '']").arg(QStringLiteral(TEST_PYTHON)),
            QStringLiteral("stubs None"), QStringLiteral("file names utf-8"),
            QStringLiteral("SIGINT default_int_handler"), QStringLiteral("main init False")));
    EXPECT_TRUE(gui.controlsEnabled());
}

TEST_F(BridgeTest, ToPyBeforeTheInterpreterIsUpBlocksUntilTheStartHasEnded)
{
    BackendRun run("slow_start");
    ASSERT_TRUE(run.tellings.waitFor(QStringLiteral("main import begins")));
    EXPECT_EQ(BackendActivity::text().toStdString(), "den Import des Backends");
    gui.changePage(Gui::PageChart);
    act("brovik.gui", "Gui.toPy(Gui.Ready, null)");
    EXPECT_THAT(run.tellings.texts(),
                ElementsAre(QStringLiteral("main import begins"), QStringLiteral("main import ends"),
                            QStringLiteral("main init"),
                            QStringLiteral("main gui_value_from_cpp <GuiEnum.Ready: 0> None")));
    EXPECT_TRUE(gui.controlsEnabled());
}

TEST_F(BridgeTest, AfterAFailedStartEveryFamilyLogsItsLine)
{
    const SignalLog exceptions(gui, {"exception"});
    BackendRun run("import_fails");
    run.waitForStart();
    const LogCapture log;
    for (const Press &press : presses) {
        act(press.module, press.statement);
    }
    EXPECT_THAT(log.texts(QtCriticalMsg), ElementsAreArray(expectedCriticals()));
    ASSERT_EQ(exceptions.emissions().size(), 1U);
    const QVariantMap record = exceptions.emissions()[0].values[0].toMap();
    EXPECT_EQ(record.value(QStringLiteral("type")), QStringLiteral("RuntimeError"));
    EXPECT_TRUE(
        record.value(QStringLiteral("text")).toString().startsWith(QStringLiteral("kein Import\nZeile ")));
    EXPECT_TRUE(
        record.value(QStringLiteral("text")).toString().endsWith(QStringLiteral(" in interpr_worker.cpp")));
    EXPECT_FALSE(gui.controlsEnabled());
    EXPECT_THAT(run.tellings.texts(), IsEmpty());
}

TEST_F(BridgeTest, NoBackendShowsModuleNotFoundAndDisablesTheControls)
{
    const SignalLog exceptions(gui, {"exception"});
    const LogCapture log;
    Bridge bridge({QStringLiteral(TEST_PYTHON)}, false, QStringLiteral("/nowhere"));
    Q_EMIT gui.toPy(Gui::Ready, QJSValue());
    EXPECT_EQ(
        log.texts(QtCriticalMsg).filter(QStringLiteral("nicht gefunden")),
        QStringList({QStringLiteral("Python-Funktion gui_value_from_cpp() nicht gefunden -  pyGuiValueQJs ( "
                                    "Gui::Ready , \"undefined\" ).")}));
    ASSERT_EQ(exceptions.emissions().size(), 1U);
    const QVariantMap record = exceptions.emissions()[0].values[0].toMap();
    EXPECT_EQ(record.value(QStringLiteral("type")), QStringLiteral("ModuleNotFoundError"));
    EXPECT_TRUE(record.value(QStringLiteral("text")).toString().contains(QStringLiteral("controller")));
    EXPECT_FALSE(gui.controlsEnabled());
}

namespace {

/// How long a thread of the backend keeps the GIL if others want it, in seconds.
double lengthOfTurns()
{
    // Not by pybind11, which would read on this thread what the interpreter's thread deletes at its end: the
    // thread sanitizer does not see how Qt hands over from one to the other.
    const PyGILState_STATE gil = PyGILState_Ensure();
    const double secs = pybind11::module_::import("sys").attr("getswitchinterval")().cast<double>();
    PyGILState_Release(gil);
    return secs;
}

} // namespace

TEST_F(BridgeTest, ThreadsOfTheBackendHaveShortTurns)
{
    BackendRun run("recording");
    run.waitForStart();
    EXPECT_DOUBLE_EQ(lengthOfTurns(), 0.0005);
}

TEST_F(BridgeTest, ABackendThatHasChosenTheTurnsKeepsThem)
{
    BackendRun run("own_turns");
    run.waitForStart();
    EXPECT_DOUBLE_EQ(lengthOfTurns(), 0.02);
}

TEST_F(BridgeTest, AMissingEntryFunctionIsReportedOnceAndItsFamilyLogs)
{
    const SignalLog exceptions(gui, {"exception"});
    BackendRun run("incomplete");
    run.waitForStart();
    EXPECT_THAT(typesOf(exceptions), ElementsAre(QStringLiteral("AttributeError")));
    EXPECT_TRUE(gui.controlsEnabled());
    const LogCapture log;
    act("brovik.wifi", "Wifi.toPy(Wifi.Scan, null)");
    act("brovik.wifi", "Wifi.toPy(Wifi.Scan, null)");
    EXPECT_EQ(log.texts(QtCriticalMsg).size(), 2);
    act("brovik.gui", "Gui.toPy(Gui.Ready, null)");
    EXPECT_EQ(run.tellings.texts().constLast(),
              QStringLiteral("main gui_value_from_cpp <GuiEnum.Ready: 0> None"));
}

TEST_F(BridgeTest, FunctionsWithWrongParametersAreNamedAtTheStart)
{
    const SignalLog exceptions(gui, {"exception"});
    const LogCapture log;
    BackendRun run("wrong_parameters");
    run.waitForStart();
    const QString autoRefusal = QStringLiteral(
        "auto_value_from_cpp() hat falsche Parameter: erwartet (enum, value), gefunden (_enum)");
    const QString wifiRefusal = QStringLiteral(
        "wifi_action_from_cpp() hat falsche Parameter: erwartet (enum, value), gefunden (_enum, _value, *, "
        "_force)");
    EXPECT_THAT(log.texts(QtCriticalMsg), ElementsAre(QStringLiteral("Python-Funktion ") + autoRefusal,
                                                      QStringLiteral("Python-Funktion ") + wifiRefusal));
    ASSERT_THAT(typesOf(exceptions), ElementsAre(QStringLiteral("TypeError")));
    EXPECT_EQ(exceptions.emissions()[0].values[0].toMap().value(QStringLiteral("text")),
              QStringLiteral("Diese Aufrufe des Backends werden scheitern:\n") + autoRefusal +
                  QLatin1Char('\n') + wifiRefusal);
    EXPECT_TRUE(gui.controlsEnabled());
}

TEST_F(BridgeTest, FunctionWithWrongParametersFailsWhenItIsCalled)
{
    const auto press = [this] {
        BackendRun run("wrong_parameters");
        act("brovik.auto", "Auto_.toPy(Auto_.ToggleAuto, null)");
    };
    EXPECT_EXIT(press(), testing::KilledBySignal(SIGABRT), "takes 1 positional argument but 2 were given");
}

TEST_F(BridgeTest, InitMissingIsAnAttributeErrorAndAFailedStart)
{
    const SignalLog exceptions(gui, {"exception"});
    BackendRun run("init_missing");
    run.waitForStart();
    EXPECT_THAT(typesOf(exceptions), ElementsAre(QStringLiteral("AttributeError")));
    EXPECT_FALSE(gui.controlsEnabled());
}

TEST_F(BridgeTest, InitFailingLeavesEveryEntryFunctionUnfound)
{
    const SignalLog exceptions(gui, {"exception"});
    BackendRun run("init_fails");
    run.waitForStart();
    EXPECT_THAT(typesOf(exceptions), ElementsAre(QStringLiteral("ValueError")));
    EXPECT_FALSE(gui.controlsEnabled());
    const LogCapture log;
    for (const Press &press : presses) {
        act(press.module, press.statement);
    }
    EXPECT_THAT(log.texts(QtCriticalMsg), ElementsAreArray(expectedCriticals()));
}

TEST_F(BridgeTest, AValueOfTheHostIsInTheLineOfAMissingFunction)
{
    BackendRun run("import_fails");
    run.waitForStart();
    LogCapture log;
    Q_EMIT gui._toPyQVar(Gui::DialogData, 7);
    EXPECT_TRUE(
        log.waitFor(QStringLiteral("Python-Funktion gui_value_from_cpp() nicht gefunden -  pyGuiValueQVar ( "
                                   "Gui::DialogData , QVariant(int, 7) ).")));
}

TEST_F(BridgeTest, AnEntryThatIsNoFunctionEndsTheProcess)
{
    const auto start = [] {
        BackendRun run("not_callable");
        run.waitForStart();
    };
    EXPECT_EXIT(start(), testing::KilledBySignal(SIGABRT), "is not an instance of 'function'");
}

TEST_F(BridgeTest, AnExceptionThatLeavesAnEntryFunctionEndsTheProcess)
{
    const auto press = [] {
        BackendRun run("raising");
        run.waitForStart();
    };
    EXPECT_EXIT(press(), testing::KilledBySignal(SIGABRT), "ValueError: entkommen");
}

TEST_F(BridgeTest, AnInterpreterThatCannotStartEndsTheProcess)
{
    const auto start = [] {
        qputenv("PYTHONHOME", "/nowhere");
        BackendRun run("recording");
        run.waitForStart();
    };
    EXPECT_EXIT(start(), testing::KilledBySignal(SIGABRT), "std::runtime_error");
}

TEST_F(BridgeTest, StubRunImportsTheBackendAndNothingElse)
{
    const SignalLog controls(gui, {"controlsEnabledChanged"});
    BackendRun run("stub_run", true);
    ASSERT_TRUE(run.tellings.waitFor(QStringLiteral("stubs at import 1")));
    run.end();
    EXPECT_THAT(run.tellings.texts(), ElementsAre(QStringLiteral("stubs at import 1")));
    EXPECT_THAT(controls.emissions(), IsEmpty());
}

TEST_F(BridgeTest, StubRunOfABackendThatFailsIsAFailedStart)
{
    const SignalLog exceptions(gui, {"exception"});
    gui.setControlsEnabled(true);
    BackendRun run("import_fails", true);
    run.waitForStart();
    EXPECT_EQ(exceptions.emissions().size(), 1U);
    EXPECT_FALSE(gui.controlsEnabled());
}

TEST_F(BridgeTest, WithoutStubModeTheVariableKeepsItsValue)
{
    qputenv("BROVIK_MAKE_PY_STUBS", "aus");
    BackendRun run("recording");
    run.waitForStart();
    EXPECT_TRUE(run.tellings.texts().contains(QStringLiteral("stubs aus")));
}

TEST_F(BridgeTest, SecondStartIsRefused)
{
    BackendRun run("recording");
    EXPECT_FALSE(run.bridge().startPython());
    run.waitForStart();
}

TEST_F(BridgeTest, ForeignInterpreterIsReportedAndLeftAlone)
{
    pybind11::initialize_interpreter();
    PyThreadState *const state = PyEval_SaveThread();
    const SignalLog messages(gui, {"message"});
    {
        BackendRun run("recording");
        run.waitForStart();
        EXPECT_THAT(run.tellings.texts(), IsEmpty());
    }
    PyEval_RestoreThread(state);
    ASSERT_EQ(messages.emissions().size(), 1U);
    EXPECT_EQ(messages.emissions()[0].values,
              QVariantList({QStringLiteral("Python Interpreter"),
                            QStringLiteral("Interpreter wurde bereits initialisiert"),
                            QStringLiteral("warning"), 0}));
    EXPECT_EQ(pybind11::eval("6 * 7").cast<int>(), 42);
    pybind11::finalize_interpreter();
}
