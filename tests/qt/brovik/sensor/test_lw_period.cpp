// The period of the measurement of conductivity. Once started it never ends, so all is seen in one start.

#include "brovik/sensor/sensor.h"
#include "standing_clock.h"

#include <gmock/gmock.h>

#include <QTimer>

using namespace std::chrono_literals;

namespace {

class LwPeriod : public testing::Test
{
protected:
    static void SetUpTestSuite()
    {
        ASSERT_NE(timer(), nullptr);
        EXPECT_FALSE(timer()->isActive()) << "the measurement begins by itself";
        const StandingClock clock;
        Sensor::instance().initLwTimer();
        measure(1250, 250ms); // from the start on
        EXPECT_EQ(Sensor::instance().leitwert(), 25.0);
    }

    static QTimer *timer() { return Sensor::instance().findChild<QTimer *>(); }

    /// A period that takes so long and has so many edges.
    static void measure(int edges, std::chrono::milliseconds elapsed)
    {
        const gpio_callback_func count = Sensor::instance().edgeCounter();
        for (int edge = 0; edge < edges; ++edge) {
            count(5, false);
        }
        StandingClock::advance(elapsed);
        ASSERT_TRUE(QMetaObject::invokeMethod(timer(), "timeout"));
    }
};

} // namespace

TEST_F(LwPeriod, IsAQuarterOfASecondAgainAndAgain)
{
    ASSERT_TRUE(timer()->isActive());
    EXPECT_EQ(timer()->intervalAsDuration(), 250ms);
    EXPECT_FALSE(timer()->isSingleShot());
    EXPECT_EQ(timer()->timerType(), Qt::CoarseTimer);
}

TEST_F(LwPeriod, TheTimeThatHasReallyPassedCounts)
{
    const StandingClock clock;
    measure(1, 250ms); // what has passed since the test before
    const double fiveKilohertz = 25.0;
    measure(1500, 300ms);
    EXPECT_EQ(Sensor::instance().leitwert(), fiveKilohertz);
    measure(5000, 1s);
    EXPECT_EQ(Sensor::instance().leitwert(), fiveKilohertz) << "a late period";
    measure(1250, 250ms);
    EXPECT_EQ(Sensor::instance().leitwert(), fiveKilohertz) << "the time begins anew with each period";
}
