#include "src/py/bindings/bindings.h"

#include "brovik/chart/chart.h"
#include "src/py/bindings/enums.h"
#include "src/py/python_list.h"
#include "src/py/python_property.h"

namespace py = pybind11;

namespace {

/// A point, or a list of them, that is refused as a whole if any part is no number: half a line would be
/// worse than none.
template <typename Points> struct Exact
{
    Points value;
};

} // namespace

template <typename Points> struct pybind11::detail::type_caster<Exact<Points>>
{
    PYBIND11_TYPE_CASTER(Exact<Points>, make_caster<Points>::name);

    bool load(handle source, bool /*convert*/)
    {
        try {
            value.value = castPy2Qt<Points>(source);
            return true;
        } catch (const error_already_set &) {
            return false;
        } catch (const builtin_exception &) {
            return false;
        }
    }
};

namespace {

void bindChartEnums(py::module_ &module)
{
    bindEnum<Chart::ChartEnum>(module, "ChartEnum", "Requests of the operator.", "Chart");

    py::enum_<Chart::LineEnum> lines(module, "LineEnum", "The lines of the chart.");
    lines.value("Invalid", Chart::LineInvalid);
#define BIND_LINE_ENUM(lineEnum, pyEnum, ...) lines.value(pyEnum, Chart::lineEnum);
    CHART_LINES(BIND_LINE_ENUM)
#undef BIND_LINE_ENUM
}

void bindMetaData(py::module_ &module)
{
    using Self = ChartMetaData;
    py::class_<Self, std::shared_ptr<Self>> cls(module, "ChartMetaData",
                                                "What the list tells of a saved chart.");
    cls.def(py::init<>());
    cls.def(py::init<const QString &, const QString &, const QString &, const QString &, int>(),
            py::arg("filename"), py::arg("result"), py::arg("status"), py::arg("datetime_str"),
            py::arg("duration"));
    CHART_META_DATA_PROPERTIES(BIND_PROPERTY)
}

void bindLine(py::module_ &module)
{
    using Self = ChartLine;
    using Points = Exact<Self::Points>;
    auto cls = sharedClass<Self>(module, "ChartLineClass", "One line of the chart.");
    const auto setData = [](Self &line, const Points &data) { line.setData(data.value); };
    cls.def_property("data", &Self::data, py::cpp_function(setData, py::is_method(cls), py::arg("value")),
                     "All points: seconds and value.");
    bindProperty(cls, "name", &Self::name, &Self::setName, "Name of the line in the log.");
    const auto addPoint = [](Self &line, const Exact<QPointF> &point) { line.addPoint(point.value); };
    cls.def("add_point", addPoint, py::arg("point"), "Appends one point: seconds and value.");
    cls.def("clear", &Self::clear, "Removes all points.");
}

template <typename Class> void bindLines(Class &cls)
{
    constexpr auto reference = py::return_value_policy::reference;
#define BIND_LINE(lineEnum, pyEnum, name, pyName, doc)                                                       \
    cls.def_property_readonly(pyName, &Chart::name, reference, doc);
    CHART_LINES(BIND_LINE)
#undef BIND_LINE
    cls.def(
        "line_from_actuator_enum",
        [](const Chart &chart, ActuatorEnum actuator) {
            return orNone(chart.lineFromActuatorEnum(actuator));
        },
        py::arg("enum"), reference, "None for what has no line in the chart.");
    cls.def(
        "line_from_line_enum",
        [](const Chart &chart, Chart::LineEnum line) { return orNone(chart.lineFromLineEnum(line)); },
        py::arg("enum"), reference, "None for a value that is no line.");
    cls.def("clear", &Chart::clear, "Removes the points of all lines.");
}

template <typename Class> void bindSavedCharts(Class &cls)
{
    using Self = Chart;
    cls.def_property(
        "meta_data_list", py::cpp_function(&Self::metaDataList, py::return_value_policy::reference),
        py::cpp_function(&Self::setMetaDataList, py::is_method(cls), py::arg("value")),
        "The saved charts. A change of the list itself is shown when one of the two functions is "
        "called that raise metaDataListChanged.");
    const auto find = [](const Self &chart, const QString &name) {
        return orNone(chart.findMetaDataByName(name));
    };
    cls.def("find_meta_data_by_name", find, py::arg("name"),
            "The record of exactly this name; None if there is none.");
    cls.def("emit_meta_data_list_changed", &Self::emitMetaDataListChanged, "Shows the list anew.");
    cls.def("sort_and_emit_meta_data_list_changed", &Self::sortAndEmitMetaDataListChanged,
            "Sorts the list by name, whatever the case of the letters, and shows it anew.");
}

} // namespace

void bindChart(py::module_ &module)
{
    using Self = Chart;
    py::class_<Self::MetaDataList> list(module, "ChartMetaDataList",
                                        "The records of the saved charts, by reference.");
    bindChartEnums(module);
    bindMetaData(module);
    bindList<ChartMetaData, ListElements::Referenced>(list);
    bindLine(module);
    auto cls = sharedClass<Self>(module, "ChartClass", "The chart in memory and the list of saved charts.");
    bindLines(cls);
    CHART_PROPERTIES(BIND_PROPERTY)
    bindSavedCharts(cls);
    publishSingleton<Self>(module, "Chart");
}
