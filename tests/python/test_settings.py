"""The process parameters as the backend sees them."""

import unittest
from dataclasses import dataclass
from typing import Any

import _probe
from brovik import settings
from shared_properties import Attribute, check_initial_values, check_read_only, check_writes

CRITICAL = 2


@dataclass(frozen=True)
class Ranged:
    """A key with bounds: its number, its names, its start."""

    number: int
    name: str
    qml: str
    lowest: float
    highest: float
    default: float


RANGED = [
    Ranged(1, "intense_factor", "intenseFactor", 1.5, 10.0, 3.0),
    Ranged(3, "threshold_p_blow", "thresholdPBlow", 0.01, 0.2, 0.05),
    Ranged(4, "threshold_lw_empty", "thresholdLwEmpty", 0.01, 1.0, 0.07),
    Ranged(5, "threshold_lw_water", "thresholdLwWater", 0.05, 1.3, 0.1),
    Ranged(6, "threshold_lw_electrolyte", "thresholdLwElectrolyte", 0.1, 5.0, 1.5),
    Ranged(7, "secs_blow_min", "secsBlowMin", 1, 20, 5),
    Ranged(8, "secs_pump", "secsPump", 5, 20, 5),
    Ranged(9, "secs_blow_after_pump", "secsBlowAfterPump", 1, 20, 3),
    Ranged(10, "leakage_p_fill", "leakagePFill", 0.3, 1.0, 0.5),
    Ranged(11, "leakage_p_inc_rate", "leakagePIncRate", 0.01, 0.2, 0.03),
    Ranged(12, "leakage_p_hold_secs", "leakagePHoldSecs", 1, 20, 3),
    Ranged(13, "leakage_p_max_loss", "leakagePMaxLoss", 0.01, 0.2, 0.07),
    Ranged(14, "blow_after_empty_secs", "blowAfterEmptySecs", 1, 60, 10),
    Ranged(15, "lauge_kreis_secs", "laugeKreisSecs", 10, 600, 100),
    Ranged(16, "hot_kreis_fill_secs_legacy", "hotKreisFillSecsLegacy", 1, 20, 6),
    Ranged(17, "hot_kreis_clean_secs_legacy", "hotKreisCleanSecsLegacy", 1, 20, 6),
    Ranged(18, "saure_kreis_secs", "saureKreisSecs", 10, 600, 100),
    Ranged(19, "cold_kreis_fill_secs_legacy", "coldKreisFillSecsLegacy", 1, 20, 6),
    Ranged(20, "cold_kreis_clean_secs_legacy", "coldKreisCleanSecsLegacy", 1, 20, 6),
    Ranged(21, "co2_blow_after_empty_secs", "co2BlowAfterEmptySecs", 1, 60, 5),
    Ranged(22, "vorspannen_p", "vorspannenP", 0.1, 2.0, 0.7),
    Ranged(24, "steam_sterilization_secs", "steamSterilizationSecs", 15, 180, 40),
    Ranged(25, "steam_co2_blow_secs", "steamCo2BlowSecs", 1, 20, 3),
    Ranged(26, "lw_test_hold_secs", "lwTestHoldSecs", 5, 30, 20),
    Ranged(27, "lw_saure_min", "lwSaureMin", 1, 50, 10),
    Ranged(28, "lw_saure_sp", "lwSaureSp", 2, 100, 20),
    Ranged(30, "lw_lauge_min", "lwLaugeMin", 1, 50, 30),
    Ranged(31, "lw_lauge_sp", "lwLaugeSp", 2, 100, 60),
]
SWITCHES = [
    Attribute("intense_cleaning", "intenseCleaning", False, True),
    Attribute("do_steam_step", "doSteamStep", True, False),
    Attribute("test_leakage_p", "testLeakageP", True, False),
    Attribute("test_lw_water_cold", "testLwWaterCold", True, False),
    Attribute("test_lw_water_hot", "testLwWaterHot", True, False),
    Attribute("test_lw_kreis_saure", "testLwKreisSaure", True, False),
    Attribute("test_lw_kreis_lauge", "testLwKreisLauge", True, False),
    Attribute("test_lauge_level", "testLaugeLevel", True, False),
    Attribute("use_co2_after_saure", "useCO2AfterSaure", True, False),
]
NAMES = [
    Attribute("lw_saure_name", "lwSaureName", "SANAL®-SA 3", "Säure"),
    Attribute("lw_lauge_name", "lwLaugeName", "RIMALKAN®-HAT 26", ""),
]
OFFSETS = [
    Attribute("p_offset", "pOffset", 0.0, -1e9),
    Attribute("lw_offset", "lwOffset", 0.0, 0.25),
]
BOUNDS = [
    attribute
    for key in RANGED
    for attribute in (
        Attribute(f"{key.name}_min", f"{key.qml}Min", key.lowest, key.lowest * 2),
        Attribute(f"{key.name}_max", f"{key.qml}Max", key.highest, key.highest * 3),
    )
]
# A bound of the same type is a legal value; the lower one is the start of one key.
VALUES = [Attribute(key.name, key.qml, key.default, key.highest) for key in RANGED]

