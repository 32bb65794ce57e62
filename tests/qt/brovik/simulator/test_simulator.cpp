#include "brovik/simulator/simulator.h"
#include "declared.h"
#include "log_capture.h"
#include "qml_binding.h"

#include <gmock/gmock.h>

using testing::ElementsAre;
using testing::IsEmpty;

namespace {

const QStringList simulatorModules = {QStringLiteral("brovik.simulator")};

/// Leaves the object as it was made.
class SimulatorTest : public testing::Test
{
protected:
    void TearDown() override
    {
        simulator.setEnabled(false);
        simulator.setSimAIn0Max(100);
        simulator.setSimAIn0(0);
        simulator.setSimAIn1(0);
        simulator.setPIncRate(0.05);
        simulator.setPDecRate(0.1);
    }

    Simulator &simulator = Simulator::instance();
    LogCapture capture;
};

} // namespace

TEST_F(SimulatorTest, DeclaredProperties)
{
    EXPECT_THAT(declaredProperties(Simulator::staticMetaObject),
                ElementsAre("bool enabled -> enabledChanged()", "bool enabledDefault constant",
                            "int simAIn0Min -> simAIn0MinChanged()", "int simAIn0Max -> simAIn0MaxChanged()",
                            "int simAIn0 -> simAIn0Changed()", "int simAIn0Default constant",
                            "int simAIn1Min -> simAIn1MinChanged()", "int simAIn1Max -> simAIn1MaxChanged()",
                            "int simAIn1 -> simAIn1Changed()", "int simAIn1Default constant",
                            "double simScaleFactor -> simScaleFactorChanged()",
                            "double simScaleFactorDefault constant", "double pIncRate -> pIncRateChanged()",
                            "double pDecRate -> pDecRateChanged()"));
}

TEST_F(SimulatorTest, DeclaredSignalsAndInvokables)
{
    EXPECT_THAT(declaredSignals(Simulator::staticMetaObject),
                ElementsAre("enabledChanged()", "simAIn0MinChanged()", "simAIn0MaxChanged()",
                            "simAIn0Changed()", "simAIn1MinChanged()", "simAIn1MaxChanged()",
                            "simAIn1Changed()", "simScaleFactorChanged()", "pIncRateChanged()",
                            "pDecRateChanged()", "toPy(Simulator::SimEnum,QJSValue)", "setLwFreq(int)"));
    EXPECT_THAT(declaredInvokables(Simulator::staticMetaObject),
                ElementsAre("void changePIncRate(double)", "void changePDecRate(double)"));
    EXPECT_THAT(declaredEnumerators(Simulator::staticMetaObject, "SimEnum"),
                ElementsAre("SimEnabled = 0", "SimAIn0 = 1", "SimAIn1 = 2", "SimLw = 3"));
}

TEST_F(SimulatorTest, TooGreatIsLoggedStoredAndNotifiedEachTime)
{
    const SignalLog log(simulator);
    simulator.setSimAIn0(150);
    simulator.setSimAIn0(150);
    EXPECT_EQ(simulator.simAIn0(), 100);
    EXPECT_THAT(log.names(), ElementsAre("simAIn0Changed", "simAIn0Changed"));
    EXPECT_THAT(capture.texts(QtCriticalMsg),
                ElementsAre("[Simulator WERT ZU GROß] 150 wird zu 100 geändert.",
                            "[Simulator WERT ZU GROß] 150 wird zu 100 geändert."));
}

TEST_F(SimulatorTest, TooSmallIsNotifiedThoughTheValueWasTheBoundAlready)
{
    const SignalLog log(simulator);
    simulator.setSimAIn1(-1);
    EXPECT_EQ(simulator.simAIn1(), 0);
    EXPECT_THAT(log.names(), ElementsAre("simAIn1Changed"));
    EXPECT_THAT(capture.texts(QtCriticalMsg),
                ElementsAre("[Simulator WERT ZU KLEIN] -1 wird zu 0 geändert."));
}

TEST_F(SimulatorTest, ALowerBoundLeavesTheValueUntilTheNextWrite)
{
    simulator.setSimAIn0(80);
    simulator.setSimAIn0Max(50);
    EXPECT_EQ(simulator.simAIn0(), 80);
    EXPECT_THAT(capture.messages(), IsEmpty());
    simulator.setSimAIn0(79);
    EXPECT_EQ(simulator.simAIn0(), 50);
}

TEST_F(SimulatorTest, ScreensChangeTheRatesWithoutBounds)
{
    const SignalLog log(simulator);
    const QmlBinding caller(simulatorModules,
                            QStringLiteral("{ Simulator.changePIncRate(0.2); Simulator.changePDecRate(-7.5);"
                                           " Simulator.changePIncRate(0.2); return 1; }"));
    EXPECT_EQ(simulator.pIncRate(), 0.2);
    EXPECT_EQ(simulator.pDecRate(), -7.5);
    EXPECT_THAT(log.names(), ElementsAre("pIncRateChanged", "pDecRateChanged"));
}

TEST_F(SimulatorTest, ForeignWriteReachesABindingOnTheGuiThread)
{
    const QmlBinding binding(simulatorModules,
                             QStringLiteral("[Simulator.enabled, Simulator.simAIn0].join()"));
    EXPECT_EQ(binding.value(), QStringLiteral("false,0"));
    onForeignThread([this] {
        simulator.setEnabled(true);
        simulator.setSimAIn0(40);
    });
    ASSERT_TRUE(binding.becomes(QStringLiteral("true,40")));
    EXPECT_TRUE(binding.changes().emissions().back().onGuiThread);
}
