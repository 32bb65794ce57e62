#include "wifi_bindings.h"

#include "python_property.h"
#include "wifi.h"

namespace py = pybind11;

void bindWifi(py::module_ &module)
{
    py::enum_<Wifi::WifiAction>(module, "WifiActionEnum", "Requests of the operator.")
        .value("Scan", Wifi::Scan)
        .value("IPData", Wifi::IPData)
        .value("Connect", Wifi::Connect)
        .value("Disconnect", Wifi::Disconnect)
        .value("Login", Wifi::Login)
        .value("RestartWireguard", Wifi::RestartWireguard);

    auto cls = sharedClass<Wifi>(module, "WifiClass", "State of the network.");
    publishSingleton<Wifi>(module, "Wifi");
}
