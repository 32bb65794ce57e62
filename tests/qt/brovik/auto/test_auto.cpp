#include "brovik/auto/auto.h"
#include "brovik/settings/settings.h"
#include "declared.h"
#include "qml_binding.h"

#include <gmock/gmock.h>

using testing::ElementsAre;

namespace {

const QStringList autoModules = {QStringLiteral("brovik.auto"), QStringLiteral("brovik.settings")};

/// Leaves the object as it was made.
class AutoTest : public testing::Test
{
protected:
    void TearDown() override
    {
        state.setActive(false);
        state.setLwSaureMin(0);
        state.setLwSaureMax(0.0);
        state.setProgress(0);
        state.setProgressStr(QStringLiteral("0 %"));
        state.setProgressColor(Auto::ProgressNormal);
    }

    Auto &state = Auto::instance();
};

} // namespace

TEST_F(AutoTest, DeclaredProperties)
{
    EXPECT_THAT(
        declaredProperties(Auto::staticMetaObject),
        ElementsAre("bool active -> activeChanged()", "bool lwSaureActive -> lwSaureActiveChanged()",
                    "bool lwLaugeActive -> lwLaugeActiveChanged()",
                    "bool lwSaureTooLow -> lwSaureTooLowChanged()",
                    "bool lwLaugeTooLow -> lwLaugeTooLowChanged()",
                    "bool lwSpReached -> lwSpReachedChanged()", "double lwSaureMax -> lwSaureMaxChanged()",
                    "int lwSaureMin -> lwSaureMinChanged()", "int lwSaureSp -> lwSaureSpChanged()",
                    "double lwLaugeMax -> lwLaugeMaxChanged()", "int lwLaugeMin -> lwLaugeMinChanged()",
                    "int lwLaugeSp -> lwLaugeSpChanged()", "double intenseFactor -> intenseFactorChanged()",
                    "bool intenseCleaning -> intenseCleaningChanged()", "int progress -> progressChanged()",
                    "QString progressStr -> progressStrChanged()",
                    "Auto::ProgressColor progressColor -> progressColorChanged()"));
}

TEST_F(AutoTest, DeclaredSignals)
{
    EXPECT_THAT(declaredSignals(Auto::staticMetaObject),
                ElementsAre("activeChanged()", "lwSaureActiveChanged()", "lwLaugeActiveChanged()",
                            "lwSaureTooLowChanged()", "lwLaugeTooLowChanged()", "lwSpReachedChanged()",
                            "lwSaureMaxChanged()", "lwSaureMinChanged()", "lwSaureSpChanged()",
                            "lwLaugeMaxChanged()", "lwLaugeMinChanged()", "lwLaugeSpChanged()",
                            "intenseFactorChanged()", "intenseCleaningChanged()", "progressChanged()",
                            "progressStrChanged()", "progressColorChanged()",
                            "toPy(Auto::AutoEnum,QJSValue)"));
}

TEST_F(AutoTest, DeclaredEnumerators)
{
    EXPECT_THAT(
        declaredEnumerators(Auto::staticMetaObject, "ProgressColor"),
        ElementsAre("ProgressNormal = 0", "ProgressSuccess = 1", "ProgressWarning = 2", "ProgressError = 3"));
    EXPECT_THAT(declaredEnumerators(Auto::staticMetaObject, "AutoEnum"),
                ElementsAre("ToggleAuto = 0", "ToggleLwTestSaure = 1", "ToggleLwTestLauge = 2"));
}

TEST_F(AutoTest, NegativeProgressReachesTheScreensAndLeavesTheText)
{
    const QmlBinding binding(autoModules, QStringLiteral("Auto_.progress + ' ' + Auto_.progressStr"));
    onForeignThread([this] { state.setProgress(-1); });
    binding.becomes(QStringLiteral("-1 0 %"));
}

TEST_F(AutoTest, ForeignWriteReachesABindingOnTheGuiThread)
{
    const QmlBinding binding(autoModules, QStringLiteral("Auto_.progressStr"));
    const SignalLog log(state, {"progressStrChanged"});
    onForeignThread([this] {
        state.setProgressStr(QStringLiteral("7 %"));
        state.setProgressStr(QStringLiteral("7 %"));
    });
    EXPECT_EQ(binding.value(), QStringLiteral("0 %")) << "the binding must wait for the GUI thread";
    ASSERT_TRUE(binding.becomes(QStringLiteral("7 %")));
    ASSERT_EQ(log.emissions().size(), 1U);
    EXPECT_FALSE(log.emissions()[0].onGuiThread);
    ASSERT_EQ(binding.changes().emissions().size(), 1U);
    EXPECT_TRUE(binding.changes().emissions()[0].onGuiThread);
}

TEST_F(AutoTest, ProgressColorIsKnownToQmlByItsNames)
{
    const QmlBinding binding(autoModules, QStringLiteral("Auto_.progressColor === Auto_.ProgressWarning"));
    EXPECT_EQ(binding.value(), false);
    onForeignThread([this] { state.setProgressColor(Auto::ProgressWarning); });
    binding.becomes(true);
    onForeignThread([this] { state.setProgressColor(Auto::ProgressNormal); });
    binding.becomes(false);
}

TEST_F(AutoTest, HighestConductivityHasTwoDecimals)
{
    const QmlBinding binding(autoModules, QStringLiteral("Auto_.lwSaureMax.toFixed(2)"));
    EXPECT_EQ(binding.value(), QStringLiteral("0.00"));
    onForeignThread([this] { state.setLwSaureMax(12.5); });
    binding.becomes(QStringLiteral("12.50"));
}

TEST_F(AutoTest, TheRunsMinimumStandsBesideTheSetting)
{
    const QmlBinding binding(autoModules,
                             QStringLiteral("Auto_.active ? Auto_.lwSaureMin : BrovikSettings.lwSaureMin"));
    EXPECT_EQ(binding.value(), 10);
    onForeignThread([this] {
        state.setActive(true);
        state.setLwSaureMin(7);
    });
    binding.becomes(7);
    EXPECT_EQ(Settings::instance().lwSaureMin(), 10);
}

TEST_F(AutoTest, QmlCannotWrite)
{
    const QmlBinding binding(
        autoModules,
        QStringLiteral("{ try { Auto_.progress = 5; return 'written'; } catch (e) { return e.name; } }"));
    EXPECT_EQ(binding.value(), QStringLiteral("TypeError"));
    EXPECT_EQ(state.progress(), 0);
}

TEST_F(AutoTest, ACommandCarriesItsNumberAndValue)
{
    SignalLog log(state, {"toPy"});
    const QmlBinding emitter(autoModules,
                             QStringLiteral("{ Auto_.toPy(Auto_.ToggleLwTestLauge, null); return 1; }"));
    ASSERT_EQ(log.emissions().size(), 1U);
    EXPECT_EQ(log.emissions()[0].values[0].toInt(), 2);
    EXPECT_TRUE(log.emissions()[0].values[1].value<QJSValue>().isNull());
    EXPECT_TRUE(log.emissions()[0].onGuiThread);
}
