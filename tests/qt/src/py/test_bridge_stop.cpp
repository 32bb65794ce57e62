#include "bridge_test.h"
#include "log_capture.h"

#include <pybind11/embed.h>

#include <atomic>
#include <csignal>
#include <thread>

using testing::ElementsAre;

namespace {

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

/// A piece of memory of Python's, and whether it has let go of that.
struct WatchedMemory
{
    const void *memory = nullptr;
    std::atomic<bool> freed = false;
    PyMemAllocatorEx allocator = {};
};
WatchedMemory watched;

/// From now on; with the GIL, once.
void watch(const void *memory)
{
    watched.memory = memory;
    PyMem_GetAllocator(PYMEM_DOMAIN_RAW, &watched.allocator);
    PyMemAllocatorEx watching = watched.allocator;
    watching.free = [](void *context, void *freed) {
        watched.freed = watched.freed || freed == watched.memory;
        watched.allocator.free(context, freed);
    };
    PyMem_SetAllocator(PYMEM_DOMAIN_RAW, &watching);
}

} // namespace

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

TEST_F(BridgeTest, TheStateOfAThreadThatMayStillBeginOutlivesPython)
{
    {
        BackendRun run("recording");
        run.waitForStart();
        const pybind11::gil_scoped_acquire gil;
        watch(PyThreadState_New(PyInterpreterState_Get()));
    }
    EXPECT_NE(watched.memory, nullptr);
    EXPECT_FALSE(watched.freed);
}
