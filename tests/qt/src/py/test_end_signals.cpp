#include "src/py/end_signals.h"

#include "backend_run.h"
#include "log_capture.h"

#include <gmock/gmock.h>

#include <cerrno>
#include <csignal>
#include <cstdlib>
#include <string>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

using testing::ElementsAre;
using testing::IsEmpty;

namespace {

/// What has arrived, as names.
std::string arrived()
{
    std::string names;
    unsigned char signal = 0;
    while (::read(EndSignals::descriptor(), &signal, 1) == 1) {
        names += std::string(EndSignals::name(signal)) + ' ';
    }
    return names;
}

bool isDefault(int signal)
{
    struct sigaction action = {};
    sigaction(signal, nullptr, &action);
    return action.sa_handler == SIG_DFL;
}

/// No process has this many descriptors open for as long as this lives.
class NoDescriptors
{
public:
    NoDescriptors()
    {
        getrlimit(RLIMIT_NOFILE, &m_before);
        rlimit none = m_before;
        none.rlim_cur = 0;
        setrlimit(RLIMIT_NOFILE, &none);
    }
    ~NoDescriptors() { setrlimit(RLIMIT_NOFILE, &m_before); }

    Q_DISABLE_COPY_MOVE(NoDescriptors)

private:
    rlimit m_before = {};
};

} // namespace

TEST(EndSignals, AreLeftAloneUntilTheyAreOpened)
{
    EXPECT_EQ(EndSignals::descriptor(), -1);
    EndSignals::claim();
    EndSignals::claimBack();
    for (const int signal : {SIGTERM, SIGHUP, SIGINT}) {
        EXPECT_TRUE(isDefault(signal)) << signal;
    }
}

TEST(EndSignals, WithoutDescriptorsTheyStayAsTheyAre)
{
#ifdef KUBELOR_SANITIZED
    GTEST_SKIP() << "the sanitizer needs descriptors of its own to look at memory";
#endif
    const LogCapture log;
    {
        const NoDescriptors none;
        EndSignals::open();
    }
    EXPECT_THAT(
        log.texts(QtCriticalMsg),
        ElementsAre(QStringLiteral("Signale beenden das Programm nicht ordentlich: Too many open files")));
    EXPECT_EQ(EndSignals::descriptor(), -1);
    EndSignals::claim();
    EXPECT_TRUE(isDefault(SIGTERM));
}

TEST(EndSignals, EachArrivesAsItsNumber)
{
    EndSignals::open();
    EXPECT_TRUE(isDefault(SIGTERM)) << "opened, not claimed";
    EndSignals::claim();
    errno = ENOENT;
    for (const int signal : {SIGINT, SIGTERM, SIGHUP, SIGTERM}) {
        std::raise(signal);
    }
    EXPECT_EQ(errno, ENOENT);
    EXPECT_EQ(arrived(), "SIGINT SIGTERM SIGHUP SIGTERM ");
    EXPECT_STREQ(EndSignals::name(SIGUSR1), "?");
}

TEST(EndSignals, AFloodLosesSomeAndStopsNobody)
{
    EndSignals::open();
    EndSignals::claim();
    constexpr int moreThanAPipeHolds = 100'000;
    for (int count = 0; count < moreThanAPipeHolds; ++count) {
        std::raise(SIGTERM);
    }
    EXPECT_FALSE(arrived().empty());
    std::raise(SIGHUP);
    EXPECT_EQ(arrived(), "SIGHUP ");
}

TEST(EndSignals, AreClaimedBackFromWhoeverTookThem)
{
    const LogCapture log;
    EndSignals::open();
    EndSignals::claim();
    EndSignals::claimBack();
    EXPECT_THAT(log.texts(QtWarningMsg), IsEmpty());
    std::signal(SIGINT, SIG_IGN);
    std::signal(SIGTERM, SIG_DFL);
    EndSignals::claimBack();
    const QString told = QStringLiteral(
        "Das Backend hat SIGTERM, SIGINT selbst behandelt; nun beendet das wieder das Programm.");
    EXPECT_THAT(log.texts(QtWarningMsg), ElementsAre(told));
    EndSignals::claimBack();
    EXPECT_THAT(log.texts(QtWarningMsg), ElementsAre(told)) << "once";
    std::raise(SIGTERM);
    std::raise(SIGINT);
    EXPECT_EQ(arrived(), "SIGTERM SIGINT ");
}

TEST(EndSignals, AForkedProcessEndsByItsOwn)
{
    EndSignals::open();
    EndSignals::claim();
    const pid_t child = fork();
    if (child == 0) {
        std::raise(SIGTERM);
        _exit(EXIT_SUCCESS);
    }
    int status = 0;
    ASSERT_EQ(waitpid(child, &status, 0), child);
    EXPECT_TRUE(WIFSIGNALED(status));
    EXPECT_EQ(WTERMSIG(status), SIGTERM);
    EXPECT_EQ(arrived(), "");
}

TEST(EndSignals, StayClaimedWhenPythonHasEnded)
{
    EndSignals::open();
    {
        BackendRun run("recording");
        run.waitForStart();
        std::raise(SIGINT);
    }
    std::raise(SIGINT);
    std::raise(SIGHUP);
    EXPECT_EQ(arrived(), "SIGINT SIGINT SIGHUP ");
}
