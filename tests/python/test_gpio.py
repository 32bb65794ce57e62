"""The edge detection as the backend sees it."""

import unittest

import _probe
from brovik import gpio, sensor
from waiting import eventually

CRITICAL = 2


class PrefixTest(unittest.TestCase):
    """The start of the labels."""

    def setUp(self) -> None:
        self.addCleanup(setattr, gpio.GPIO, "consumer_prefix", "brovik_")

    def test_initial_value(self) -> None:
        """The prefix before anybody writes one."""
        self.assertEqual(gpio.GPIO.consumer_prefix, "brovik_")

    def test_notifies_once_per_change(self) -> None:
        """The present value is no change."""
        log = _probe.SignalLog("GPIO")
        gpio.GPIO.consumer_prefix = "brovik_"
        self.assertEqual(log.names, [])
        gpio.GPIO.consumer_prefix = "x_"
        gpio.GPIO.consumer_prefix = "x_"
        self.assertEqual(log.emissions, [("consumerPrefixChanged", False, [])])
        self.assertEqual(gpio.GPIO.consumer_prefix, "x_")

    def test_takes_a_str_alone(self) -> None:
        """All else raises and changes nothing."""
        wrong: list[object] = [5, None, b"x_", ["x_"]]
        for value in wrong:
            with self.subTest(value), self.assertRaises(TypeError):
                setattr(gpio.GPIO, "consumer_prefix", value)
        with self.assertRaisesRegex(TypeError, "nicht in UTF-8"):
            gpio.GPIO.consumer_prefix = "\ud800"
        self.assertEqual(gpio.GPIO.consumer_prefix, "brovik_")


class ChipTest(unittest.TestCase):
    """Chips and lines."""

    def setUp(self) -> None:
        self.chip = _probe.SimulatedChip()
        self.capture = _probe.LogCapture()
        self.addCleanup(_probe.stop_gpio)

    def armed(self, line: int) -> bool:
        """Whether the line gets requested."""
        return eventually(lambda: self.chip.label(line) is not None)

    def given_up(self, line: int) -> bool:
        """Whether the line gets free."""
        return eventually(lambda: self.chip.label(line) is None)

    def test_open_failure_reaches_the_caller(self) -> None:
        """What cannot be opened raises."""
        for path in ("/dev/gpiochip-missing", "/dev/null", ""):
            with self.subTest(path), self.assertRaises(RuntimeError):
                gpio.GPIO.open_chip(path)

    def test_open_takes_a_path(self) -> None:
        """Anything else is a type error."""
        for wrong in (5, None):
            with self.subTest(wrong), self.assertRaises(TypeError):
                gpio.GPIO.open_chip(wrong)

    def test_argument_names(self) -> None:
        """Arguments may be given by name."""
        gpio.GPIO.open_chip(path_to_dev=self.chip.path)
        with self.assertRaises(IndexError):
            gpio.GPIO.release(line=99)

    def test_label(self) -> None:
        """A line's label is the prefix of the moment in which it was armed, and the offset."""
        gpio.GPIO.open_chip(self.chip.path)
        gpio.GPIO.consumer_prefix = "x_"
        sensor.Sensor.setup_lw_edge_detect(5)
        self.assertTrue(self.armed(5))
        gpio.GPIO.consumer_prefix = "brovik_"
        self.assertEqual(self.chip.label(5), "x_5")

    def test_release(self) -> None:
        """A release takes the line away from the thread that waits for it."""
        gpio.GPIO.open_chip(self.chip.path)
        before = sensor.Sensor.lw_ticks
        sensor.Sensor.setup_lw_edge_detect(5)
        self.assertTrue(self.armed(5))
        # Armed by the kernel is not yet armed by its library, which has nothing to release before.
        self.chip.pulse(5)
        self.assertTrue(eventually(lambda: bool(sensor.Sensor.lw_ticks > before)))
        gpio.GPIO.release(5)
        self.assertTrue(self.given_up(5))
        self.assertTrue(eventually(lambda: len(self.capture.messages) >= 3))
        _probe.stop_gpio()
        errors = [text for level, text in self.capture.messages if level == CRITICAL]
        self.assertTrue(all(text.startswith("Fehler im GPIO-Thread: ") for text in errors))

    def test_edges_are_counted(self) -> None:
        """Pulses of a line that the sensor counts show up in its counter."""
        gpio.GPIO.open_chip(self.chip.path)
        sensor.Sensor.setup_lw_edge_detect(channel=5)
        self.assertTrue(self.armed(5))
        before = sensor.Sensor.lw_ticks
        for _ in range(20):
            self.chip.pulse(5)
        self.assertTrue(eventually(lambda: bool(sensor.Sensor.lw_ticks == before + 20)))

    def test_no_event_detection_for_python(self) -> None:
        """Python callables cannot be registered."""
        names = [name for name in dir(gpio.GPIOClass) if not name.startswith("__")]
        self.assertEqual(names, ["consumer_prefix", "open_chip", "release"])


if __name__ == "__main__":
    unittest.main()
