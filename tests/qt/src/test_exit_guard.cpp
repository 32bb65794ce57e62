#include "src/exit_guard.h"

#include "shared/gui_thread.h"

#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QThread>
#include <QTimer>

#include <cstdlib>
#include <functional>
#include <iostream>
#include <memory>
#include <unistd.h>

namespace {

constexpr int status = 3;

void tell(const char *text)
{
    std::cerr << text << (onGuiThread() ? " on the GUI thread" : " elsewhere") << '\n';
}

/// Each test is a process of its own, which tells what happens and is ended by something.
class ExitGuardTest : public testing::Test
{
protected:
    ExitGuardTest() { GTEST_FLAG_SET(death_test_style, "threadsafe"); }

    /// Within an event loop, as long as somebody guards it.
    static void run(const std::function<void()> &body)
    {
        std::atexit([] { std::cerr << "handlers\n"; });
        std::cerr << "begun\n";
        const ExitGuard guard([](const char *cause) { tell(cause); }, [] { tell("end"); });
        QTimer::singleShot(0, body);
        QCoreApplication::exec();
    }

    static void runElsewhere(const std::function<void()> &body)
    {
        run([&] {
            static std::unique_ptr<QThread> thread(QThread::create(body));
            thread->start();
        });
    }
};

} // namespace

TEST_F(ExitGuardTest, EndsInOrderBeforeTheProcessDoes)
{
    EXPECT_EXIT(run([] { std::exit(status); }), testing::ExitedWithCode(status),
                "begun\nexit.3. on the GUI thread\nend on the GUI thread\n$");
    EXPECT_EXIT(run([] { _exit(status); }), testing::ExitedWithCode(status),
                "begun\n_exit.3. on the GUI thread\nend on the GUI thread\n$");
}

TEST_F(ExitGuardTest, WhatEndsTheProcessElsewhereWaitsForTheGuiThread)
{
    EXPECT_EXIT(runElsewhere([] { std::exit(status); }), testing::ExitedWithCode(status),
                "begun\nexit.3. elsewhere\nend on the GUI thread\n$");
    EXPECT_EXIT(runElsewhere([] { _exit(status); }), testing::ExitedWithCode(status),
                "begun\n_exit.3. elsewhere\nend on the GUI thread\n$");
}

TEST_F(ExitGuardTest, AnEndThatEndsTheProcessIsNotBegunAgain)
{
    const auto endsAgain = [] {
        std::cerr << "begun\n";
        const ExitGuard guard([](const char *cause) { tell(cause); },
                              [] {
                                  tell("end");
                                  _exit(status);
                              });
        std::exit(EXIT_SUCCESS);
    };
    EXPECT_EXIT(endsAgain(), testing::ExitedWithCode(status),
                "begun\nexit.0. on the GUI thread\nend on the GUI thread\n_exit.3. on the GUI thread\n$");
}

TEST_F(ExitGuardTest, WhoLeavesAtOnceIsNotHeldUp)
{
    EXPECT_EXIT(run([] { leaveAtOnce(status); }), testing::ExitedWithCode(status), "begun\n$");
}

TEST_F(ExitGuardTest, WithoutAGuardAProcessEndsAsEver)
{
    const auto unguarded = [](const std::function<void()> &end) {
        run([] { QCoreApplication::quit(); });
        end();
    };
    EXPECT_EXIT(unguarded([] { std::exit(status); }), testing::ExitedWithCode(status), "begun\nhandlers\n$");
    EXPECT_EXIT(unguarded([] { _exit(status); }), testing::ExitedWithCode(status), "begun\n$");
}

TEST_F(ExitGuardTest, AForkIsAProcessOfItsOwn)
{
    const auto forks = [] {
        if (fork() == 0) {
            _exit(EXIT_SUCCESS);
        }
        std::exit(status);
    };
    EXPECT_EXIT(run(forks), testing::ExitedWithCode(status),
                "begun\nexit.3. on the GUI thread\nend on the GUI thread\n$");
}
