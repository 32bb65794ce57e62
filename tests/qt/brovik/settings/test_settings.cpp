#include "brovik/settings/settings.h"
#include "declared.h"
#include "log_capture.h"
#include "qml_binding.h"

#include <gmock/gmock.h>

using testing::Each;
using testing::ElementsAre;
using testing::IsEmpty;

namespace {

const QStringList settingsModules = {QStringLiteral("brovik.settings")};

/// What a key starts with; without bounds if they are invalid.
struct BoundedKey
{
    std::string name;
    QVariant min;
    QVariant max;
    QVariant initial;

    std::string typeName() const { return initial.typeName(); }
};

const std::vector<BoundedKey> &keys()
{
    static const std::vector<BoundedKey> table = {
        {"intenseFactor", 1.5, 10.0, 3.0},
        {"intenseCleaning", {}, {}, false},
        {"thresholdPBlow", 0.01, 0.2, 0.05},
        {"thresholdLwEmpty", 0.01, 1.0, 0.07},
        {"thresholdLwWater", 0.05, 1.3, 0.1},
        {"thresholdLwElectrolyte", 0.1, 5.0, 1.5},
        {"secsBlowMin", 1, 20, 5},
        {"secsPump", 5, 20, 5},
        {"secsBlowAfterPump", 1, 20, 3},
        {"leakagePFill", 0.3, 1.0, 0.5},
        {"leakagePIncRate", 0.01, 0.2, 0.03},
        {"leakagePHoldSecs", 1, 20, 3},
        {"leakagePMaxLoss", 0.01, 0.2, 0.07},
        {"blowAfterEmptySecs", 1, 60, 10},
        {"laugeKreisSecs", 10, 600, 100},
        {"saureKreisSecs", 10, 600, 100},
        {"doSteamStep", {}, {}, true},
        {"steamSterilizationSecs", 15, 180, 40},
        {"steamCo2BlowSecs", 1, 20, 3},
        {"co2BlowAfterEmptySecs", 1, 60, 5},
        {"vorspannenP", 0.1, 2.0, 0.7},
        {"hotKreisFillSecsLegacy", 1, 20, 6},
        {"hotKreisCleanSecsLegacy", 1, 20, 6},
        {"coldKreisFillSecsLegacy", 1, 20, 6},
        {"coldKreisCleanSecsLegacy", 1, 20, 6},
        {"lwTestHoldSecs", 5, 30, 20},
        {"lwSaureMin", 1, 50, 10},
        {"lwSaureSp", 2, 100, 20},
        {"lwSaureName", {}, {}, QStringLiteral("SANAL®-SA 3")},
        {"lwLaugeMin", 1, 50, 30},
        {"lwLaugeSp", 2, 100, 60},
        {"lwLaugeName", {}, {}, QStringLiteral("RIMALKAN®-HAT 26")},
        {"testLeakageP", {}, {}, true},
        {"testLwWaterCold", {}, {}, true},
        {"testLwWaterHot", {}, {}, true},
        {"testLwKreisSaure", {}, {}, true},
        {"testLwKreisLauge", {}, {}, true},
        {"testLaugeLevel", {}, {}, true},
        {"pOffset", {}, {}, 0.0},
        {"lwOffset", {}, {}, 0.0},
        {"useCO2AfterSaure", {}, {}, true},
    };
    return table;
}

/// The enumerators at the place of their number.
const std::vector<std::string> &enumerators()
{
    static const std::vector<std::string> table = {
        "SettingsEnumInvalid",
        "IntenseFactor",
        "IntenseCleaning",
        "ThresholdPBlow",
        "ThresholdLwEmpty",
        "ThresholdLwWater",
        "ThresholdLwElectrolyte",
        "SecsBlowMin",
        "SecsPump",
        "SecsBlowAfterPump",
        "LeakagePFill",
        "LeakagePIncRate",
        "LeakagePHoldSecs",
        "LeakagePMaxLoss",
        "BlowAfterEmptySecs",
        "LaugeKreisSecs",
        "HotKreisFillSecsLegacy",
        "HotKreisCleanSecsLegacy",
        "SaureKreisSecs",
        "ColdKreisFillSecsLegacy",
        "ColdKreisCleanSecsLegacy",
        "Co2BlowAfterEmptySecs",
        "VorspannenP",
        "DoSteamStep",
        "SteamSterilizationSecs",
        "SteamCo2BlowSecs",
        "LwTestHoldSecs",
        "LwSaureMin",
        "LwSaureSp",
        "LwSaureName",
        "LwLaugeMin",
        "LwLaugeSp",
        "LwLaugeName",
        "TestLeakageP",
        "TestLwWaterCold",
        "TestLwWaterHot",
        "TestLwKreisSaure",
        "TestLwKreisLauge",
        "TestLaugeLevel",
        "POffsetSet",
        "POffsetReset",
        "LwOffsetSet",
        "LwOffsetReset",
        "UseCO2AfterSaure",
    };
    return table;
}

/// The fields of a key that notify, in order.
std::vector<std::string> notifying(const BoundedKey &key)
{
    if (!key.min.isValid()) {
        return {key.name};
    }
    return {key.name + "Min", key.name + "Max", key.name};
}

std::vector<std::string> expectedProperties()
{
    std::vector<std::string> result;
    for (const BoundedKey &key : keys()) {
        for (const std::string &field : notifying(key)) {
            result.push_back(
                key.typeName().append(" ").append(field).append(" -> ").append(field).append("Changed()"));
        }
        result.push_back(key.typeName() + " " + key.name + "Default constant");
    }
    return result;
}

std::vector<std::string> expectedSignals()
{
    std::vector<std::string> result;
    for (const BoundedKey &key : keys()) {
        for (const std::string &field : notifying(key)) {
            result.push_back(field + "Changed()");
        }
    }
    result.emplace_back("toPy(Settings::SettingsEnum,QJSValue)");
    return result;
}

/// Leaves the object as it was made.
class SettingsTest : public testing::Test
{
protected:
    void TearDown() override
    {
        settings.setIntenseFactor(3.0);
        settings.setSecsPumpMax(20);
        settings.setSecsPump(5);
        settings.setLwSaureName(QStringLiteral("SANAL®-SA 3"));
        settings.setDoSteamStep(true);
        settings.setPOffset(0.0);
    }

