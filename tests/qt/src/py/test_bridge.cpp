#include "backend_run.h"
#include "brovik/gui/gui.h"
#include "declared.h"
#include "log_capture.h"
#include "shared/notification_brake.h"
#include "signal_log.h"
#include "src/py/interpr_worker.h"

#include <pybind11/embed.h>

#include <gmock/gmock.h>

#include <QCoreApplication>
#include <QEventLoop>
#include <QQmlComponent>
#include <QRegularExpression>

#include <csignal>
#include <thread>

namespace {

using testing::ElementsAre;
using testing::ElementsAreArray;
using testing::IsEmpty;

class BridgeTest : public testing::Test
{
protected:
    BridgeTest()
    {
        GTEST_FLAG_SET(death_test_style, "threadsafe");
        engine.addImportPath(QStringLiteral(":/"));
        gui.deliverPending();
    }

    void act(const char *module, const char *statement)
    {
        actOnScreen(engine, QString::fromUtf8(module), QString::fromUtf8(statement));
    }

    QQmlEngine engine;
    Gui &gui = Gui::instance();
};

/// Runs `task` on a thread of its own once a thread has been told to stop.
template <typename Task> std::jthread onceStopping(const QThread &thread, Task task)
{
    return std::jthread([&thread, task] {
        while (thread.isRunning() && !thread.isInterruptionRequested()) {
            std::this_thread::yield();
        }
        task();
    });
}

struct Press
{
    const char *module;
    const char *statement;
    /// What the entry function is called with.
    const char *told;
    /// What is logged if there is no entry function.
    const char *missing;
};

/// At least one press of each family, in the order in which they are connected.
constexpr Press presses[] = {
    {"brovik.actuator", "Actuator.toggle(ActuatorEnums.MvKalt)",
     "main actuator_toggle_from_cpp <ActuatorEnum.MvKalt: 2>",
     "Python-Funktion actuator_toggle_from_cpp() nicht gefunden -  pyActuatorToggle ( ActuatorEnums::MvKalt "
     ")."},
    {"brovik.auto", "Auto_.toPy(Auto_.ToggleLwTestSaure, null)",
     "main auto_value_from_cpp <AutoEnum.ToggleLwTestSaure: 1> None",
     "Python-Funktion auto_value_from_cpp() nicht gefunden -  pyAutoValueQJs ( Auto::ToggleLwTestSaure , "
     "\"null\" )."},
    {"brovik.chart", "Chart.toPy(Chart.ChartRename, ['alt', 'neu'])",
     "main chart_action_from_cpp <ChartEnum.Rename: 4> ['alt', 'neu']",
     "Python-Funktion chart_action_from_cpp() nicht gefunden -  pyChartActionQJs ( Chart::ChartRename )."},
    {"brovik.gui", "Gui.toPy(Gui.PopupOpened, true)", "main gui_value_from_cpp <GuiEnum.PopupOpened: 3> True",
     "Python-Funktion gui_value_from_cpp() nicht gefunden -  pyGuiValueQJs ( Gui::PopupOpened , \"true\" )."},
    {"brovik.gui", "Gui.deleteWarnings()", "main gui_value_from_cpp <GuiEnum.DeleteWarnings: 1> None",
     "Python-Funktion gui_value_from_cpp() nicht gefunden -  pyGuiValueQVar ( Gui::DeleteWarnings , "
     "QVariant(Invalid) )."},
    {"brovik.sensor", "Sensor.stateChangeRequested(SensorEnums.StopBtn, true)",
     "main sensor_value_from_cpp <SensorEnum.Stop: 1> True",
     "Python-Funktion sensor_value_from_cpp() nicht gefunden -  pyDInStateChange ( SensorEnums::StopBtn , "
     "true )."},
    {"brovik.sensor", "Sensor.stateChangeRequested(SensorEnums.SensorLevel, false)",
     "main sensor_value_from_cpp <SensorEnum.Level: 2> False",
     "Python-Funktion sensor_value_from_cpp() nicht gefunden -  pyDInStateChange ( SensorEnums::SensorLevel "
     ", false "
     ")."},
    {"brovik.settings", "BrovikSettings.toPy(BrovikSettings.SettingsEnumInvalid, 'x')",
     "main settings_from_cpp <SettingsEnum.Invalid: 0> 'x'",
     "Python-Funktion settings_from_cpp() nicht gefunden -  pySettingsQJs ( Settings::SettingsEnumInvalid , "
     "\"x\" "
     ")."},
    {"brovik.shell", "Shell.toPy(Shell.Changelog, undefined)",
     "main shell_action_from_cpp <ShellActionEnum.Changelog: 2> None",
     "Python-Funktion shell_action_from_cpp() nicht gefunden -  pyShellValueQJs ( Shell::Changelog , "
     "\"undefined\" )."},
    // Passwords are not logged.
    {"brovik.shell", "Shell.toPy(Shell.ToggleTesting, 'geheim')",
     "main shell_action_from_cpp <ShellActionEnum.ToggleTesting: 6> 'geheim'",
     "Python-Funktion shell_action_from_cpp() nicht gefunden -  pyShellValueQJs ( Shell::ToggleTesting )."},
    {"brovik.simulator", "Simulator.toPy(Simulator.SimLw, 1)",
     "main simulator_value_from_cpp <SimuEnum.Lw: 3> 1.0",
     "Python-Funktion simulator_value_from_cpp() nicht gefunden -  pySimulatorValueQJs ( Simulator::SimLw , "
     "\"1\" "
     ")."},
    {"brovik.wifi", "Wifi.toPy(Wifi.Login, {name: 'a', key: 'b'})",
     "main wifi_action_from_cpp <WifiActionEnum.Login: 4> {'name': 'a', 'key': 'b'}",
     "Python-Funktion wifi_action_from_cpp() nicht gefunden -  pyWifiValue ( Wifi::Login , \"[object "
     "Object]\" )."},
    {"brovik.wifi", "Wifi.toPy(Wifi.Connect, ['Halle', 'geheim'])",
     "main wifi_action_from_cpp <WifiActionEnum.Connect: 2> ['Halle', 'geheim']",
     "Python-Funktion wifi_action_from_cpp() nicht gefunden -  pyWifiValue ( Wifi::Connect , \"Halle\" )."},
};

/// The types of the exceptions that were shown.
QStringList typesOf(const SignalLog &exceptions)
{
    QStringList result;
    for (const SignalLog::Emission &shown : exceptions.emissions()) {
        result.append(shown.values[0].toMap().value(QStringLiteral("type")).toString());
    }
    return result;
}

QStringList expectedTellings()
{
    QStringList result;
    for (const Press &press : presses) {
        result.append(QString::fromUtf8(press.told));
    }
    return result;
}

QStringList expectedCriticals()
{
    QStringList result;
    for (const Press &press : presses) {
        result.append(QString::fromUtf8(press.missing));
    }
    return result;
}

} // namespace

