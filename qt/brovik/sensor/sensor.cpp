#include "brovik/sensor/sensor.h"

#include "brovik/gpio/gpio.h"
#include "brovik/settings/settings.h"
#include "brovik/simulator/simulator.h"
#include "shared/gui_thread.h"
#include "shared/log.h"

#include <QMetaEnum>

#include <algorithm>
#include <chrono>
#include <cmath>
#include <limits>

namespace {

constexpr std::chrono::milliseconds period(250);

/// Percent of the analogue input for a pressure in bar; nothing for an unknown sensor.
std::optional<double> pressurePercent(SensorPEnum sensor, double bar)
{
    switch (sensor) {
    case SensorEnums::SMC_PSE564_02:
        return (bar / 1.25 + 1.0) / 5.0 * 100.0;
    case SensorEnums::Gems_3500R0006G01B000:
        return bar / 6.0 * 100.0;
    }
    return std::nullopt;
}

/// Percent of the analogue input of a Seli_SLI_03 for a conductivity in mS/cm.
double conductivityPercent(double value)
{
    return (value / 125.0 + 0.2) * 100.0;
}

/// Limited to what fits into an int: a larger number must not wrap round, but meet the simulator's bounds.
int wholePercent(double percent)
{
    using Limits = std::numeric_limits<int>;
    return static_cast<int>(std::lround(std::clamp<double>(percent, Limits::min(), Limits::max())));
}

void logNotImplemented(SensorEnum input)
{
    warningStream() << "Nicht implementiert:" << QMetaEnum::fromType<SensorEnum>().valueToKey(input);
}

} // namespace

Sensor::Sensor()
{
    connect(this, &Sensor::_initLwTimerSignal, this, &Sensor::_initLwTimer);
}

DIn *Sensor::dinFromEnum(SensorEnum input) const
{
    const auto found = std::find_if(m_allDins.begin(), m_allDins.end(),
                                    [input](const DIn *din) { return din->input() == input; });
    return found != m_allDins.end() ? *found : nullptr;
}

AIn *Sensor::ainFromEnum(SensorEnum input)
{
    switch (input) {
    case SensorEnums::AIn1:
        return &m_aIn1;
    case SensorEnums::AIn2:
        return &m_aIn2;
    default:
        return nullptr;
    }
}

double Sensor::setLwAndApplyOffset(double raw)
{
    const double value = raw - Settings::instance().lwOffset();
    storeLw(value, raw);
    return value;
}

double Sensor::setPAndApplyOffset(double raw)
{
    const double value = raw - Settings::instance().pOffset();
    storeP(value, raw);
    return value;
}

void Sensor::storeLw(double value, double raw)
{
    const Hold hold(*this);
    setLeitwert(value);
    setRawLeitwert(raw);
}

void Sensor::storeP(double value, double raw)
{
    const Hold hold(*this);
    setDruck(value);
    setRawDruck(raw);
}

void Sensor::setupLwEdgeDetect(uint channel)
{
    GPIO::instance().addEventDetect(channel, brovik::Edge::FALLING, edgeCounter());
}

gpio_callback_func Sensor::edgeCounter()
{
    return [this](uint /*line*/, bool /*rising*/) {
        const InnerLocker lock(&m_tickMutex);
        ++m_lwTicks;
    };
}

void Sensor::_initLwTimer()
{
    Q_ASSERT(onGuiThread());
    connect(&m_periodTimer, &QTimer::timeout, this, &Sensor::_calcLw);
    m_elapsed.start();
    m_periodTimer.start(period);
}

void Sensor::_calcLw()
{
    // The time that has really passed: a late timer falsifies nothing.
    calcLw(m_elapsed.restart());
}

/// Whole Hz; nothing without an edge.
std::optional<qint64> Sensor::takeFrequency(qint64 elapsedMs)
{
    const InnerLocker lock(&m_tickMutex);
    const qint64 ticks = m_lwTicks;
    if (ticks == 0) {
        return std::nullopt;
    }
    m_lwTicks = 0;
    // Two runs within one millisecond must not divide by zero.
    const double seconds = static_cast<double>(std::max<qint64>(elapsedMs, 1)) / 1000.0;
    m_frequency = static_cast<qint64>(static_cast<double>(ticks) / seconds);
    return m_frequency;
}

void Sensor::calcLw(qint64 elapsedMs)
{
    Q_ASSERT(onGuiThread());
    const std::optional<qint64> frequency = takeFrequency(elapsedMs);
    if (!frequency) {
        const Hold hold(*this);
        setLeitwert(0.0);
        setLwSensorDefective(true);
        return;
    }
    const double kiloHertz = static_cast<double>(*frequency) / 1000.0;
    setLeitwert(std::fma(kiloHertz, kiloHertz, -Settings::instance().lwOffset()));
    setLwSensorDefective(false);
}

void Sensor::pChangeFromSimulator(double bar)
{
    if (const std::optional<double> percent = pressurePercent(pType(), bar)) {
        Simulator::instance().setSimAIn0(wholePercent(*percent));
    }
    setDruck(bar);
}

void Sensor::lwChangeFromSimulator(double value)
{
    if (lwType() == SensorEnums::Seli_SLI_03) {
        Simulator::instance().setSimAIn1(wholePercent(conductivityPercent(value)));
    }
    setLeitwert(value);
}

void Sensor::requestValueChange(SensorEnum input, const QJSValue &value)
{
    switch (input) {
    case SensorEnums::StartBtn:
    case SensorEnums::StopBtn:
        announce(*this, &Sensor::stateChangeRequested, input, value.toBool());
        break;
    case SensorEnums::SensorLevel:
        announce(*this, &Sensor::stateChangeRequested, input, !m_level.state());
        break;
    case SensorEnums::SensorLw:
        lwChangeFromSimulator(value.toNumber());
        break;
    case SensorEnums::AIn1:
    case SensorEnums::AIn2:
        logNotImplemented(input);
        break;
    case SensorEnums::SensorP:
        pChangeFromSimulator(value.toNumber());
        break;
    }
}
