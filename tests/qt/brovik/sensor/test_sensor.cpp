#include "brovik/sensor/sensor.h"
#include "brovik/settings/settings.h"
#include "brovik/simulator/simulator.h"
#include "declared.h"
#include "log_capture.h"
#include "qml_binding.h"
#include "signal_log.h"

#include <gmock/gmock.h>

#include <cmath>
#include <limits>

using namespace SensorEnums;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

namespace {

const QStringList sensorModules = {QStringLiteral("brovik.sensor")};

/// Leaves the objects as they were made.
class SensorTest : public testing::Test
{
protected:
    void TearDown() override
    {
        Settings::instance().setLwOffset(0.0);
        Settings::instance().setPOffset(0.0);
        count(1);
        sensor.calcLw(250);
        sensor.setLwWithoutOffset(0.0);
        sensor.setPWithoutOffset(0.0);
        sensor.setLwType(ILFS_02_TK2);
        sensor.setPType(SMC_PSE564_02);
        sensor.level()->setState(false);
        simulator.setSimAIn0(0);
        simulator.setSimAIn1(0);
    }

    /// As the GPIO thread does it.
    void count(int edges)
    {
        const gpio_callback_func callback = sensor.edgeCounter();
        for (int edge = 0; edge < edges; ++edge) {
            callback(5, false);
        }
    }

    std::vector<std::string> criticals() const
    {
        std::vector<std::string> result;
        for (const QString &text : log.texts(QtCriticalMsg)) {
            result.push_back(text.toStdString());
        }
        return result;
    }

    Sensor &sensor = Sensor::instance();
    Simulator &simulator = Simulator::instance();
    LogCapture log;
};

/// (input, state) of each request.
std::vector<std::pair<int, bool>> requests(const SignalLog &log)
{
    std::vector<std::pair<int, bool>> result;
    for (const SignalLog::Emission &emission : log.emissions()) {
        result.emplace_back(emission.values.at(0).toInt(), emission.values.at(1).toBool());
    }
    return result;
}

} // namespace

TEST_F(SensorTest, DeclaredProperties)
{
    EXPECT_THAT(declaredProperties(Sensor::staticMetaObject),
                ElementsAre("DIn* start constant", "DIn* stop constant", "DIn* level constant",
                            "AIn* aIn1 constant", "AIn* aIn2 constant",
                            "double leitwert -> leitwertChanged()", "double druck -> druckChanged()",
                            "double rawLeitwert -> rawLeitwertChanged()",
                            "double rawDruck -> rawDruckChanged()",
                            "SensorEnums::SensorLwEnum lwType -> lwTypeChanged()",
                            "SensorEnums::SensorPEnum pType -> pTypeChanged()",
                            "bool lwSensorDefective -> lwSensorDefectiveChanged()"));
    EXPECT_THAT(declaredProperties(DIn::staticMetaObject),
                ElementsAre("QString name -> nameChanged()", "bool state -> stateChanged()",
                            "int num -> numChanged()"));
    EXPECT_THAT(declaredProperties(AIn::staticMetaObject),
                ElementsAre("QString name -> nameChanged()", "double value -> valueChanged()",
                            "int num -> numChanged()"));
}

TEST_F(SensorTest, DeclaredSignalsAndInvokables)
{
    EXPECT_THAT(declaredSignals(Sensor::staticMetaObject),
                ElementsAre("leitwertChanged()", "druckChanged()", "rawLeitwertChanged()",
                            "rawDruckChanged()", "lwTypeChanged()", "pTypeChanged()",
                            "lwSensorDefectiveChanged()",
                            "stateChangeRequested(SensorEnums::SensorEnum,bool)", "_initLwTimerSignal()"));
    EXPECT_THAT(declaredInvokables(Sensor::staticMetaObject),
                ElementsAre("void _calcLw()", "void _initLwTimer()",
                            "void requestValueChange(SensorEnums::SensorEnum,QJSValue)"));
    EXPECT_THAT(declaredSignals(DIn::staticMetaObject),
                ElementsAre("nameChanged()", "stateChanged()", "numChanged()"));
    EXPECT_THAT(declaredSignals(AIn::staticMetaObject),
                ElementsAre("nameChanged()", "valueChanged()", "numChanged()"));
}

