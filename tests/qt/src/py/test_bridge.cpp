#include "bridge_test.h"
#include "declared.h"
#include "log_capture.h"
#include "shared/notification_brake.h"
#include "src/py/interpr_worker.h"
#include "src/py/python_stacks.h"

#include <QCoreApplication>
#include <QEventLoop>
#include <QQmlComponent>
#include <QRegularExpression>

#include <memory>
#include <thread>

using testing::ElementsAre;
using testing::ElementsAreArray;
using testing::SizeIs;

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

TEST_F(BridgeTest, AWorkerThatIsNotTheLatestSaysSoAtItsEnd)
{
    auto former = std::make_unique<PyWorker>(nullptr);
    auto latest = std::make_unique<PyWorker>(nullptr);
    const LogCapture log;
    former.reset();
    EXPECT_THAT(log.texts(QtCriticalMsg), ElementsAre(QStringLiteral("[~PyWorker()] _pyWorker != this")));
    latest.reset();
    EXPECT_THAT(log.texts(QtCriticalMsg), SizeIs(1));
}

TEST_F(BridgeTest, StacksOfAPythonThatNeverRanAreNotWritten)
{
    testing::internal::CaptureStderr();
    PythonStacks::write();
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
}
