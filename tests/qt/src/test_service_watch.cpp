#include "src/service_watch.h"

#include "backend_run.h"
#include "brovik/auto/auto.h"
#include "brovik/gui/gui.h"
#include "eventually.h"
#include "log_capture.h"
#include "service_manager.h"

#include <gmock/gmock.h>

#include <QQuickWindow>
#include <QTemporaryDir>

#include <atomic>
#include <filesystem>
#include <functional>
#include <future>
#include <iterator>
#include <memory>
#include <utility>
#include <vector>

using namespace std::chrono_literals;
using testing::Contains;
using testing::Not;

namespace {

/// The program's own parts, asked by a service manager that is the test. A process of its own each.
class ServiceWatchTest : public testing::Test
{
protected:
    ServiceWatchTest() { Gui::instance().deliverPending(); }

    /// Receives up to this message; events are handled meanwhile.
    bool receives(const QByteArray &message)
    {
        return eventually([&] { return m_manager.receive() == message; });
    }
    /// As what has been told before would have come by now.
    bool isFedOn() { return receives("WATCHDOG=1") && receives("WATCHDOG=1") && receives("WATCHDOG=1"); }

    /// A window that has been drawn, and a backend that has answered.
    void becomeReady(ServiceWatch &service, QQuickWindow &window)
    {
        service.watchWindow(&window);
        window.show();
        answerReady();
        ASSERT_TRUE(receives("READY=1"));
    }
    /// Handles events until a line with this text has been logged.
    bool isTold(QtMsgType level, const char *text) const
    {
        return eventually([&] { return !m_log.texts(level).filter(QString::fromUtf8(text)).isEmpty(); });
    }
    /// Handles events until this part has been missed and named, lets it answer, and sees that all is well.
    template <typename Function> void expectNamed(const char *part, const Function &goOn)
    {
        EXPECT_TRUE(isTold(QtCriticalMsg, part));
        goOn();
        EXPECT_TRUE(isTold(QtWarningMsg, "Es antworten wieder alle."));
        EXPECT_TRUE(isFedOn());
    }
    /// What has not been received yet, up to the end that is told.
    std::vector<QByteArray> untilEnd()
    {
        std::vector<QByteArray> messages;
        EXPECT_TRUE(eventually([&] {
            messages.push_back(m_manager.receive());
            return messages.back() == "STOPPING=1";
        }));
        return messages;
    }
    static void answerReady() { Q_EMIT Gui::instance().toPy(Gui::Ready, QJSValue()); }

    ServiceEnvironment environment(std::chrono::milliseconds watchdog = 0ms) const
    {
        return {.notifySocket = m_path, .watchdog = watchdog};
    }

    const QTemporaryDir m_folder;
    const QByteArray m_path = m_folder.filePath(QStringLiteral("notify")).toLocal8Bit();
    const ServiceManager m_manager{m_path};
    LogCapture m_log;
};

/// A service with a backend that has started.
struct Watched
{
    explicit Watched(const ServiceEnvironment &environment)
        : service(environment)
    {
        service.watchBackend(run.bridge());
        run.waitForStart();
    }

    ServiceWatch service;
    BackendRun run{"recording"};
};

/// Keeps the interpreter thread from its work.
class Hold
{
public:
    explicit Hold(Bridge &bridge)
    {
        bridge.post([this] { m_end.get_future().wait(); });
    }
    void end() { m_end.set_value(); }

private:
    std::promise<void> m_end;
};

/// Frames that a window shows from now on.
class FrameCount
{
public:
    explicit FrameCount(QQuickWindow &window)
    {
        QObject::connect(
            &window, &QQuickWindow::frameSwapped, &window, [count = m_count] { ++*count; },
            Qt::DirectConnection);
    }

    bool reach(int count) const
    {
        return eventually([&] { return *m_count >= count; });
    }

private:
    /// The thread that draws counts, perhaps for longer than this lives.
    const std::shared_ptr<std::atomic<int>> m_count = std::make_shared<std::atomic<int>>(0);
};

/// Keeps a window from drawing while it rests.
class Painter : public QObject
{
public:
    explicit Painter(QQuickWindow &window)
        : m_window(window)
    {
        window.installEventFilter(this);
    }

    /// From now on; instead of each frame this happens.
    void rest(std::function<void()> instead) { m_instead = std::move(instead); }
    void goOn()
    {
        m_instead = {};
        m_window.update();
    }

    bool eventFilter(QObject * /*window*/, QEvent *event) override
    {
        const bool rests = m_instead && event->type() == QEvent::UpdateRequest;
        if (rests) {
            m_instead();
        }
        return rests;
    }

private:
    QQuickWindow &m_window;
    std::function<void()> m_instead;
};

std::ptrdiff_t threadCount()
{
    return std::distance(std::filesystem::directory_iterator("/proc/self/task"),
                         std::filesystem::directory_iterator());
}

} // namespace

