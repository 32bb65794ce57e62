#include "gpio_test.h"
#include "recorded_waits.h"

using namespace std::chrono_literals;
using testing::AllOf;
using testing::Each;
using testing::IsEmpty;
using testing::Not;

namespace {

using GpioWaitTest = GpioTest;

} // namespace

// The wait bounds how late a change of the lines and a request to stop are noticed.
TEST_F(GpioWaitTest, NoWaitForAnEdgeIsLongerThanHalfASecond)
{
    const RecordedWaits waits;
    arm(5);
    chip.pulse(5);
    ASSERT_TRUE(eventually([this] { return !calls.all().empty(); }));
    gpio.stopThread();
    EXPECT_THAT(waits.otherLimits(), AllOf(Not(IsEmpty()), Each(500ms)));
}
