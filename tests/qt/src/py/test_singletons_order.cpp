#include "src/py/singletons.h"

#include "brovik/actuator/actuator.h"
#include "brovik/auto/auto.h"
#include "brovik/chart/chart.h"
#include "brovik/config/config.h"
#include "brovik/gpio/gpio.h"
#include "brovik/gui/gui.h"
#include "brovik/sensor/sensor.h"
#include "brovik/settings/settings.h"
#include "brovik/shell/shell.h"
#include "brovik/simulator/simulator.h"
#include "brovik/wifi/wifi.h"
#include "object_hooks.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <string>
#include <vector>

namespace {

std::vector<const QObject *> made;

/// The classes of these objects in the order in which they were made; without those that were not.
std::vector<std::string> namesInOrder(std::vector<QObject *> objects)
{
    const auto place = [](const QObject *object) { return std::find(made.begin(), made.end(), object); };
    std::erase_if(objects, [&](const QObject *object) { return place(object) == made.end(); });
    std::sort(objects.begin(), objects.end(),
              [&](const QObject *one, const QObject *other) { return place(one) < place(other); });
    std::vector<std::string> names;
    for (const QObject *object : objects) {
        names.emplace_back(object->metaObject()->className());
    }
    return names;
}

} // namespace

// They end in the reverse order, and each may rely on those before it.
TEST(SingletonsOrder, EachIsMadeInItsTurn)
{
    watchObjects([](QObject *object) { made.push_back(object); }, nullptr);
    createSingletons();
    watchObjects(nullptr, nullptr);
    EXPECT_THAT(
        namesInOrder({&Wifi::instance(), &Simulator::instance(), &Shell::instance(), &Settings::instance(),
                      &Sensor::instance(), &Gui::instance(), &GPIO::instance(), &Config::instance(),
                      &Chart::instance(), &Auto::instance(), &Actuator::instance()}),
        testing::ElementsAre("Actuator", "Auto", "Chart", "Config", "GPIO", "Gui", "Sensor", "Settings",
                             "Shell", "Simulator", "Wifi"));
}
