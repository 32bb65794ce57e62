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

// No signal: the icon keeps what an animation has left there until the next quality comes, which then differs
// from this level in any case.
void Wifi::_resetQualityLevel()
{
    m_qualityLevel = -1;
}
