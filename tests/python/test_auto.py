"""The automatic run's state as the backend sees it."""

import unittest

import _probe
from brovik import auto

INITIAL = {
    "active": False,
    "lw_saure_active": False,
    "lw_lauge_active": False,
    "lw_saure_too_low": False,
    "lw_lauge_too_low": False,
    "lw_sp_reached": False,
    "lw_saure_max": 0.0,
    "lw_saure_min": 0,
    "lw_saure_sp": 0,
    "lw_lauge_max": 0.0,
    "lw_lauge_min": 0,
    "lw_lauge_sp": 0,
    "intense_factor": 0.0,
    "intense_cleaning": False,
    "progress": 0,
    "progress_str": "0 %",
    "progress_color": auto.ProgressColor.Normal,
}


class AutoTest(unittest.TestCase):
    """Attributes of brovik.auto.Auto."""

    def test_initial_values(self) -> None:
        """Every attribute starts as documented."""
        self.assertEqual({name: getattr(auto.Auto, name) for name in INITIAL}, INITIAL)

    def test_equal_text_notifies_once(self) -> None:
        """A repeated text raises its signal once, on the writer's thread."""
        log = _probe.SignalLog("Auto", ["progressStrChanged"])
        auto.Auto.progress_str = "7 %"
        auto.Auto.progress_str = "7 %"
        self.assertEqual(log.emissions, [("progressStrChanged", False, [])])
        self.assertEqual(_probe.qml("Auto", "progressStr"), "7 %")
        auto.Auto.progress_str = "0 %"

    def test_wrong_types(self) -> None:
        """A wrong type raises TypeError and changes nothing."""
        for name, wrong in (("active", 1), ("active", None), ("progress", 1.5), ("lw_saure_max", "1")):
            with self.subTest(name=name, wrong=wrong):
                before = getattr(auto.Auto, name)
                with self.assertRaises(TypeError):
                    setattr(auto.Auto, name, wrong)
                self.assertEqual(getattr(auto.Auto, name), before)


if __name__ == "__main__":
    unittest.main()