TEST_F(SensorTest, DeclaredEnumerators)
{
    EXPECT_THAT(declaredEnumerators(SensorEnums::staticMetaObject, "SensorEnum"),
                ElementsAre("StartBtn = 0", "StopBtn = 1", "SensorLevel = 2", "SensorLw = 3", "AIn1 = 4",
                            "AIn2 = 5", "SensorP = 6"));
    EXPECT_THAT(declaredEnumerators(SensorEnums::staticMetaObject, "SensorLwEnum"),
                ElementsAre("Seli_SLI_03 = 0", "ILFS_02_TK2 = 1"));
    EXPECT_THAT(declaredEnumerators(SensorEnums::staticMetaObject, "SensorPEnum"),
                ElementsAre("SMC_PSE564_02 = 0", "Gems_3500R0006G01B000 = 1"));
}

TEST_F(SensorTest, ScreensKnowTheEnums)
{
    const QmlBinding binding(
        sensorModules,
        QStringLiteral("[SensorEnums.StartBtn, SensorEnums.SensorP, SensorEnums.Gems_3500R0006G01B000, "
                       "Sensor.lwType === SensorEnums.ILFS_02_TK2].join()"));
    EXPECT_EQ(binding.value(), QStringLiteral("0,6,1,true"));
}

TEST_F(SensorTest, EnumsCannotBeCreated)
{
    EXPECT_THAT(refusalOf("import brovik.sensor\nSensorEnums {}"), HasSubstr("Error: only enums"));
}

TEST_F(SensorTest, InitialValues)
{
    EXPECT_THAT(sensor.allDins(), ElementsAre(sensor.start(), sensor.stop(), sensor.level()));
    EXPECT_EQ(sensor.start()->name(), QStringLiteral("start"));
    EXPECT_EQ(sensor.stop()->name(), QStringLiteral("stop"));
    EXPECT_EQ(sensor.level()->name(), QStringLiteral("level"));
    for (const DIn *din : sensor.allDins()) {
        EXPECT_FALSE(din->state());
        EXPECT_EQ(din->num(), -1);
    }
    EXPECT_EQ(sensor.aIn1()->name(), QStringLiteral("A-In-1"));
    EXPECT_EQ(sensor.aIn2()->name(), QStringLiteral("A-In-2"));
    EXPECT_EQ(sensor.aIn1()->num(), 0);
    EXPECT_EQ(sensor.aIn2()->num(), 1);
    EXPECT_EQ(sensor.aIn1()->value(), 0.0);
    EXPECT_EQ(sensor.lwType(), ILFS_02_TK2);
    EXPECT_EQ(sensor.pType(), SMC_PSE564_02);
    EXPECT_FALSE(sensor.lwSensorDefective());
    EXPECT_EQ(sensor.lwTicks(), 0);
}

TEST_F(SensorTest, InputsAreFoundByTheirEnum)
{
    EXPECT_EQ(sensor.dinFromEnum(StartBtn), sensor.start());
    EXPECT_EQ(sensor.dinFromEnum(StopBtn), sensor.stop());
    EXPECT_EQ(sensor.dinFromEnum(SensorLevel), sensor.level());
    EXPECT_EQ(sensor.ainFromEnum(AIn1), sensor.aIn1());
    EXPECT_EQ(sensor.ainFromEnum(AIn2), sensor.aIn2());
    EXPECT_EQ(sensor.dinFromEnum(SensorP), nullptr);
    EXPECT_EQ(sensor.ainFromEnum(StartBtn), nullptr);
    EXPECT_EQ(sensor.dinFromEnum(static_cast<SensorEnum>(77)), nullptr);
    EXPECT_EQ(sensor.ainFromEnum(static_cast<SensorEnum>(-1)), nullptr);
}

// Conductivity from counted edges.

TEST_F(SensorTest, FiveKilohertzAreTwentyFive)
{
    count(1250);
    sensor.calcLw(250);
    EXPECT_EQ(sensor.leitwert(), 25.0);
    EXPECT_EQ(sensor.lwTicks(), 0);
    EXPECT_EQ(sensor.rawLeitwert(), 0.0) << "the frequency does not touch the raw value";
}

TEST_F(SensorTest, TheOffsetIsSubtracted)
{
    Settings::instance().setLwOffset(1.5);
    count(1250);
    sensor.calcLw(250);
    EXPECT_EQ(sensor.leitwert(), 23.5);
}

TEST_F(SensorTest, TheSquareToTheLastDigit)
{
    count(7071);
    sensor.calcLw(1000);
    EXPECT_EQ(sensor.leitwert(), 49.999041);
}