TEST_F(BridgeTest, EveryFamilyReachesItsEntryFunctionInOrderOnTheInterpreterThread)
{
    BackendRun run("recording");
    run.waitForStart();
    const qsizetype before = run.tellings.texts().size();
    for (const Press &press : presses) {
        act(press.module, press.statement);
    }
    EXPECT_THAT(run.tellings.texts().mid(before), ElementsAreArray(expectedTellings()));
    ASSERT_EQ(run.tellings.threads().size(), 1);
    EXPECT_NE(run.tellings.threads().constFirst(), QThread::currentThread());
}

TEST_F(BridgeTest, APressThatCarriesAScriptValueReturnsOnceItIsHandled)
{
    BackendRun run("recording");
    run.waitForStart();
    for (const Press &press : presses) {
        if (QByteArray(press.statement).contains(".toPy(")) {
            act(press.module, press.statement);
            EXPECT_EQ(run.tellings.texts().constLast(), QString::fromUtf8(press.told));
        }
    }
}

TEST_F(BridgeTest, ABackendThatNeverImportsTheModuleGetsItsEnums)
{
    testing::internal::CaptureStdout();
    {
        Bridge bridge({QStringLiteral(TEST_PYTHON)}, false, QStringLiteral(TEST_BACKEND_DIR "/../unaware"));
        act("brovik.actuator", "Actuator.toggle(ActuatorEnums.MvKalt)");
        act("brovik.gui", "Gui.toPy(Gui.PopupOpened, true)");
    }
    EXPECT_EQ(testing::internal::GetCapturedStdout(),
              "<ActuatorEnum.MvKalt: 2>\n<GuiEnum.PopupOpened: 3> True\n");
}

