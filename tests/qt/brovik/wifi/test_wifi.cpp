#include "brovik/wifi/wifi.h"
#include "declared.h"
#include "qml_binding.h"

#include <QCoreApplication>

#include <gmock/gmock.h>

using testing::ElementsAre;
using testing::IsEmpty;

namespace {

const QStringList wifiModules = {QStringLiteral("brovik.wifi")};

QVariantMap oneNetwork(int quality)
{
    return {{QStringLiteral("a"), QVariantMap{{QStringLiteral("quality"), quality}}}};
}

/// Leaves the object as it was made.
class WifiTest : public testing::Test
{
protected:
    void TearDown() override
    {
        wifi.setState(Wifi::Disconnected);
        wifi.setQualityPercentage(1);
        wifi.setQualityPercentage(0);
        wifi.setScanResults({});
        ASSERT_EQ(wifi.qualityLevel(), 0);
    }

    Wifi &wifi = Wifi::instance();
};

} // namespace

TEST_F(WifiTest, DeclaredProperties)
{
    EXPECT_THAT(declaredProperties(Wifi::staticMetaObject),
                ElementsAre("Wifi::WifiState state -> stateChanged()", "QString ssid -> ssidChanged()",
                            "int qualityPercentage -> qualityPercentageChanged()",
                            "int qualityLevel -> qualityLevelChanged()", "bool is5GHz -> is5GHzChanged()",
                            "QList<QMap<QString,QVariant>> ipMapList -> ipMapListChanged()",
                            "QVariantMap scanResults -> scanResultsChanged()"));
}

TEST_F(WifiTest, DeclaredSignals)
{
    EXPECT_THAT(declaredSignals(Wifi::staticMetaObject),
                ElementsAre("stateChanged()", "ssidChanged()", "qualityPercentageChanged()",
                            "qualityLevelChanged()", "is5GHzChanged()", "ipMapListChanged()",
                            "scanResultsChanged()", "toPy(Wifi::WifiAction,QJSValue)",
                            "gotLoginData(QString,QString)", "gotScanResults()", "abortWifiScan()"));
}

TEST_F(WifiTest, DeclaredEnumerators)
{
    EXPECT_THAT(declaredEnumerators(Wifi::staticMetaObject, "WifiState"),
                ElementsAre("Connected = 0", "Connecting = 1", "Disconnected = 2", "Aborted = 3"));
    EXPECT_THAT(declaredEnumerators(Wifi::staticMetaObject, "WifiAction"),
                ElementsAre("Scan = 0", "IPData = 1", "Connect = 2", "Disconnect = 3", "Login = 4",
                            "RestartWireguard = 5"));
}

TEST_F(WifiTest, StartsDisconnectedAndEmpty)
{
    EXPECT_EQ(wifi.state(), Wifi::Disconnected);
    EXPECT_EQ(wifi.ssid(), QString());
    EXPECT_EQ(wifi.qualityPercentage(), 0);
    EXPECT_EQ(wifi.qualityLevel(), 0);
    EXPECT_FALSE(wifi.is5GHz());
    EXPECT_THAT(wifi.ipMapList(), IsEmpty());
    EXPECT_THAT(wifi.scanResults(), IsEmpty());
}

struct Level
{
    Wifi::WifiState state;
    int quality;
    int level;
};

class WifiLevelTest : public WifiTest, public testing::WithParamInterface<Level>
{};

TEST_P(WifiLevelTest, FollowsStateAndQuality)
{
    wifi.setState(GetParam().state);
    wifi.setQualityPercentage(GetParam().quality);
    EXPECT_EQ(wifi.qualityLevel(), GetParam().level);
}

INSTANTIATE_TEST_SUITE_P(Table, WifiLevelTest,
                         testing::Values(Level{Wifi::Connected, -5, 1}, Level{Wifi::Connected, 34, 1},
                                         Level{Wifi::Connected, 35, 2}, Level{Wifi::Connected, 64, 2},
                                         Level{Wifi::Connected, 65, 3}, Level{Wifi::Connected, 100, 3},
                                         Level{Wifi::Connecting, 80, 0}, Level{Wifi::Disconnected, 80, 0},
                                         Level{Wifi::Aborted, 80, 0}),
                         [](const testing::TestParamInfo<Level> &row) {
                             return "Row" + std::to_string(row.index);
                         });

TEST_F(WifiTest, AChangeOfStateLosesTheLevelSilentlyUntilTheNextQuality)
{
    wifi.setState(Wifi::Connected);
    wifi.setQualityPercentage(50);
    ASSERT_EQ(wifi.qualityLevel(), 2);
    const SignalLog log(wifi, {"qualityLevelChanged"});

    wifi.setState(Wifi::Connecting);
    wifi.setState(Wifi::Connected);
    wifi.setQualityPercentage(50);
    EXPECT_EQ(wifi.qualityLevel(), -1);
    EXPECT_THAT(log.emissions(), IsEmpty());

    wifi.setQualityPercentage(51);
    EXPECT_EQ(wifi.qualityLevel(), 2);
    EXPECT_EQ(log.emissions().size(), 1U);
}

TEST_F(WifiTest, AnEqualLevelIsNotToldOf)
{
    wifi.setState(Wifi::Connected);
    wifi.setQualityPercentage(50);
    const SignalLog log(wifi, {"qualityPercentageChanged", "qualityLevelChanged"});
    wifi.setQualityPercentage(51);
    ASSERT_EQ(log.emissions().size(), 1U);
    EXPECT_EQ(log.emissions()[0].name, "qualityPercentageChanged");
}

TEST_F(WifiTest, AForeignWriterLeavesTheLevelToTheGuiThread)
{
    const QmlBinding binding(wifiModules, QStringLiteral("Wifi.qualityLevel"));
    const SignalLog log(wifi, {"stateChanged", "qualityPercentageChanged", "qualityLevelChanged"});
    onForeignThread([this] {
        wifi.setState(Wifi::Connected);
        wifi.setQualityPercentage(70);
    });
    EXPECT_EQ(wifi.qualityLevel(), 0) << "the level must wait for the GUI thread";
    ASSERT_TRUE(binding.becomes(3));
    ASSERT_EQ(log.emissions().size(), 3U);
    EXPECT_FALSE(log.emissions()[1].onGuiThread);
    EXPECT_EQ(log.emissions()[2].name, "qualityLevelChanged");
    EXPECT_TRUE(log.emissions()[2].onGuiThread);
}

TEST_F(WifiTest, EveryScanIsToldOfAndOnlyAChangeIsOne)
{
    const SignalLog log(wifi);
    wifi.takeScanResults(oneNetwork(50));
    wifi.takeScanResults(oneNetwork(50));
    ASSERT_EQ(log.emissions().size(), 3U);
    EXPECT_EQ(log.emissions()[0].name, "scanResultsChanged");
    EXPECT_EQ(log.emissions()[1].name, "gotScanResults");
    EXPECT_EQ(log.emissions()[2].name, "gotScanResults");
    EXPECT_EQ(wifi.scanResults(), oneNetwork(50));
}

TEST_F(WifiTest, ListsAreComparedInDepth)
{
    const SignalLog log(wifi, {"ipMapListChanged"});
    wifi.setIpMapList({{{QStringLiteral("name"), QStringLiteral("wg0")}}});
    wifi.setIpMapList({{{QStringLiteral("name"), QStringLiteral("wg0")}}});
    EXPECT_EQ(log.emissions().size(), 1U);
    wifi.setIpMapList({});
    EXPECT_EQ(log.emissions().size(), 2U);
}
