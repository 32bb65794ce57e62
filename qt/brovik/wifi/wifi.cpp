#include "brovik/wifi/wifi.h"

namespace {

/// Bars of the icon for the quality of a connection, in percent.
int levelOf(int qualityPercentage)
{
    constexpr int twoBars = 35;
    constexpr int threeBars = 65;
    if (qualityPercentage < twoBars) {
        return 1;
    }
    return qualityPercentage < threeBars ? 2 : 3;
}

} // namespace

Wifi::Wifi()
{
    connect(this, &Wifi::qualityPercentageChanged, this, &Wifi::_setQualityLevel);
    connect(this, &Wifi::stateChanged, this, &Wifi::_resetQualityLevel);
}

void Wifi::takeScanResults(const QVariantMap &results)
{
    setScanResults(results);
    announce(*this, &Wifi::gotScanResults);
}

void Wifi::_setQualityLevel()
{
    setQualityLevel(state() == Connected ? levelOf(qualityPercentage()) : 0);
}

// Emits nothing: the icon keeps the level at which its animation has stopped. The next quality differs from
// this level in any case, so it is announced.
void Wifi::_resetQualityLevel()
{
    m_qualityLevel = -1;
}
