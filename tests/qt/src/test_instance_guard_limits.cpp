// For how long the guard waits at most for each of those it asks.

#include "instance_guard_test.h"
#include "recorded_waits.h"
#include "standing_clock.h"

#include <QLocalServer>

#include <algorithm>

using namespace std::chrono_literals;
using testing::ElementsAre;
using testing::IsEmpty;

namespace {

/// With a clock that stands still, what is left of a limit is all of it.
class InstanceGuardLimits : public InstanceGuardTest
{
protected:
    /// Each limit once, in the order in which they came first.
    std::vector<RecordedWaits::Limit> limits() const
    {
        std::vector<RecordedWaits::Limit> result = waits.ownLimits();
        result.erase(std::unique(result.begin(), result.end()), result.end());
        return result;
    }

    const StandingClock clock;
    RecordedWaits waits;
};

} // namespace

TEST_F(InstanceGuardLimits, APeerThatReadsNothingIsWaitedForHalfAMinute)
{
    install("exit 0");
    waits.readNothing();
    QLocalServer server;
    ASSERT_TRUE(server.listen(m_directory.filePath(QStringLiteral("raise.sock"))));
    EXPECT_TRUE(raiseRunningInstance(server.fullServerName()));
    EXPECT_THAT(limits(), ElementsAre(30s));
    EXPECT_EQ(calls(), "") << "the tool is not asked as well";
    EXPECT_THAT(log.texts(QtWarningMsg), IsEmpty());
}

TEST_F(InstanceGuardLimits, TheListOfWindowsIsWaitedForHalfASecondAndTheRaisingHalfAMinute)
{
    install("[ \"$1\" = -l ] && echo '0x01  0 host Brovik Kubelor'");
    EXPECT_TRUE(raiseRunningInstance(nobody));
    EXPECT_EQ(calls(), "<-l><-a><Brovik Kubelor>");
    EXPECT_THAT(limits(), ElementsAre(500ms, 30s));
}

TEST_F(InstanceGuardLimits, WhoIsNoInstanceIsNotRaised)
{
    install("echo '0x01  0 host Editor'");
    EXPECT_FALSE(raiseRunningInstance(nobody));
    EXPECT_THAT(limits(), ElementsAre(500ms));
}