TEST_F(SensorTest, ALatePeriodFalsifiesNothing)
{
    count(1500);
    sensor.calcLw(300);
    EXPECT_EQ(sensor.leitwert(), 25.0);
}

TEST_F(SensorTest, TheFrequencyIsCutToWholeHertzBeforeTheSquare)
{
    count(1000);
    sensor.calcLw(251); // 3984.06 Hz
    EXPECT_EQ(sensor.leitwert(), 3.984 * 3.984);
}

TEST_F(SensorTest, SquareAndOffsetAreRoundedOnce)
{
    constexpr double frequency = 3.984;
    constexpr double offset = 15.1;
    Settings::instance().setLwOffset(offset);
    count(996);
    sensor.calcLw(250);
    const volatile double square = frequency * frequency;
    ASSERT_NE(std::fma(frequency, frequency, -offset), square - offset) << "these numbers show no difference";
    EXPECT_EQ(sensor.leitwert(), std::fma(frequency, frequency, -offset));
}

TEST_F(SensorTest, OneEdgeIsFourHertzAndNoDefect)
{
    Settings::instance().setLwOffset(0.5);
    count(1);
    sensor.calcLw(250);
    EXPECT_EQ(sensor.leitwert(), std::fma(0.004, 0.004, -0.5));
    EXPECT_FALSE(sensor.lwSensorDefective());
    Settings::instance().setLwOffset(0.0);
    count(1);
    sensor.calcLw(250);
    EXPECT_EQ(sensor.leitwert(), 0.000016);
}

TEST_F(SensorTest, ConductivityMayBeNegative)
{
    Settings::instance().setLwOffset(2.0);
    count(250);
    sensor.calcLw(250);
    EXPECT_EQ(sensor.leitwert(), -1.0);
}

TEST_F(SensorTest, NoEdgeIsZeroWithoutOffsetAndADefect)
{
    Settings::instance().setLwOffset(1.5);
    count(1250);
    sensor.calcLw(250);
    const SignalLog emitted(sensor);
    sensor.calcLw(250);
    EXPECT_EQ(sensor.leitwert(), 0.0);
    EXPECT_TRUE(sensor.lwSensorDefective());
    EXPECT_THAT(emitted.names(), ElementsAre("leitwertChanged", "lwSensorDefectiveChanged"));
    sensor.calcLw(250);
    EXPECT_EQ(emitted.names().size(), 2U) << "a lasting defect notifies once";
}

TEST_F(SensorTest, AfterADefectTheValueChangesFirstAndThenTheFlagClears)
{
    sensor.calcLw(250);
    ASSERT_TRUE(sensor.lwSensorDefective());
    const SignalLog emitted(sensor);
    count(1250);
    sensor.calcLw(250);
    EXPECT_FALSE(sensor.lwSensorDefective());
    EXPECT_THAT(emitted.names(), ElementsAre("leitwertChanged", "lwSensorDefectiveChanged"));
}

TEST_F(SensorTest, AnEqualResultDoesNotNotify)
{
    count(1250);
    sensor.calcLw(250);
    const SignalLog emitted(sensor);
    count(1250);
    sensor.calcLw(250);
    EXPECT_THAT(emitted.names(), IsEmpty());
}

TEST_F(SensorTest, APeriodOfNoTimeIsOneOfAMillisecond)
{
    count(1);
    sensor.calcLw(0);
    EXPECT_EQ(sensor.leitwert(), 1.0); // as one of a millisecond: 1 kHz
}

// What the backend measures.

TEST_F(SensorTest, SetConductivityWithOffset)
{
    Settings::instance().setLwOffset(0.5);
    const SignalLog emitted(sensor);
    EXPECT_EQ(sensor.setLwAndApplyOffset(10.0), 9.5);
    EXPECT_EQ(sensor.rawLeitwert(), 10.0);
    EXPECT_EQ(sensor.leitwert(), 9.5);
    EXPECT_EQ(sensor.setLwAndApplyOffset(10.0), 9.5);
    EXPECT_THAT(emitted.names(), ElementsAre("leitwertChanged", "rawLeitwertChanged"));
}

TEST_F(SensorTest, SetPressureWithOffset)
{
    Settings::instance().setPOffset(0.25);
    const SignalLog emitted(sensor);
    EXPECT_EQ(sensor.setPAndApplyOffset(2.0), 1.75);
    EXPECT_EQ(sensor.rawDruck(), 2.0);
    EXPECT_EQ(sensor.druck(), 1.75);
    EXPECT_THAT(emitted.names(), ElementsAre("druckChanged", "rawDruckChanged"));
}