TEST_F(BridgeTest, ValuesOfAScreenArriveConverted)
{
    struct Row
    {
        const char *script;
        const char *python;
    };
    constexpr Row rows[] = {
        {"({\"3\": {a: true}})", "{'3': {'a': True}}"},
        {"1", "1.0"},
        {"[]", "[]"},
        {"({})", "{}"},
        {"undefined", "None"},
        {"null", "None"},
        {"[1, ['zwei', null], true]", "[1.0, ['zwei', None], True]"},
        {"new Date(0)", "{}"},
        {"Qt.createQmlObject('import QtQml; QtObject { property int n: 2 }', probe)",
         "{'objectName': '', 'n': 2.0, 'objectNameChanged': {}, 'nChanged': {}}"},
        {"'ä€😀'", "'ä€😀'"},
    };
    BackendRun run("recording");
    for (const Row &row : rows) {
        const QString statement = QStringLiteral("Gui.toPy(Gui.DialogData, %1)");
        actOnScreen(engine, QStringLiteral("brovik.gui"), statement.arg(QString::fromUtf8(row.script)));
        EXPECT_EQ(run.tellings.texts().constLast(),
                  QStringLiteral("main gui_value_from_cpp <GuiEnum.DialogData: 4> ") +
                      QString::fromUtf8(row.python))
            << row.script;
    }
}

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
    Bridge bridge({QStringLiteral(TEST_PYTHON)}, false, QStringLiteral("/nowhere"));
    Q_EMIT gui.toPy(Gui::Ready, QJSValue());
    ASSERT_EQ(exceptions.emissions().size(), 1U);
    const QVariantMap record = exceptions.emissions()[0].values[0].toMap();
    EXPECT_EQ(record.value(QStringLiteral("type")), QStringLiteral("ModuleNotFoundError"));
    EXPECT_TRUE(record.value(QStringLiteral("text")).toString().contains(QStringLiteral("controller")));
    EXPECT_FALSE(gui.controlsEnabled());
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

TEST_F(BridgeTest, StopTwiceRunsTheHooksTwiceAndTheDestructorWarns)
{
    QStringList hooks;
    BackendRun run("recording");
    run.waitForStart();
    run.bridge().addPreStopHook([&] { hooks.append(QStringLiteral("before 1")); });
    run.bridge().addPreStopHook([&] { hooks.append(QStringLiteral("before 2")); });
    run.bridge().addPostStopHook(
        [&] { hooks.append(Py_IsInitialized() != 0 ? QStringLiteral("running") : QStringLiteral("gone")); });
    EXPECT_TRUE(run.bridge().stopPython());
    EXPECT_FALSE(run.bridge().stopPython());
    const QStringList once{QStringLiteral("before 1"), QStringLiteral("before 2"), QStringLiteral("gone")};
    EXPECT_EQ(hooks, once + once);
    const LogCapture log;
    run.end();
    EXPECT_EQ(hooks, once + once + once);
    EXPECT_THAT(
        log.texts(QtWarningMsg),
        ElementsAre(QStringLiteral("Interpreter wurde im Bridge-Destruktor nicht erfolgreich gestoppt")));
}