ENUM_NAMES = [
    "Invalid",
    "intense_factor",
    "intense_cleaning",
    "threshold_p_blow",
    "threshold_lw_empty",
    "threshold_lw_water",
    "threshold_lw_electrolyte",
    "secs_blow_min",
    "secs_pump",
    "secs_blow_after_pump",
    "leakage_p_fill",
    "leakage_p_inc_rate",
    "leakage_p_hold_secs",
    "leakage_p_max_loss",
    "blow_after_empty_secs",
    "lauge_kreis_secs",
    "hot_kreis_fill_secs_legacy",
    "hot_kreis_clean_secs_legacy",
    "saure_kreis_secs",
    "cold_kreis_fill_secs_legacy",
    "cold_kreis_clean_secs_legacy",
    "co2_blow_after_empty_secs",
    "vorspannen_p",
    "do_steam_step",
    "steam_sterilization_secs",
    "steam_co2_blow_secs",
    "lw_test_hold_secs",
    "lw_saure_min",
    "lw_saure_sp",
    "lw_saure_name",
    "lw_lauge_min",
    "lw_lauge_sp",
    "lw_lauge_name",
    "test_leakage_p",
    "test_lw_water_cold",
    "test_lw_water_hot",
    "test_lw_kreis_lauge",
    "test_lw_kreis_saure",
    "test_lauge_level",
    "POffsetSet",
    "POffsetReset",
    "LwOffsetSet",
    "LwOffsetReset",
    "use_co2_after_saure",
]

#: In the order of the enumeration, but the switch of intensive cleaning comes first and the offsets replace
#: their actions.
DEFAULT_NAMES = [
    *("intense_cleaning", "intense_factor"),
    *ENUM_NAMES[ENUM_NAMES.index("threshold_p_blow") : ENUM_NAMES.index("POffsetSet")],
    *("p_offset", "lw_offset", "use_co2_after_saure"),
]
ATTRIBUTES = BOUNDS + VALUES + SWITCHES + NAMES + OFFSETS
INITIAL = {attribute.name: attribute.initial for attribute in VALUES + SWITCHES + NAMES + OFFSETS}
DEFAULTS: dict[str, Any] = {name: INITIAL[name] for name in DEFAULT_NAMES}


class SettingsAttributesTest(unittest.TestCase):
    """What holds for every key."""

    def setUp(self) -> None:
        self.values = settings.SettingsValues

    def test_initial_values(self) -> None:
        """Values and bounds start as documented, with their types."""
        check_initial_values(self, self.values, ATTRIBUTES)

    def test_writes(self) -> None:
        """Values and bounds can be written and notify once."""
        check_writes(self, "Settings", self.values, ATTRIBUTES)

    def test_defaults(self) -> None:
        """Each key but the names has its default, which cannot be written."""
        names = {attribute.name for attribute in NAMES}
        defaults = {f"{name}_default": value for name, value in DEFAULTS.items() if name not in names}
        check_read_only(self, self.values, defaults)
        for name in names:
            self.assertFalse(hasattr(self.values, f"{name}_default"))

    def test_every_value_is_clamped(self) -> None:
        """A value outside its bounds becomes the bound and notifies once."""
        capture, log = _probe.LogCapture(), _probe.SignalLog("Settings")
        for key in RANGED:
            for asked, bound in ((key.lowest - 1, key.lowest), (key.highest + 1, key.highest)):
                with self.subTest(key.name, asked=asked):
                    setattr(self.values, key.name, asked)
                    self.assertEqual(getattr(self.values, key.name), bound)
                    self.assertEqual(log.emissions, [(f"{key.qml}Changed", False, [])])
                    self.assertEqual([level for level, _ in capture.messages], [CRITICAL])
                log.clear()
                capture.clear()
            setattr(self.values, key.name, key.default)
            log.clear()

    def test_nothing_else(self) -> None:
        """The class has these attributes and two methods."""
        expected = {attribute.name for attribute in BOUNDS + VALUES + SWITCHES + NAMES + OFFSETS}
        expected |= {f"{name}_default" for name in DEFAULTS} - {
            f"{attribute.name}_default" for attribute in NAMES
        }
        expected |= {"get_default_values", "get_min_max_keys"}
        public = {name for name in vars(settings.SettingsClass) if not name.startswith("_")}
        self.assertEqual(public, expected)


