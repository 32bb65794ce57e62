#include "src/py/bindings/bindings.h"

#include "brovik/wifi/wifi.h"
#include "src/py/bindings/enums.h"
#include "src/py/python_property.h"

namespace py = pybind11;

void bindWifi(py::module_ &module)
{
    bindEnum<Wifi::WifiState>(module, "WifiStateEnum", "States of the wireless connection.");
    bindEnum<Wifi::WifiAction>(module, "WifiActionEnum", "Requests of the operator.");

    using namespace py::literals;
    using Self = Wifi;
    auto cls = sharedClass<Self>(module, "WifiClass", "State of the network.");
    WIFI_PROPERTIES(BIND_PROPERTY, BIND_NOTHING)
    cls.def("set_login_data", announcer(&Wifi::gotLoginData), "ssid"_a, "psk"_a,
            "Opens the login page for a network, with this password in its field.");
    cls.def("abort_wifi_scan", announcer(&Wifi::abortWifiScan),
            "Ends the wait for a scan that has no results.");
    cls.def("set_scan_results", &Wifi::takeScanResults, "results"_a,
            "Ends the wait for a scan: the networks found, by name, each with its `quality` and `is5GHz`.");
    publishSingleton<Self>(module, "Wifi");
}
