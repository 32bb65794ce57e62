#include "backend_run.h"
#include "brovik/gui/gui.h"
#include "repeats.h"

#include <gmock/gmock.h>

#include <QFile>
#include <QTemporaryDir>

#include <cstdlib>

// The operator switches the machine off while daemon threads of the backend are inside a function of the
// module that has called back into Python: Python ends, then the command runs, then the process. Each run is
// a process of its own, and there are many of them, since what goes wrong depends on where the threads are.

/// What a parked thread holds is never given back, and no leak.
extern "C" [[gnu::visibility("default")]] const char *__asan_default_options()
{
    return "detect_leaks=0";
}

namespace {

constexpr int runs = repeats(20);

/// A `poweroff` that says that it ran comes first on the path.
class FakePoweroff
{
public:
    FakePoweroff()
    {
        QFile command(m_directory.filePath(QStringLiteral("poweroff")));
        const bool written = command.open(QIODevice::WriteOnly) &&
                             command.write("#!/bin/sh\necho 'powered off' >&2\n") > 0 &&
                             command.setPermissions(QFile::ReadOwner | QFile::ExeOwner);
        if (!written) {
            std::abort();
        }
        qputenv("PATH", m_directory.path().toLocal8Bit() + ':' + qgetenv("PATH"));
    }

private:
    QTemporaryDir m_directory;
};

[[noreturn]] void powerOffBesideDaemons(const char *function)
{
    qputenv("TEST_DAEMONS", function);
    {
        const FakePoweroff command;
        BackendRun run("daemons");
        run.waitForStart();
        Gui::instance().setBackendControl(&run.bridge());
        Gui::instance().poweroff();
        Gui::instance().setBackendControl(nullptr);
    }
    std::exit(EXIT_SUCCESS);
}

class FinalisationTest : public testing::Test
{
protected:
    FinalisationTest() { GTEST_FLAG_SET(death_test_style, "threadsafe"); }

    void expectOrderlyEnds(const char *function)
    {
        for (int run = 0; run < runs && !HasFailure(); ++run) {
            EXPECT_EXIT(powerOffBesideDaemons(function), testing::ExitedWithCode(EXIT_SUCCESS),
                        "powered off\n");
        }
    }
};

} // namespace

TEST_F(FinalisationTest, InForwardException)
{
    expectOrderlyEnds("forward_exception");
}

TEST_F(FinalisationTest, InStr)
{
    expectOrderlyEnds("str");
}

TEST_F(FinalisationTest, InRepr)
{
    expectOrderlyEnds("repr");
}

TEST_F(FinalisationTest, InIter)
{
    expectOrderlyEnds("iter");
}

TEST_F(FinalisationTest, InLen)
{
    expectOrderlyEnds("len");
}

TEST_F(FinalisationTest, InExceptHook)
{
    expectOrderlyEnds("excepthook");
}
