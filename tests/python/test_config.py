"""The machine's configuration as the backend sees it."""

import unittest

import _probe
from brovik import config
from shared_properties import Attribute, check_initial_values, check_read_only, check_writes

# pylint: disable=protected-access  # names of enumerators that begin with a digit otherwise

ATTRIBUTES = [
    Attribute("machine_version", "machineVersion", config.MachineVersion._2024, config.MachineVersion.Legacy),
    Attribute(
        "display_type",
        "displayType",
        config.DisplayType._8_WSSKU_23741,
        config.DisplayType._7_WSSKU_14628,
    ),
    Attribute("has_steam_valve", "hasSteamValve", False, True),
    Attribute("steam_pressure_sterilization", "steamPressureSterilization", False, True),
]


class ConfigTest(unittest.TestCase):
    """Attributes of brovik.config.Config."""

    def test_initial_values(self) -> None:
        """Every attribute starts as documented."""
        check_initial_values(self, config.Config, ATTRIBUTES)

    def test_writes(self) -> None:
        """Every attribute can be written and notifies once."""
        check_writes(self, "Config", config.Config, ATTRIBUTES)

    def test_defaults(self) -> None:
        """The defaults, the machine's generation among them, cannot be written."""
        defaults = {f"{attribute.name}_default": attribute.initial for attribute in ATTRIBUTES}
        check_read_only(self, config.Config, defaults | {"has_level_switch_default": True})

    def test_initial_generation_is_no_change(self) -> None:
        """Writing the generation that is there notifies nothing."""
        log = _probe.SignalLog("Config")
        config.Config.machine_version = config.Config.machine_version_default
        self.assertEqual(log.names, [])

    def test_steam_valve_reads_back(self) -> None:
        """The steam valve reads what was written."""
        config.Config.has_steam_valve = True
        self.assertIs(config.Config.has_steam_valve, True)
        config.Config.has_steam_valve = False

    def test_level_switch_reads_its_default(self) -> None:
        """The level switch reads its default, while the screens follow what was written."""
        log = _probe.SignalLog("Config")
        config.Config.has_level_switch = False
        self.assertIs(config.Config.has_level_switch, True)
        self.assertEqual(log.emissions, [("hasLevelSwitchChanged", False, [])])
        self.assertIs(_probe.qml("Config", "hasLevelSwitch"), False)
        config.Config.has_level_switch = True

    def test_another_display_changes_nothing_else(self) -> None:
        """Another display raises its own signal alone."""
        log = _probe.SignalLog("Config")
        config.Config.display_type = ATTRIBUTES[1].other
        self.assertEqual(log.names, ["displayTypeChanged"])
        config.Config.display_type = ATTRIBUTES[1].initial

    def test_enums(self) -> None:
        """Names and numbers of the enumerations."""
        self.assertEqual(
            {name: int(value) for name, value in config.MachineVersion.__members__.items()},
            {"Legacy": 0, "_2024": 1},
        )
        self.assertEqual(
            {name: int(value) for name, value in config.DisplayType.__members__.items()},
            {"_7_WSSKU_14628": 0, "_8_WSSKU_23741": 1},
        )


if __name__ == "__main__":
    unittest.main()