TEST_F(BridgeTest, AnEmptyHookRaises)
{
    const auto stop = [] {
        BackendRun run("recording");
        run.bridge().addPreStopHook({});
        run.bridge().stopPython();
    };
    EXPECT_EXIT(stop(), testing::KilledBySignal(SIGABRT), "bad_function_call");
}

TEST_F(BridgeTest, CallsQueuedAtTheStopAreDropped)
{
    BackendRun run("held");
    run.waitForStart();
    for (int press = 0; press < 3; ++press) {
        act("brovik.actuator", "Actuator.toggle(ActuatorEnums.MvKalt)");
    }
    act("brovik.sensor", "Sensor.stateChangeRequested(SensorEnums.StartBtn, true)");
    act("brovik.gui", "Gui.deleteWarnings()");
    ASSERT_TRUE(run.tellings.waitFor(QStringLiteral("entered")));
    QThread *const interpreter = run.tellings.threads().constFirst();
    const std::jthread release = onceStopping(*interpreter, [this] { gui.changePage(Gui::PageChart); });
    const qsizetype before = run.tellings.texts().size();
    EXPECT_TRUE(run.bridge().stopPython());
    EXPECT_THAT(run.tellings.texts().mid(before), ElementsAre(QStringLiteral("left")));
}

TEST_F(BridgeTest, StopWaitsForABackendThreadAndRunsExitFunctions)
{
    BackendRun run("waiting_thread");
    run.waitForStart();
    QThread *const interpreter = run.tellings.threads().constFirst();
    const std::jthread release = onceStopping(*interpreter, [this] { gui.changePage(Gui::PageChart); });
    const qsizetype before = run.tellings.texts().size();
    EXPECT_TRUE(run.bridge().stopPython());
    EXPECT_THAT(run.tellings.texts().mid(before),
                ElementsAre(QStringLiteral("other thread ends"), QStringLiteral("main atexit")));
    EXPECT_EQ(Py_IsInitialized(), 0);
}

TEST_F(BridgeTest, FloodOfWritesMessagesAndExceptionsLosesNothing)
{
    constexpr int threads = 4;
    constexpr int writes = 2000;
    constexpr int messagesOfAThread = writes / 20 + 1;
    const LogCapture log;
    QQmlComponent component(&engine);
    component.setData("import QtQml\nimport brovik.gui\n"
                      "QtObject { id: root\n property string status: Gui.status\n property int messages\n"
                      "property int exceptions\n property int longest\n"
                      "property Connections connections: Connections { target: Gui\n"
                      "function onMessage(title: string, text: string) { root.messages++;"
                      " root.longest = Math.max(root.longest, text.length) }\n"
                      "function onException(error) { root.exceptions++ } } }",
                      QUrl());
    const std::unique_ptr<QObject> screen(component.create());
    ASSERT_NE(screen, nullptr) << qPrintable(component.errorString());

    std::atomic<int> changes = 0;
    QObject::connect(
        &gui, &Gui::statusChanged, &engine, [&] { ++changes; }, Qt::DirectConnection);
    BackendRun run("flooding");
    run.waitForStart();
    for (const Press &press : presses) { // one of them starts the flood
        act(press.module, press.statement);
    }
    ASSERT_TRUE(run.tellings.waitFor(QStringLiteral("flooded")));
    run.end();
    QCoreApplication::processEvents();

    EXPECT_EQ(changes, threads * writes);
    EXPECT_EQ(screen->property("messages").toInt(), threads * messagesOfAThread);
    EXPECT_EQ(screen->property("longest").toInt(), 10'000'000);
    EXPECT_EQ(screen->property("status").toString(), gui.status());
    // One of the call that waits for the start, and one of each press.
    EXPECT_EQ(screen->property("exceptions").toInt(), 1 + static_cast<int>(std::size(presses)));
    EXPECT_EQ(gui.status2().size(), 10'000'001);
    EXPECT_EQ(log.texts(QtInfoMsg).filter(QRegularExpression(QStringLiteral("^x{100}"))).size(), threads);
}

