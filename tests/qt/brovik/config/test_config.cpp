#include "brovik/config/config.h"
#include "declared.h"
#include "qml_binding.h"

#include <gmock/gmock.h>

using testing::ElementsAre;

namespace {

const QStringList configModules = {QStringLiteral("brovik.config")};

/// Leaves the object as it was made.
class ConfigTest : public testing::Test
{
protected:
    void TearDown() override
    {
        config.setMachineVersion(Config::MachineVersion2024);
        config.setDisplayType(Config::DisplayType_8_WSSKU_23741);
        config.setHasLevelSwitch(true);
    }

    Config &config = Config::instance();
};

} // namespace

TEST_F(ConfigTest, DeclaredProperties)
{
    EXPECT_THAT(
        declaredProperties(Config::staticMetaObject),
        ElementsAre("Config::MachineVersion machineVersion -> machineVersionChanged()",
                    "Config::MachineVersion machineVersionDefault constant",
                    "Config::DisplayType displayType -> displayTypeChanged()",
                    "Config::DisplayType displayTypeDefault constant",
                    "bool hasLevelSwitch -> hasLevelSwitchChanged()", "bool hasLevelSwitchDefault constant",
                    "bool hasSteamValve -> hasSteamValveChanged()", "bool hasSteamValveDefault constant",
                    "bool steamPressureSterilization -> steamPressureSterilizationChanged()",
                    "bool steamPressureSterilizationDefault constant"));
}

TEST_F(ConfigTest, DeclaredSignals)
{
    EXPECT_THAT(declaredSignals(Config::staticMetaObject),
                ElementsAre("machineVersionChanged()", "displayTypeChanged()", "hasLevelSwitchChanged()",
                            "hasSteamValveChanged()", "steamPressureSterilizationChanged()"));
}

TEST_F(ConfigTest, DeclaredEnumerators)
{
    EXPECT_THAT(declaredEnumerators(Config::staticMetaObject, "MachineVersion"),
                ElementsAre("MachineVersionLegacy = 0", "MachineVersion2024 = 1"));
    EXPECT_THAT(declaredEnumerators(Config::staticMetaObject, "DisplayType"),
                ElementsAre("DisplayType_7_WSSKU_14628 = 0", "DisplayType_8_WSSKU_23741 = 1"));
}

TEST_F(ConfigTest, AnotherGenerationReachesABindingOnTheGuiThread)
{
    const QmlBinding binding(configModules,
                             QStringLiteral("Config.machineVersion === Config.MachineVersionLegacy ? 9 : 7"));
    EXPECT_EQ(binding.value(), 7);
    onForeignThread([this] { config.setMachineVersion(Config::MachineVersionLegacy); });
    ASSERT_TRUE(binding.becomes(9));
    EXPECT_TRUE(binding.changes().emissions().back().onGuiThread);
}

TEST_F(ConfigTest, TheScreensFollowTheWrittenLevelSwitch)
{
    const QmlBinding binding(configModules,
                             QStringLiteral("[Config.hasLevelSwitch, Config.hasLevelSwitchDefault].join()"));
    EXPECT_EQ(binding.value(), QStringLiteral("true,true"));
    onForeignThread([this] { config.setHasLevelSwitch(false); });
    binding.becomes(QStringLiteral("false,true"));
}

TEST_F(ConfigTest, AnotherDisplayChangesNothingElse)
{
    const SignalLog log(config);
    onForeignThread([this] { config.setDisplayType(Config::DisplayType_7_WSSKU_14628); });
    EXPECT_THAT(log.names(), ElementsAre("displayTypeChanged"));
    EXPECT_FALSE(log.emissions()[0].onGuiThread);
}
