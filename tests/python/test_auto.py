"""The automatic run's state as the backend sees it."""

import unittest

import _probe
from brovik import auto, settings
from shared_properties import Attribute, check_initial_values, check_writes

ATTRIBUTES = [
    Attribute("active", "active", False, True),
    Attribute("lw_saure_active", "lwSaureActive", False, True),
    Attribute("lw_lauge_active", "lwLaugeActive", False, True),
    Attribute("lw_saure_too_low", "lwSaureTooLow", False, True),
    Attribute("lw_lauge_too_low", "lwLaugeTooLow", False, True),
    Attribute("lw_sp_reached", "lwSpReached", False, True),
    Attribute("lw_saure_max", "lwSaureMax", 0.0, 12.5),
    Attribute("lw_saure_min", "lwSaureMin", 0, -7),
    Attribute("lw_saure_sp", "lwSaureSp", 0, 1000000),
    Attribute("lw_lauge_max", "lwLaugeMax", 0.0, 1e-9),
    Attribute("lw_lauge_min", "lwLaugeMin", 0, 7),
    Attribute("lw_lauge_sp", "lwLaugeSp", 0, 8),
    Attribute("intense_factor", "intenseFactor", 0.0, 3.0),
    Attribute("intense_cleaning", "intenseCleaning", False, True),
    Attribute("progress", "progress", 0, 101),
    Attribute("progress_str", "progressStr", "0 %", "Spülen 3/5 \U0001f6e2"),
    Attribute("progress_color", "progressColor", auto.ProgressColor.Normal, auto.ProgressColor.Error),
]


class AutoTest(unittest.TestCase):
    """Attributes of brovik.auto.Auto."""

    def test_initial_values(self) -> None:
        """Every attribute starts as documented."""
        check_initial_values(self, auto.Auto, ATTRIBUTES)

    def test_writes(self) -> None:
        """Every attribute can be written and notifies once."""
        check_writes(self, "Auto", auto.Auto, ATTRIBUTES)

    def test_nothing_else(self) -> None:
        """The class has these attributes and no methods."""
        public = {name for name in vars(auto.AutoClass) if not name.startswith("_")}
        self.assertEqual(public, {attribute.name for attribute in ATTRIBUTES})

    def test_enums(self) -> None:
        """Names and numbers of the enumerations."""
        self.assertEqual(
            {name: int(value) for name, value in auto.AutoEnum.__members__.items()},
            {"Toggle": 0, "ToggleLwTestSaure": 1, "ToggleLwTestLauge": 2},
        )
        self.assertEqual(
            {name: int(value) for name, value in auto.ProgressColor.__members__.items()},
            {"Normal": 0, "Success": 1, "Warning": 2, "Error": 3},
        )

    def test_equal_text_notifies_once(self) -> None:
        """A repeated text raises its signal once, on the writer's thread."""
        log = _probe.SignalLog("Auto", ["progressStrChanged"])
        auto.Auto.progress_str = "7 %"
        auto.Auto.progress_str = "7 %"
        self.assertEqual(log.emissions, [("progressStrChanged", False, [])])
        self.assertEqual(_probe.qml("Auto", "progressStr"), "7 %")
        auto.Auto.progress_str = "0 %"

    def test_text_of_any_object(self) -> None:
        """A text takes what str() gives."""
        auto.Auto.progress_str = 7
        self.assertEqual(auto.Auto.progress_str, "7")
        auto.Auto.progress_str = "0 %"

    def test_negative_progress_leaves_the_text(self) -> None:
        """The text is not tied to the progress."""
        auto.Auto.progress = -1
        self.assertEqual(_probe.qml("Auto", "progress"), -1)
        self.assertEqual(_probe.qml("Auto", "progressStr"), "0 %")
        auto.Auto.progress = 0

    def test_progress_color(self) -> None:
        """The screens see the number of the colour, and the normal one again."""
        auto.Auto.progress_color = auto.ProgressColor.Warning
        self.assertEqual(_probe.qml("Auto", "progressColor"), 2)
        auto.Auto.progress_color = auto.ProgressColor.Normal
        self.assertEqual(_probe.qml("Auto", "progressColor"), 0)

    def test_run_and_settings_are_separate(self) -> None:
        """What is in force for the run stands beside the setting of the same name."""
        auto.Auto.lw_saure_min = 7
        self.assertEqual(settings.SettingsValues.lw_saure_min, 10)
        self.assertEqual(_probe.qml("Auto", "lwSaureMin"), 7)
        auto.Auto.lw_saure_min = 0


if __name__ == "__main__":
    unittest.main()
