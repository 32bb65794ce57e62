// What stands in Wifi before anybody has written to it.

#include "brovik/wifi/wifi.h"

#include <gtest/gtest.h>

TEST(WifiFirstValues, DisconnectedWithoutASignal)
{
    const Wifi &wifi = Wifi::instance();
    EXPECT_EQ(wifi.state(), Wifi::Disconnected);
    EXPECT_EQ(wifi.ssid().toStdString(), "");
    EXPECT_EQ(wifi.qualityPercentage(), 0);
    EXPECT_EQ(wifi.qualityLevel(), 0);
}