    Settings &settings = Settings::instance();
    LogCapture capture;
};

class SettingsKeyTest : public testing::TestWithParam<BoundedKey>
{};

} // namespace

TEST(SettingsDeclarations, Properties)
{
    EXPECT_EQ(keys().size(), 41U);
    EXPECT_EQ(declaredProperties(Settings::staticMetaObject), expectedProperties());
}

TEST(SettingsDeclarations, Signals)
{
    EXPECT_EQ(declaredSignals(Settings::staticMetaObject), expectedSignals());
}

TEST(SettingsDeclarations, EnumeratorsHaveTheirNumbers)
{
    std::vector<std::string> expected;
    for (std::size_t number = 0; number < enumerators().size(); ++number) {
        expected.push_back(enumerators()[number] + " = " + std::to_string(number));
    }
    EXPECT_THAT(declaredEnumerators(Settings::staticMetaObject, "SettingsEnum"),
                testing::UnorderedElementsAreArray(expected));
}

TEST_P(SettingsKeyTest, StartsWithItsBoundsAndDefault)
{
    const BoundedKey &key = GetParam();
    const auto field = [&](const char *suffix) {
        return Settings::instance().property((key.name + suffix).c_str());
    };
    EXPECT_EQ(field(""), key.initial);
    EXPECT_EQ(field("Default"), key.initial);
    EXPECT_EQ(field("Min"), key.min);
    EXPECT_EQ(field("Max"), key.max);
    EXPECT_EQ(field("").typeId(), key.initial.typeId());
}

