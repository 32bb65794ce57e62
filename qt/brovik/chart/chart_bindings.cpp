#include "chart_bindings.h"

#include "python_property.h"
#include "chart.h"

namespace py = pybind11;

void bindChart(py::module_ &module)
{
    auto cls = sharedClass<Chart>(module, "ChartClass", "The chart in memory and the list of saved charts.");
    publishSingleton<Chart>(module, "Chart");
}
