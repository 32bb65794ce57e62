#include "src/service_pulse.h"

#include <gmock/gmock.h>

using testing::Eq;
using testing::Optional;

namespace {

using Time = ServicePulse::Time;
using Parts = ServicePulse::Parts;

constexpr Time period(1000);
constexpr Parts all = Parts(ServicePulse::Gui) | ServicePulse::Frame | ServicePulse::Interpreter;

/// A pulse that has been started, fed and asked at time 0.
class ServicePulseTest : public testing::Test
{
protected:
    ServicePulseTest() { m_pulse.check(Time(0)); }

    ServicePulse m_pulse{period, Time(0)};
};

} // namespace

TEST(ServicePulse, BeginsWithFoodAndQuestions)
{
    ServicePulse pulse(period, Time(7));
    const ServicePulse::Step step = pulse.check(Time(7));
    EXPECT_TRUE(step.feed);
    EXPECT_EQ(step.ask, all);
    EXPECT_FALSE(step.missed);
}

TEST_F(ServicePulseTest, FeedsAtHalfThePeriodIfAllHaveAnswered)
{
    m_pulse.answer(all);
    EXPECT_FALSE(m_pulse.check(Time(499)).feed);
    EXPECT_THAT(m_pulse.due(Time(499)), Optional(Time(500)));
    const ServicePulse::Step step = m_pulse.check(Time(500));
    EXPECT_TRUE(step.feed);
    EXPECT_EQ(step.ask, all);
    EXPECT_FALSE(m_pulse.check(Time(500)).feed);
    EXPECT_FALSE(m_pulse.check(Time(1000)).feed) << "the second round has not been answered";
}

TEST_F(ServicePulseTest, EachPartIsNeeded)
{
    for (const ServicePulse::Part part :
         {ServicePulse::Gui, ServicePulse::Frame, ServicePulse::Interpreter}) {
        ServicePulse pulse(period, Time(0));
        pulse.check(Time(0));
        pulse.answer(all & ~Parts(part));
        EXPECT_FALSE(pulse.check(Time(500)).feed) << part;
        if (part != ServicePulse::Gui) {
            pulse.answer(ServicePulse::Gui);
        }
        EXPECT_EQ(pulse.check(Time(750)).missed, Parts(part));
    }
}

TEST_F(ServicePulseTest, TheGuiIsAskedOnceMoreIfOthersAreLate)
{
    m_pulse.answer(all & ~Parts(ServicePulse::Frame));
    EXPECT_THAT(m_pulse.due(Time(1)), Optional(Time(500)));
    EXPECT_EQ(m_pulse.check(Time(500)).ask, Parts(ServicePulse::Gui));
    EXPECT_THAT(m_pulse.due(Time(500)), Optional(Time(750)));
    EXPECT_FALSE(m_pulse.check(Time(600)).ask);
    m_pulse.answer(ServicePulse::Frame);
    EXPECT_FALSE(m_pulse.check(Time(700)).feed) << "the GUI has answered the first question alone";
    EXPECT_EQ(m_pulse.check(Time(750)).missed, Parts(ServicePulse::Gui));
    m_pulse.answer(ServicePulse::Gui);
    EXPECT_TRUE(m_pulse.check(Time(800)).feed);
}

TEST_F(ServicePulseTest, NobodyIsAskedTwice)
{
    for (const int time : {500, 750, 1000, 5000}) {
        EXPECT_FALSE(m_pulse.check(Time(time)).ask) << time;
    }
}

TEST_F(ServicePulseTest, IsMissedOnceAtThreeQuarters)
{
    m_pulse.check(Time(500));
    EXPECT_THAT(m_pulse.due(Time(500)), Optional(Time(750)));
    m_pulse.answer(ServicePulse::Gui);
    EXPECT_FALSE(m_pulse.check(Time(749)).missed);
    EXPECT_EQ(m_pulse.check(Time(750)).missed, Parts(ServicePulse::Frame) | ServicePulse::Interpreter);
    EXPECT_FALSE(m_pulse.check(Time(900)).missed);
    EXPECT_THAT(m_pulse.due(Time(900)), Eq(std::nullopt));
}

TEST_F(ServicePulseTest, ALateAnswerFeedsAtOnce)
{
    m_pulse.check(Time(500));
    m_pulse.check(Time(750));
    m_pulse.answer(all);
    const ServicePulse::Step step = m_pulse.check(Time(990));
    EXPECT_TRUE(step.feed);
    EXPECT_TRUE(step.recovered);
    EXPECT_EQ(step.ask, all);
    EXPECT_FALSE(m_pulse.check(Time(1490)).feed);
    EXPECT_EQ(m_pulse.check(Time(1740)).missed, all) << "the next one is told again";
}

TEST_F(ServicePulseTest, WhoIsExcusedNeedNotAnswer)
{
    m_pulse.excuseUntil(Time(1600));
    m_pulse.answer(ServicePulse::Frame);
    EXPECT_THAT(m_pulse.due(Time(1)), Optional(Time(500)));
    const ServicePulse::Step step = m_pulse.check(Time(500));
    EXPECT_TRUE(step.feed);
    EXPECT_EQ(step.ask, Parts(ServicePulse::Frame)) << "the others have not answered the first question";
    EXPECT_TRUE(m_pulse.check(Time(1500)).feed);
    EXPECT_FALSE(m_pulse.check(Time(2000)).feed) << "the excuse is over";
    EXPECT_EQ(m_pulse.check(Time(2250)).missed, all);
}

TEST_F(ServicePulseTest, AnExcuseThatIsOverAndAnAnswer)
{
    m_pulse.excuseUntil(Time(600));
    EXPECT_TRUE(m_pulse.check(Time(500)).feed);
    m_pulse.answer(all);
    EXPECT_TRUE(m_pulse.check(Time(1000)).feed);
}
