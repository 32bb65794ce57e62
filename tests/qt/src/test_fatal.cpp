#include "backend_run.h"
#include "repeats.h"
#include "shared/log.h"
#include "src/message_handler.h"

#include <gmock/gmock.h>

#include <QCoreApplication>

#include <cstdio>
#include <cstdlib>
#include <string>
#include <thread>

// A fatal message ends the process with code 1, from whichever thread it comes and whatever the others do.
// Each run is a process of its own, and there are many of them, since what goes wrong on the way out goes
// wrong now and then.

namespace {

constexpr int runs = repeats(10);

class FatalTest : public testing::Test
{
protected:
    FatalTest() { GTEST_FLAG_SET(death_test_style, "threadsafe"); }
};

[[noreturn]] void waitForTheEnd()
{
    QCoreApplication::exec();
    std::abort();
}

void endOnGuiThreadAlone()
{
    std::atexit([] { std::fputs("exit handler\n", stderr); });
    installMessageHandler();
    logFatal("%s", "Ende");
}

void endInAnExitHandler()
{
    std::atexit([] { logFatal("%s", "Nachtrag"); });
    installMessageHandler();
    logFatal("%s", "Ende");
}

void endOnAThreadOfAnExitHandler()
{
    std::atexit([] { std::jthread([] { logFatal("%s", "Nachtrag"); }).join(); });
    installMessageHandler();
    logFatal("%s", "Ende");
}

void endOnGuiThreadBesideTheInterpreter()
{
    installMessageHandler();
    BackendRun run("recording");
    run.waitForStart();
    logFatal("%s", "Ende");
}

void endOnNativeThreads()
{
    installMessageHandler();
    const std::jthread first([] { logFatal("%s", "Ende"); });
    const std::jthread second([] { logFatal("%s", "Ende"); });
    waitForTheEnd();
}

void endInPython(const char *thread)
{
    installMessageHandler();
    qputenv("TEST_FATAL", thread);
    const BackendRun run("fatal");
    waitForTheEnd();
}

void endByABadFormat()
{
    installMessageHandler();
    logFatal("%ls", L"\xD800"); // half a pair
}

} // namespace

TEST_F(FatalTest, AloneItRunsTheExitHandlers)
{
    EXPECT_EXIT(endOnGuiThreadAlone(), testing::ExitedWithCode(1), "\\[FATAL\\]\\[.*\\] Ende.*exit handler");
}

TEST_F(FatalTest, OnceMoreInAnExitHandler)
{
    EXPECT_EXIT(endInAnExitHandler(), testing::ExitedWithCode(1), "\\] Ende.*Nachtrag");
    EXPECT_EXIT(endOnAThreadOfAnExitHandler(), testing::ExitedWithCode(1), "\\] Ende.*\\] Nachtrag");
}

TEST_F(FatalTest, OnTheGuiThreadBesideTheInterpreter)
{
    for (int run = 0; run < runs; ++run) {
        EXPECT_EXIT(endOnGuiThreadBesideTheInterpreter(), testing::ExitedWithCode(1),
                    "\\[FATAL\\]\\[.*\\] Ende");
    }
}

TEST_F(FatalTest, OnTwoNativeThreadsAtOnce)
{
    for (int run = 0; run < runs; ++run) {
        EXPECT_EXIT(endOnNativeThreads(), testing::ExitedWithCode(1), "\\[FATAL\\]\\[.*\\] Ende");
    }
}

TEST_F(FatalTest, OnTheInterpreterThread)
{
    for (int run = 0; run < runs; ++run) {
        EXPECT_EXIT(endInPython("interpreter"), testing::ExitedWithCode(1),
                    "\\[FATAL\\]\\[.*\\]\\[Py\\] Ende");
    }
}

TEST_F(FatalTest, OnThreadsOfTheBackend)
{
    for (int run = 0; run < runs; ++run) {
        EXPECT_EXIT(endInPython("backend"), testing::ExitedWithCode(1), "\\[FATAL\\]\\[.*\\]\\[Py\\] Ende");
    }
}

TEST_F(FatalTest, ABadFormatIsFatalToo)
{
    EXPECT_EXIT(endByABadFormat(), testing::ExitedWithCode(1),
                "\\[FATAL\\]\\[.*\\] Konnte die Nachricht nicht formatieren \\(%ls\\)");
}