INSTANTIATE_TEST_SUITE_P(Keys, SettingsKeyTest, testing::ValuesIn(keys()),
                         [](const auto &row) { return row.param.name; });

TEST_F(SettingsTest, TooSmallBecomesTheBoundAndIsLoggedAndNotifiedEachTime)
{
    const SignalLog log(settings);
    for (const std::size_t times : {1U, 2U}) {
        settings.setIntenseFactor(0.5);
        EXPECT_EQ(settings.intenseFactor(), 1.5);
        EXPECT_EQ(capture.texts(QtCriticalMsg).size(), static_cast<qsizetype>(times));
        EXPECT_THAT(capture.texts(QtCriticalMsg), Each("[Settings WERT ZU KLEIN] 0.5 wird zu 1.5 geändert."));
        EXPECT_EQ(log.names(), std::vector<std::string>(times, "intenseFactorChanged"));
    }
}

TEST_F(SettingsTest, TooGreatBecomesTheBoundAndTheStoredValueNotifiesNothing)
{
    const SignalLog log(settings);
    settings.setSecsPump(25);
    settings.setSecsPump(20);
    EXPECT_EQ(settings.secsPump(), 20);
    EXPECT_THAT(capture.texts(QtCriticalMsg), ElementsAre("[Settings WERT ZU GROß] 25 wird zu 20 geändert."));
    EXPECT_THAT(log.names(), ElementsAre("secsPumpChanged"));
}

TEST_F(SettingsTest, ABoundItselfIsNotLogged)
{
    settings.setSecsPump(20);
    settings.setIntenseFactor(1.5);
    settings.setIntenseFactor(10.0);
    EXPECT_THAT(capture.messages(), IsEmpty());
}

TEST_F(SettingsTest, ANewBoundLeavesTheValueUntilTheNextWrite)
{
    settings.setSecsPump(20);
    const SignalLog log(settings);
    settings.setSecsPumpMax(10);
    EXPECT_EQ(settings.secsPump(), 20);
    EXPECT_THAT(log.names(), ElementsAre("secsPumpMaxChanged"));
    settings.setSecsPump(19);
    EXPECT_EQ(settings.secsPump(), 10);
}

TEST_F(SettingsTest, OffsetsHaveNoBounds)
{
    settings.setPOffset(-1e9);
    EXPECT_EQ(settings.pOffset(), -1e9);
    EXPECT_THAT(capture.messages(), IsEmpty());
}

TEST_F(SettingsTest, ForeignWritesReachBindingsOnTheGuiThread)
{
    const QmlBinding binding(settingsModules,
                             QStringLiteral("[BrovikSettings.secsPumpMax, BrovikSettings.secsPump, "
                                            "BrovikSettings.lwSaureName, BrovikSettings.doSteamStep, "
                                            "BrovikSettings.pOffset].join()"));
    EXPECT_EQ(binding.value(), QStringLiteral("20,5,SANAL®-SA 3,true,0"));
    onForeignThread([this] {
        settings.setSecsPumpMax(18);
        settings.setSecsPump(25);
        settings.setLwSaureName(QStringLiteral("Säure"));
        settings.setDoSteamStep(false);
        settings.setPOffset(0.25);
    });
    ASSERT_TRUE(binding.becomes(QStringLiteral("18,18,Säure,false,0.25")));
    EXPECT_TRUE(binding.changes().emissions().back().onGuiThread);
}

TEST_F(SettingsTest, QmlKnowsTheEnumeratorsAndCannotWrite)
{
    const QmlBinding number(settingsModules,
                            QStringLiteral("BrovikSettings.SecsPump + 100 * BrovikSettings.LwOffsetReset"));
    EXPECT_EQ(number.value(), 4208);
    const QmlBinding write(
        settingsModules,
        QStringLiteral(
            "{ try { BrovikSettings.secsPump = 9; return 'written'; } catch (e) { return e.name; } }"));
    EXPECT_EQ(write.value(), QStringLiteral("TypeError"));
    EXPECT_EQ(settings.secsPump(), 5);
}