TEST_F(ServiceWatchTest, WithoutAManagerThereIsNothing)
{
    BackendRun run("recording");
    run.waitForStart();
    QQuickWindow window;
    const std::ptrdiff_t before = threadCount();
    {
        ServiceWatch service({});
        service.watchBackend(run.bridge());
        service.watchWindow(&window);
        EXPECT_EQ(threadCount(), before);
        Gui::instance().setStatus(QStringLiteral("Unbeachtet"));
        service.excuse();
        service.pythonEnded();
        service.end();
    }
    EXPECT_EQ(m_manager.receive(), "(nothing)");
}

TEST_F(ServiceWatchTest, IsReadyWhenAFrameIsThereAndTheBackendHasAnswered)
{
    Watched program(environment());
    QQuickWindow window;
    const FrameCount frames(window);
    window.show();
    ASSERT_TRUE(frames.reach(1));
    program.service.watchWindow(&window); // which has nothing to draw any more
    Gui::instance().setStatus(QStringLiteral("Bild da"));
    EXPECT_TRUE(receives("STATUS=Bild da"));
    Q_EMIT Gui::instance().toPy(Gui::DeleteWarnings, QJSValue()); // no answer to Ready
    answerReady();
    EXPECT_TRUE(receives("READY=1"));
    answerReady();
    program.service.end();
    EXPECT_THAT(untilEnd(), Not(Contains("READY=1"))) << "it is told once";
}

TEST_F(ServiceWatchTest, ABackendThatHasNotStartedIsNotReady)
{
    {
        ServiceWatch service(environment());
        BackendRun run("init_fails");
        service.watchBackend(run.bridge());
        run.waitForStart();
        QQuickWindow window;
        service.watchWindow(&window);
        window.show();
        ASSERT_TRUE(QTest::qWaitForWindowExposed(&window));
        answerReady();
        service.end();
    }
    EXPECT_THAT(untilEnd(), Not(Contains("READY=1"))) << "what was told before the thread's end is told";
}

TEST_F(ServiceWatchTest, TheStatusIsThatOfTheSingletonsFromAnyThread)
{
    Gui::instance().setStatus(QStringLiteral("Anfang"));
    const ServiceWatch service(environment());
    EXPECT_TRUE(receives("STATUS=Anfang"));
    std::async(std::launch::async, [] {
        Auto::instance().setActive(true);
        Gui::instance().setStatus(QStringLiteral("Schritt 4"));
    }).get();
    EXPECT_TRUE(receives("STATUS=Automatik läuft, Schritt 4"));
}

TEST_F(ServiceWatchTest, IsFedWhileAllPartsAnswer)
{
    Watched program(environment(500ms));
    auto window = std::make_unique<QQuickWindow>();
    becomeReady(program.service, *window);
    const FrameCount frames(*window);
    EXPECT_TRUE(isFedOn()) << "a window that is seen";
    EXPECT_TRUE(frames.reach(5)) << "which draws for nothing else";
    window->hide();
    EXPECT_TRUE(isFedOn()) << "one that nobody sees";
    window.reset();
    EXPECT_TRUE(isFedOn()) << "none";
    program.run.bridge().stopPython();
    program.service.pythonEnded();
    EXPECT_TRUE(isFedOn()) << "without Python";
}

TEST_F(ServiceWatchTest, AWindowThatHidesOwesNoFrame)
{
    Watched program(environment(500ms));
    QQuickWindow window;
    becomeReady(program.service, window);
    Painter painter(window);
    painter.rest([&window] { window.hide(); });
    for (int hidden = 0; hidden < 3; ++hidden) {
        window.show();
        EXPECT_TRUE(eventually([&window] { return !window.isVisible(); }));
        EXPECT_TRUE(isFedOn());
    }
}

TEST_F(ServiceWatchTest, AWindowThatDoesNotDrawIsNamed)
{
    Watched program(environment(1s));
    QQuickWindow window;
    becomeReady(program.service, window);
    Painter painter(window);
    // Whatever else comes to the window is no frame.
    painter.rest([&window] { QCoreApplication::postEvent(&window, new QEvent(QEvent::User)); });
    expectNamed("Seit 750 ms steht das Zeichnen.", [&painter] { painter.goOn(); });
}

TEST_F(ServiceWatchTest, WithoutScreensOrBackendNobodyIsReady)
{
    ServiceWatch service(environment(100ms));
    service.watchWindow(nullptr);
    service.end();
    EXPECT_THAT(untilEnd(), Not(Contains("READY=1")));
}

TEST_F(ServiceWatchTest, AnInterpreterThatHangsIsNamed)
{
    Watched program(environment(1s));
    QQuickWindow window;
    becomeReady(program.service, window);
    Hold hold(program.run.bridge());
    expectNamed("Seit 750 ms steht der Interpreter-Thread.", [&hold] { hold.end(); });
}

TEST_F(ServiceWatchTest, AGuiThreadThatStandsIsNamed)
{
    Watched program(environment(1s));
    QQuickWindow window;
    becomeReady(program.service, window);
    EXPECT_TRUE(m_log.waitFor(QStringLiteral("Seit 750 ms steht der GUI-Thread."))); // standing itself
    EXPECT_TRUE(isFedOn());
    EXPECT_TRUE(m_log.waitFor(QStringLiteral("Es antworten wieder alle.")));
}
