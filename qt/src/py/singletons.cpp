#include "singletons.h"

#include "actuator.h"
#include "auto.h"
#include "chart.h"
#include "config.h"
#include "gpio.h"
#include "gui.h"
#include "sensor.h"
#include "settings.h"
#include "shell.h"
#include "simulator.h"
#include "wifi.h"

void createSingletons()
{
    Actuator::instance();
    Auto::instance();
    Chart::instance();
    Config::instance();
    GPIO::instance();
    Gui::instance();
    Sensor::instance();
    Settings::instance();
    Shell::instance();
    Simulator::instance();
    Wifi::instance();
}
