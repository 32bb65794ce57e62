#include "wifi_bindings.h"

#include "python_property.h"
#include "wifi.h"

namespace py = pybind11;

void bindWifi(py::module_ &module)
{
    auto cls = sharedClass<Wifi>(module, "WifiClass", "State of the network.");
    publishSingleton<Wifi>(module, "Wifi");
}