TEST_F(SensorTest, SetWithoutOffset)
{
    Settings::instance().setLwOffset(0.5);
    Settings::instance().setPOffset(0.5);
    const SignalLog emitted(sensor);
    sensor.setLwWithoutOffset(7.0);
    sensor.setPWithoutOffset(3.0);
    EXPECT_EQ(sensor.leitwert(), 7.0);
    EXPECT_EQ(sensor.rawLeitwert(), 7.0);
    EXPECT_EQ(sensor.druck(), 3.0);
    EXPECT_EQ(sensor.rawDruck(), 3.0);
    EXPECT_THAT(emitted.names(),
                ElementsAre("leitwertChanged", "rawLeitwertChanged", "druckChanged", "rawDruckChanged"));
}

TEST_F(SensorTest, ForeignWritesReachABindingOnTheGuiThread)
{
    const QmlBinding binding(sensorModules, QStringLiteral("Sensor.druck + ' ' + Sensor.level.state"));
    onForeignThread([this] {
        sensor.setPWithoutOffset(1.5);
        sensor.level()->setState(true);
    });
    EXPECT_EQ(binding.value(), QStringLiteral("0 false"));
    EXPECT_TRUE(binding.becomes(QStringLiteral("1.5 true")));
}

TEST_F(SensorTest, InputsNotifyOncePerChange)
{
    const SignalLog din(*sensor.stop());
    sensor.stop()->setState(true);
    sensor.stop()->setState(true);
    sensor.stop()->setNum(4);
    sensor.stop()->setName(QStringLiteral("stop"));
    EXPECT_THAT(din.names(), ElementsAre("stateChanged", "numChanged"));
    const SignalLog ain(*sensor.aIn2());
    sensor.aIn2()->setValue(20.0);
    sensor.aIn2()->setValue(20.0);
    EXPECT_THAT(ain.names(), ElementsAre("valueChanged"));
    sensor.stop()->setState(false);
    sensor.stop()->setNum(-1);
    sensor.aIn2()->setValue(0.0);
}

// Wishes of the simulator's window.

TEST_F(SensorTest, StartAndStopAreRequested)
{
    const SignalLog emitted(sensor, {"stateChangeRequested"});
    sensor.requestValueChange(StartBtn, QJSValue(true));
    sensor.requestValueChange(StopBtn, QJSValue(0));
    EXPECT_THAT(requests(emitted),
                ElementsAre(std::pair(int(StartBtn), true), std::pair(int(StopBtn), false)));
}

TEST_F(SensorTest, TheLevelIsRequestedInvertedTwiceIfNobodyReacts)
{
    const SignalLog emitted(sensor, {"stateChangeRequested"});
    sensor.requestValueChange(SensorLevel, QJSValue(QJSValue::NullValue));
    sensor.requestValueChange(SensorLevel, QJSValue(QJSValue::NullValue));
    sensor.level()->setState(true);
    sensor.requestValueChange(SensorLevel, QJSValue(true));
    EXPECT_THAT(requests(emitted),
                ElementsAre(std::pair(int(SensorLevel), true), std::pair(int(SensorLevel), true),
                            std::pair(int(SensorLevel), false)));
}

TEST_F(SensorTest, SimulatedPressureOfTheSmcSensor)
{
    sensor.requestValueChange(SensorP, QJSValue(5.0));
    EXPECT_EQ(simulator.simAIn0(), 100);
    EXPECT_EQ(sensor.druck(), 5.0);
    sensor.requestValueChange(SensorP, QJSValue(0.0));
    EXPECT_EQ(simulator.simAIn0(), 20);
    EXPECT_EQ(sensor.druck(), 0.0);
    EXPECT_EQ(sensor.rawDruck(), 0.0);
    EXPECT_THAT(criticals(), IsEmpty());
}

TEST_F(SensorTest, SimulatedPressureOfTheGemsSensor)
{
    sensor.setPType(Gems_3500R0006G01B000);
    sensor.pChangeFromSimulator(6.0);
    EXPECT_EQ(simulator.simAIn0(), 100);
    sensor.pChangeFromSimulator(0.5); // 8.33 percent
    EXPECT_EQ(simulator.simAIn0(), 8);
    sensor.pChangeFromSimulator(0.0);
    EXPECT_EQ(simulator.simAIn0(), 0);
}

