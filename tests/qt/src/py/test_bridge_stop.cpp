#include "bridge_test.h"
#include "log_capture.h"
#include "src/py/backend_activity.h"

#include <pybind11/embed.h>

#include <algorithm>
#include <array>
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

/// Two pieces of memory of Python's, and whether it has let go of one.
class WatchedMemory
{
public:
    /// Before Python starts, and beneath all that will handle its memory.
    static void begin()
    {
        PyMem_GetAllocator(PYMEM_DOMAIN_RAW, &python);
        PyMemAllocatorEx watching = python;
        watching.free = [](void *context, void *freed) {
            anyFreed = anyFreed || (freed != nullptr &&
                                    std::find(watched.begin(), watched.end(), freed) != watched.end());
            python.free(context, freed);
        };
        PyMem_SetAllocator(PYMEM_DOMAIN_RAW, &watching);
    }

    static void add(const void *memory) { watched.at(count++) = memory; }

    static inline std::atomic<std::size_t> count = 0;
    static inline std::atomic<bool> anyFreed = false;

private:
    static inline std::array<std::atomic<const void *>, 2> watched = {};
    static inline PyMemAllocatorEx python = {};
};

/// What the interpreter's thread was busy with whenever a state was made.
QStringList activities;

/// That of a thread which has not begun.
void makeThreadState()
{
    activities.append(BackendActivity::text());
    WatchedMemory::add(PyThreadState_New(PyInterpreterState_Get()));
}

// NOLINTNEXTLINE(readability-identifier-naming): a name of Python's
PYBIND11_EMBEDDED_MODULE(_thread_state, module)
{
    module.def("make", &makeThreadState);
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

TEST_F(BridgeTest, StatesOfThreadsThatMayStillBeginOutlivePython)
{
    qputenv("PYTHONPATH", TEST_BACKEND_DIR "/../early");
    WatchedMemory::begin();
    {
        BackendRun run("recording");
        run.waitForStart();
    }
    EXPECT_EQ(WatchedMemory::count, 2U) << "one before and one after the exit functions of the host";
    EXPECT_FALSE(WatchedMemory::anyFreed);
    EXPECT_THAT(activities,
                ElementsAre(QStringLiteral("den Start von Python"), QStringLiteral("das Ende von Python")));
}
