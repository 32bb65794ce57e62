#include "src/py/bindings/bindings.h"

#include "brovik/settings/settings.h"
#include "src/py/python_keys.h"
#include "src/py/python_property.h"

#include <algorithm>
#include <vector>

namespace py = pybind11;

namespace {

using Self = Settings;

/// A name of SettingsEnum.
struct Enumerator
{
    Settings::SettingsEnum value;
    const char *name;
};

/// A key of the dictionary of defaults. The number of an offset is that of its first action.
struct DefaultValue
{
    int number;
    const char *name;
    py::object (*read)(const Settings &settings);
};

struct SettingsKeys
{};

// clang-format off
#define NOTHING(...)
#define ENUMERATOR(number, enumerator, type, name, setter, pyName, ...) {Settings::enumerator, pyName},
#define ACTIONS(number, enumerator, ...) \
    {Settings::enumerator##Set, #enumerator "Set"}, {Settings::enumerator##Reset, #enumerator "Reset"},
#define DEFAULT_VALUE(number, enumerator, type, name, ...) DEFAULT_VALUE_OF(number, name, __VA_ARGS__)
#define DEFAULT_VALUE_OF(number, name, setter, pyName, ...) \
    {number, pyName, [](const Settings &settings) -> py::object { return py::cast(settings.name##Default()); }},
#define BOUNDS(number, enumerator, type, name, setter, pyName, ...) result.add(pyName "_min"); result.add(pyName "_max");
#define RANGED_ATTRIBUTES(number, enumerator, ...) BIND_RANGED(__VA_ARGS__)
#define DEFAULTED_ATTRIBUTES(number, enumerator, ...) BIND_DEFAULTED(__VA_ARGS__)
#define NAME_ATTRIBUTE(number, enumerator, ...) BIND_PROPERTY(__VA_ARGS__)
// clang-format on

/// The place of a number in Python's lists, which name the test of the lye before that of the acid.
int place(int number)
{
    switch (number) {
    case Settings::TestLwKreisSaure:
        return Settings::TestLwKreisLauge;
    case Settings::TestLwKreisLauge:
        return Settings::TestLwKreisSaure;
    default:
        return number;
    }
}

/// As place(), but the dictionary of defaults opens with the switch of intensive cleaning.
int placeOfDefault(int number)
{
    switch (number) {
    case Settings::IntenseFactor:
        return Settings::IntenseCleaning;
    case Settings::IntenseCleaning:
        return Settings::IntenseFactor;
    default:
        return place(number);
    }
}

std::vector<Enumerator> enumerators()
{
    std::vector<Enumerator> result = {{Settings::SettingsEnumInvalid, "Invalid"},
                                      SETTINGS_KEYS(ENUMERATOR, ENUMERATOR, ENUMERATOR, ACTIONS)};
    std::ranges::sort(result, {}, [](const Enumerator &enumerator) { return place(enumerator.value); });
    return result;
}

py::dict defaultValues()
{
    std::vector<DefaultValue> values = {
        SETTINGS_KEYS(DEFAULT_VALUE, DEFAULT_VALUE, DEFAULT_VALUE, DEFAULT_VALUE)};
    std::ranges::sort(values, {}, [](const DefaultValue &value) { return placeOfDefault(value.number); });
    py::dict result;
    for (const DefaultValue &value : values) {
        result[value.name] = value.read(Settings::instance());
    }
    return result;
}

py::set minMaxKeys()
{
    py::set result;
    SETTINGS_KEYS(BOUNDS, NOTHING, NOTHING, NOTHING)
    // Backends were built against the set without this one. The attribute exists and works.
    result.attr("discard")("lw_test_hold_secs_min");
    return result;
}

void bindSettingsEnum(py::module_ &module)
{
    py::enum_<Settings::SettingsEnum> result(module, "SettingsEnum", "What a screen asks to be changed.");
    for (const Enumerator &enumerator : enumerators()) {
        result.value(enumerator.name, enumerator.value);
    }
}

} // namespace

// NOLINTNEXTLINE(readability-function-size): the rows of the table make it long
void bindSettings(py::module_ &module)
{
    bindSettingsEnum(module);
    bindKeyNames<SettingsKeys>(module, "SettingsKeys", "Names of keys that have no enumerator of their own.",
                               {"p_offset", "lw_offset", "use_co2_after_saure"});

    auto cls = sharedClass<Self>(module, "SettingsClass", "The parameters of the process.");
    SETTINGS_KEYS(RANGED_ATTRIBUTES, DEFAULTED_ATTRIBUTES, NAME_ATTRIBUTE, DEFAULTED_ATTRIBUTES)
    bindKeyLists<defaultValues, minMaxKeys>(
        cls, "The default of each key by its name. Always the same dictionary: do not change it.");
    publishSingleton<Self>(module, "SettingsValues");
}