TEST_F(SensorTest, SimulatedPressureIgnoresTheOffset)
{
    Settings::instance().setPOffset(1.0);
    sensor.setPWithoutOffset(3.0);
    const SignalLog emitted(sensor);
    sensor.pChangeFromSimulator(2.0);
    EXPECT_EQ(sensor.druck(), 2.0);
    EXPECT_EQ(sensor.rawDruck(), 3.0);
    EXPECT_THAT(emitted.names(), ElementsAre("druckChanged"));
}

TEST_F(SensorTest, SimulatedPressureOutOfRangeIsClampedAtTheInputAlone)
{
    sensor.requestValueChange(SensorP, QJSValue(6.0));
    EXPECT_EQ(simulator.simAIn0(), 100);
    EXPECT_EQ(sensor.druck(), 6.0);
    ASSERT_EQ(criticals().size(), 1U);
    EXPECT_THAT(criticals().front(), testing::HasSubstr("116"));
}

TEST_F(SensorTest, AbsurdPressuresAreClampedAsWell)
{
    simulator.setSimAIn0(50);
    sensor.requestValueChange(SensorP, QJSValue(1e300));
    EXPECT_EQ(simulator.simAIn0(), 100);
    sensor.requestValueChange(SensorP, QJSValue(-1e300));
    EXPECT_EQ(simulator.simAIn0(), 0);
    sensor.requestValueChange(SensorP, QJSValue(std::numeric_limits<double>::quiet_NaN()));
    EXPECT_GE(simulator.simAIn0(), 0);
    EXPECT_LE(simulator.simAIn0(), 100);
}

TEST_F(SensorTest, AnUnknownPressureSensorHasNoInput)
{
    sensor.setPType(static_cast<SensorPEnum>(9));
    simulator.setSimAIn0(33);
    sensor.pChangeFromSimulator(5.0);
    EXPECT_EQ(simulator.simAIn0(), 33);
    EXPECT_EQ(sensor.druck(), 5.0);
}

TEST_F(SensorTest, SimulatedConductivityOfTheFrequencySensorHasNoInput)
{
    simulator.setSimAIn1(33);
    Settings::instance().setLwOffset(1.0);
    sensor.requestValueChange(SensorLw, QJSValue(30.0));
    EXPECT_EQ(simulator.simAIn1(), 33);
    EXPECT_EQ(sensor.leitwert(), 30.0);
    EXPECT_EQ(sensor.rawLeitwert(), 0.0);
}

TEST_F(SensorTest, SimulatedConductivityOfTheAnalogueSensor)
{
    sensor.setLwType(Seli_SLI_03);
    sensor.requestValueChange(SensorLw, QJSValue(0.0));
    EXPECT_EQ(simulator.simAIn1(), 20);
    sensor.requestValueChange(SensorLw, QJSValue(50.0));
    EXPECT_EQ(simulator.simAIn1(), 60);
    sensor.requestValueChange(SensorLw, QJSValue(100.0));
    EXPECT_EQ(simulator.simAIn1(), 100);
    EXPECT_EQ(sensor.leitwert(), 100.0);
}

TEST_F(SensorTest, AnalogueInputsCannotBeRequested)
{
    const SignalLog emitted(sensor);
    sensor.requestValueChange(AIn1, QJSValue(5));
    sensor.requestValueChange(AIn2, QJSValue(5));
    EXPECT_THAT(log.texts(QtWarningMsg), ElementsAre(QStringLiteral("Nicht implementiert: AIn1"),
                                                     QStringLiteral("Nicht implementiert: AIn2")));
    EXPECT_THAT(emitted.names(), IsEmpty());
}

TEST_F(SensorTest, AnyOtherRequestDoesNothing)
{
    const SignalLog emitted(sensor);
    sensor.requestValueChange(static_cast<SensorEnum>(42), QJSValue(5));
    EXPECT_THAT(emitted.names(), IsEmpty());
    EXPECT_THAT(log.messages(), IsEmpty());
}

TEST_F(SensorTest, ScreensSendRequestsThroughTheirEngine)
{
    const SignalLog emitted(sensor, {"stateChangeRequested"});
    const QmlBinding request(
        sensorModules, QStringLiteral("Sensor.requestValueChange(SensorEnums.StartBtn, true) ?? 'sent'"));
    EXPECT_EQ(request.value(), QStringLiteral("sent"));
    EXPECT_THAT(requests(emitted), ElementsAre(std::pair(int(StartBtn), true)));
}
