#include "chart_bindings.h"

#include "chart.h"
#include "python_property.h"

namespace py = pybind11;

void bindChart(py::module_ &module)
{
    py::enum_<Chart::ChartEnum>(module, "ChartEnum", "Requests of the operator.")
        .value("Invalid", Chart::ChartInvalid)
        .value("Save", Chart::ChartSave)
        .value("Load", Chart::ChartLoad)
        .value("Delete", Chart::ChartDelete)
        .value("Rename", Chart::ChartRename)
        .value("Hand", Chart::ChartHand);

    auto cls = sharedClass<Chart>(module, "ChartClass", "The chart in memory and the list of saved charts.");
    publishSingleton<Chart>(module, "Chart");
}