class SettingsTest(unittest.TestCase):
    """Bounds, dictionaries and names."""

    def setUp(self) -> None:
        self.values = settings.SettingsValues
        self.capture = _probe.LogCapture()
        self.log = _probe.SignalLog("Settings")
        self.addCleanup(self.restore)

    def restore(self) -> None:
        """Leaves the object as it was made."""
        self.values.intense_factor = 3.0
        self.values.secs_pump_max = 20
        self.values.secs_pump = 5
        self.values.lw_saure_name = "SANAL®-SA 3"

    def test_too_small(self) -> None:
        """Too little is logged and becomes the bound; once more it is logged and notified once more."""
        self.values.intense_factor = 0.5
        self.assertEqual(self.values.intense_factor, 1.5)
        self.values.intense_factor = 0.5
        self.assertEqual(self.values.intense_factor, 1.5)
        line = (CRITICAL, "[Settings WERT ZU KLEIN] 0.5 wird zu 1.5 geändert.")
        self.assertEqual(self.capture.messages, [line, line])
        self.assertEqual(self.log.names, ["intenseFactorChanged"] * 2)

    def test_too_great(self) -> None:
        """Too much becomes the bound; writing the stored value notifies nothing."""
        self.values.secs_pump = 25
        self.assertEqual(self.values.secs_pump, 20)
        self.values.secs_pump = 20
        self.assertEqual(self.log.names, ["secsPumpChanged"])
        self.assertEqual(
            self.capture.messages, [(CRITICAL, "[Settings WERT ZU GROß] 25 wird zu 20 geändert.")]
        )

    def test_value_equal_to_a_bound(self) -> None:
        """A bound itself is not logged."""
        self.values.secs_pump = 20
        self.values.secs_pump = 5
        self.values.intense_factor = 1.5
        self.assertEqual(self.capture.messages, [])

    def test_new_bound_leaves_the_value(self) -> None:
        """A value that falls outside stays until the next write."""
        self.values.secs_pump = 20
        self.values.secs_pump_max = 10
        self.assertEqual(self.values.secs_pump, 20)
        self.assertEqual(_probe.qml("Settings", "secsPump"), 20)
        self.values.secs_pump = 19
        self.assertEqual(self.values.secs_pump, 10)

    def test_default_values(self) -> None:
        """All keys in their order, with their types; always the same dictionary."""
        values = self.values.get_default_values()
        self.assertEqual(list(values.items()), list(DEFAULTS.items()))
        self.assertEqual(
            [type(value) for value in values.values()], [type(value) for value in DEFAULTS.values()]
        )
        self.assertEqual(len(values), len(DEFAULT_NAMES))
        self.assertIs(self.values.get_default_values(), values)

    def test_default_of_a_written_name(self) -> None:
        """A default does not follow the value."""
        self.values.lw_saure_name = "Säure"
        self.assertEqual(self.values.get_default_values()["lw_saure_name"], "SANAL®-SA 3")

    def test_emptied_default_values(self) -> None:
        """Who empties the dictionary has it made anew."""
        self.values.get_default_values().clear()
        self.assertEqual(self.values.get_default_values(), DEFAULTS)

    def test_min_max_keys(self) -> None:
        """The names of the bounds but for one; always the same set."""
        keys = self.values.get_min_max_keys()
        self.assertNotIn("lw_test_hold_secs_min", keys)
        self.assertIn("lw_test_hold_secs_max", keys)
        self.assertEqual(keys, {bound.name for bound in BOUNDS} - {"lw_test_hold_secs_min"})
        self.assertEqual(len(keys), len(BOUNDS) - 1)
        self.assertIs(self.values.get_min_max_keys(), keys)

    def test_enum(self) -> None:
        """Names in their order, each with its number."""
        members = settings.SettingsEnum.__members__
        self.assertEqual(list(members), ENUM_NAMES)
        numbers = {name: number for number, name in enumerate(ENUM_NAMES)}
        numbers |= {"test_lw_kreis_saure": 36, "test_lw_kreis_lauge": 37}
        self.assertEqual({name: int(value) for name, value in members.items()}, numbers)
        for key in RANGED:
            self.assertEqual(int(members[key.name]), key.number)

    def test_settings_keys(self) -> None:
        """Each key gives its own name, of the class and of an object, and cannot be written."""
        for name in ("p_offset", "lw_offset", "use_co2_after_saure"):
            self.assertEqual(getattr(settings.SettingsKeys, name), name)
            self.assertEqual(getattr(settings.SettingsKeys(), name), name)
            with self.assertRaises(AttributeError):
                setattr(settings.SettingsKeys, name, "other")
        public = [name for name in vars(settings.SettingsKeys) if not name.startswith("_")]
        self.assertEqual(public, ["p_offset", "lw_offset", "use_co2_after_saure"])


if __name__ == "__main__":
    unittest.main()