TEST_F(BridgeTest, NoCallOfTheBackendIsHeldBack)
{
    const NotificationBrake &brake = NotificationBrake::instance();
    BackendRun run("telling_much");
    run.waitForStart();
    QEventLoop loop;
    const auto press = [&] {
        // The brake learns that the event loop runs.
        std::jthread([this] { gui.setStatus(QStringLiteral("one change")); }).join();
        while (brake.waiting() > 0) {
            QCoreApplication::processEvents();
        }
        act("brovik.gui", "Gui.toPy(Gui.PopupOpened, true)");
        loop.quit();
    };
    QMetaObject::invokeMethod(&engine, press, Qt::QueuedConnection);
    loop.exec();

    EXPECT_TRUE(run.tellings.texts().contains(QStringLiteral("told")));
    EXPECT_GE(brake.waiting(), 40'000);
    EXPECT_EQ(brake.timesHeld(), 0);
}

TEST_F(BridgeTest, InterfaceIsDeclaredInOrder)
{
    EXPECT_THAT(declaredSignals(Bridge::staticMetaObject), ElementsAre("serverConnectionStateChanged(bool)"));
    EXPECT_THAT(declaredInvokables(Bridge::staticMetaObject),
                ElementsAre("bool isServerConnected()", "QString createUuid()"));
    EXPECT_THAT(declaredProperties(Bridge::staticMetaObject),
                ElementsAre("bool debug constant",
                            "bool serverConnected -> serverConnectionStateChanged(bool)",
                            "QString platform constant"));
    EXPECT_THAT(declaredSignals(PyWorker::staticMetaObject), ElementsAre("exception(QVariantMap)"));
    EXPECT_THAT(declaredInvokables(PyWorker::staticMetaObject),
                ElementsAre("void pyActuatorToggle(ActuatorEnums::ActuatorEnum)",
                            "void pyAutoValueQJs(Auto::AutoEnum,QJSValue)",
                            "void pyChartActionQJs(Chart::ChartEnum,QJSValue)",
                            "void pyDInStateChange(SensorEnums::SensorEnum,bool)",
                            "void pyGuiValueQJs(Gui::GuiValueEnum,QJSValue)",
                            "void pyGuiValueQVar(Gui::GuiValueEnum,QVariant)",
                            "void pyShellValueQJs(Shell::ShellAction,QJSValue)",
                            "void pySimulatorValueQJs(SimulatorEnum,QJSValue)",
                            "void pySettingsQJs(Settings::SettingsEnum,QJSValue)",
                            "void pyWifiValue(Wifi::WifiAction,QJSValue)", "bool initInterpreter()"));
}

TEST_F(BridgeTest, TheSimulatorsEnumHasTwoNames)
{
    static_assert(std::is_same_v<SimulatorEnum, Simulator::SimEnum>);
    const QMetaObject &worker = PyWorker::staticMetaObject;
    const int slot = worker.indexOfSlot("pySimulatorValueQJs(SimulatorEnum,QJSValue)");
    ASSERT_GE(slot, 0);
    EXPECT_EQ(worker.method(slot).parameterMetaType(0), QMetaType::fromType<Simulator::SimEnum>());
}

TEST_F(BridgeTest, ConstantsAndUuid)
{
    BackendRun run("recording");
    run.waitForStart();
    EXPECT_EQ(run.bridge().property("debug"), false);
    EXPECT_EQ(run.bridge().property("serverConnected"), false);
    EXPECT_EQ(run.bridge().property("platform"), QStringLiteral("raspi"));
    EXPECT_FALSE(run.bridge().isServerConnected());
    const QRegularExpression uuid(QStringLiteral("^\\{[0-9a-f]{8}(-[0-9a-f]{4}){3}-[0-9a-f]{12}\\}$"));
    EXPECT_TRUE(uuid.match(run.bridge().createUuid()).hasMatch());
    EXPECT_NE(run.bridge().createUuid(), run.bridge().createUuid());
}
