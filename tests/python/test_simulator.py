"""The simulated hardware as the backend sees it."""

import unittest

import _probe
from brovik import simulator
from shared_properties import Attribute, check_initial_values, check_read_only, check_writes

CRITICAL = 2

ATTRIBUTES = [
    Attribute("enabled", "enabled", False, True),
    Attribute("a_in_0_min", "simAIn0Min", 0, -5),
    Attribute("a_in_0_max", "simAIn0Max", 100, 50),
    Attribute("a_in_0", "simAIn0", 0, 40),
    Attribute("a_in_1_min", "simAIn1Min", 0, 10),
    Attribute("a_in_1_max", "simAIn1Max", 100, 60),
    Attribute("a_in_1", "simAIn1", 0, 41),
    Attribute("scale_factor", "simScaleFactor", 1.0, 0.5),
    Attribute("p_inc_rate", "pIncRate", 0.05, -1.0),
    Attribute("p_dec_rate", "pDecRate", 0.1, 100.0),
]

KEYS = [
    "enabled",
    "enabled_default",
    "a_in_0",
    "a_in_0_min",
    "a_in_0_max",
    "a_in_0_default",
    "a_in_1",
    "a_in_1_min",
    "a_in_1_max",
    "a_in_1_default",
    "scale_factor",
    "scale_factor_default",
]


class SimulatorTest(unittest.TestCase):
    """Attributes and functions of brovik.simulator.Simulator."""

    def setUp(self) -> None:
        self.sim = simulator.Simulator
        self.capture = _probe.LogCapture()
        self.addCleanup(self.restore)

    def restore(self) -> None:
        """Leaves the object as it was made."""
        for attribute in ATTRIBUTES:
            setattr(self.sim, attribute.name, attribute.initial)

    def test_initial_values(self) -> None:
        """Every attribute starts as documented."""
        check_initial_values(self, self.sim, ATTRIBUTES)

    def test_writes(self) -> None:
        """Every attribute can be written and notifies once."""
        check_writes(self, "Simulator", self.sim, ATTRIBUTES)

    def test_defaults(self) -> None:
        """The defaults cannot be written."""
        check_read_only(
            self,
            self.sim,
            {"enabled_default": False, "a_in_0_default": 0, "a_in_1_default": 0, "scale_factor_default": 1.0},
        )

    def test_too_great(self) -> None:
        """Too much is logged, stored as the bound and notified, each time that it is asked for."""
        log = _probe.SignalLog("Simulator")
        self.sim.a_in_0 = 150
        self.sim.a_in_0 = 150
        self.assertEqual(self.sim.a_in_0, 100)
        self.assertEqual(log.names, ["simAIn0Changed"] * 2)
        line = (CRITICAL, "[Simulator WERT ZU GROß] 150 wird zu 100 geändert.")
        self.assertEqual(self.capture.messages, [line, line])

    def test_too_small(self) -> None:
        """Too little is notified though the value was the bound already."""
        log = _probe.SignalLog("Simulator")
        self.sim.a_in_1 = -1
        self.assertEqual(self.sim.a_in_1, 0)
        self.assertEqual(log.emissions, [("simAIn1Changed", False, [])])
        self.assertEqual(
            self.capture.messages, [(CRITICAL, "[Simulator WERT ZU KLEIN] -1 wird zu 0 geändert.")]
        )

    def test_new_bound_leaves_the_value(self) -> None:
        """A value that falls outside stays until the next write."""
        self.sim.a_in_0 = 80
        self.sim.a_in_0_max = 50
        self.assertEqual(self.sim.a_in_0, 80)
        self.sim.a_in_0 = 81
        self.assertEqual(self.sim.a_in_0, 50)

    def test_default_values(self) -> None:
        """One dictionary of two keys; none for the analogue inputs."""
        values = self.sim.get_default_values()
        self.assertEqual(list(values.items()), [("enabled", False), ("scale_factor", 1.0)])
        self.assertIs(self.sim.get_default_values(), values)

    def test_min_max_keys(self) -> None:
        """The names of the bounds."""
        self.assertEqual(
            self.sim.get_min_max_keys(), {"a_in_0_min", "a_in_0_max", "a_in_1_min", "a_in_1_max"}
        )

    def test_keys(self) -> None:
        """Each key gives its own name, of the class and of an object, and cannot be written."""
        names = [name for name in vars(simulator.SimKeys) if not name.startswith("_")]
        self.assertEqual(names, KEYS)
        for name in KEYS:
            with self.subTest(name):
                self.assertEqual(getattr(simulator.SimKeys, name), name)
                self.assertEqual(getattr(simulator.SimKeys(), name), name)
                with self.assertRaises(AttributeError):
                    setattr(simulator.SimKeys, name, "other")

    def test_rates_changed_by_a_screen(self) -> None:
        """What a screen changes is read at once, and has no bounds."""
        log = _probe.SignalLog("Simulator")
        _probe.invoke("Simulator", "changePIncRate", 0.2)
        _probe.invoke("Simulator", "changePDecRate", -7.5)
        _probe.invoke("Simulator", "changePIncRate", 0.2)
        self.assertEqual(self.sim.p_inc_rate, 0.2)
        self.assertEqual(self.sim.p_dec_rate, -7.5)
        self.assertEqual(log.emissions, [("pIncRateChanged", True, []), ("pDecRateChanged", True, [])])

    def test_enum(self) -> None:
        """Names and numbers of the enumeration."""
        self.assertEqual(
            {name: int(value) for name, value in simulator.SimuEnum.__members__.items()},
            {"Enabled": 0, "AIn0": 1, "AIn1": 2, "Lw": 3},
        )


if __name__ == "__main__":
    unittest.main()
