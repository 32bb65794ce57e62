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
#include "shared/gui_thread.h"

void createSingletons()
{
    Q_ASSERT(onGuiThread());
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
