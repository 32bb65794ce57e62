"""The inputs and measured values as the backend sees them."""

import unittest

import _probe
from brovik import sensor, settings, simulator
from brovik.sensor import SensorEnum, SensorLwEnum, SensorPEnum
from shared_properties import Attribute, check_initial_values, check_read_only, check_writes

SENSOR = sensor.Sensor
SETTINGS = settings.SettingsValues
CRITICAL = 2


class InputTest(unittest.TestCase):
    """Objects of the classes DIn and AIn."""

    def test_digital_inputs(self) -> None:
        """Each with its fixed values, in order."""
        names = ["start", "stop", "level"]
        enums = [SensorEnum.Start, SensorEnum.Stop, SensorEnum.Level]
        self.assertEqual([din.name for din in SENSOR.all_dins], names)
        self.assertEqual([din.enum for din in SENSOR.all_dins], enums)
        for name, enum in zip(names, enums):
            with self.subTest(name):
                self.assertIs(SENSOR.din_from_enum(enum), getattr(SENSOR, name))

    def test_analogue_inputs(self) -> None:
        """Each with its fixed values."""
        self.assertEqual(
            (SENSOR.ain1.name, SENSOR.ain1.enum, SENSOR.ain1.num), ("A-In-1", SensorEnum.AIn1, 0)
        )
        self.assertEqual(
            (SENSOR.ain2.name, SENSOR.ain2.enum, SENSOR.ain2.num), ("A-In-2", SensorEnum.AIn2, 1)
        )
        self.assertIs(SENSOR.ain_from_enum(SensorEnum.AIn1), SENSOR.ain1)
        self.assertIs(SENSOR.ain_from_enum(SensorEnum.AIn2), SENSOR.ain2)

    def test_no_input(self) -> None:
        """Values that are no such input have none."""
        self.assertIsNone(SENSOR.din_from_enum(SensorEnum.P))
        self.assertIsNone(SENSOR.ain_from_enum(SensorEnum.Start))
        self.assertIsNone(SENSOR.din_from_enum(SensorEnum.AIn1))
        self.assertIsNone(SENSOR.ain_from_enum(SensorEnum(-1)))

    def test_attributes(self) -> None:
        """Every attribute starts as documented and notifies once."""
        din = [
            Attribute("name", "name", "level", "x"),
            Attribute("state", "state", False, True),
            Attribute("num", "num", -1, 4),
        ]
        ain = [
            Attribute("name", "name", "A-In-2", "x"),
            Attribute("value", "value", 0.0, 55.5),
            Attribute("num", "num", 1, 4),
        ]
        check_initial_values(self, SENSOR.level, din)
        check_writes(self, "Sensor.level", SENSOR.level, din)
        check_initial_values(self, SENSOR.ain2, ain)
        check_writes(self, "Sensor.aIn2", SENSOR.ain2, ain)

    def test_wrong_types(self) -> None:
        """A wrong type raises TypeError and changes nothing."""
        wrong: list[tuple[object, str, object]] = [
            (SENSOR.start, "state", 1),
            (SENSOR.start, "num", "1"),
            (SENSOR.ain1, "value", "1"),
            (SENSOR.ain1, "num", 1.5),
        ]
        for target, name, value in wrong:
            with self.subTest(name, value=value):
                before = getattr(target, name)
                with self.assertRaises(TypeError):
                    setattr(target, name, value)
                self.assertEqual(getattr(target, name), before)

    def test_not_constructible(self) -> None:
        """Python cannot make inputs, nor change which they are."""
        for cls in (sensor.DIn, sensor.AIn):
            with self.subTest(cls), self.assertRaises(TypeError):
                cls()
        with self.assertRaises(AttributeError):
            setattr(SENSOR.start, "enum", SensorEnum.Stop)


class SensorTest(unittest.TestCase):
    """Attributes and operations of brovik.sensor.Sensor."""

    def setUp(self) -> None:
        self.addCleanup(self.restore)
        self.restore()

    def restore(self) -> None:
        """The state at start."""
        SETTINGS.lw_offset = 0.0
        SETTINGS.p_offset = 0.0
        SENSOR.set_lw_without_offset(0.0)
        SENSOR.set_p_without_offset(0.0)
        SENSOR.lw_type = SensorLwEnum.ILFS_02_TK2
        SENSOR.p_type = SensorPEnum.SMC_PSE564_02

    def test_enum_numbers(self) -> None:
        """Names and numbers of the enumerations."""
        for enum, expected in (
            (SensorEnum, {"Start": 0, "Stop": 1, "Level": 2, "Lw": 3, "AIn1": 4, "AIn2": 5, "P": 6}),
            (SensorLwEnum, {"Seli_SLI_03": 0, "ILFS_02_TK2": 1}),
            (SensorPEnum, {"SMC_PSE564_02": 0, "Gems_3500R0006G01B000": 1}),
        ):
            with self.subTest(enum):
                self.assertEqual({name: int(value) for name, value in enum.__members__.items()}, expected)

    def test_attributes(self) -> None:
        """Every writable attribute starts as documented and notifies once."""
        attributes = [
            Attribute("lw_type", "lwType", SensorLwEnum.ILFS_02_TK2, SensorLwEnum.Seli_SLI_03),
            Attribute("p_type", "pType", SensorPEnum.SMC_PSE564_02, SensorPEnum.Gems_3500R0006G01B000),
            Attribute("lw_sensor_defective", "lwSensorDefective", False, True),
        ]
        check_initial_values(self, SENSOR, attributes)
        check_writes(self, "Sensor", SENSOR, attributes)

    def test_read_only(self) -> None:
        """What is measured cannot be assigned."""
        check_read_only(
            self,
            SENSOR,
            {"leitwert": 0.0, "druck": 0.0, "raw_leitwert": 0.0, "raw_druck": 0.0, "lw_ticks": 0},
        )

    def test_lw_with_offset(self) -> None:
        """The offset is subtracted and the raw value kept."""
        SETTINGS.lw_offset = 0.5
        log = _probe.SignalLog("Sensor")
        self.assertEqual(SENSOR.set_lw_and_apply_offset(10.0), 9.5)
        self.assertEqual((SENSOR.raw_leitwert, SENSOR.leitwert), (10.0, 9.5))
        self.assertEqual(log.emissions, [("leitwertChanged", False, []), ("rawLeitwertChanged", False, [])])

    def test_p_with_offset(self) -> None:
        """As for the conductivity."""
        SETTINGS.p_offset = 0.25
        log = _probe.SignalLog("Sensor")
        self.assertEqual(SENSOR.set_p_and_apply_offset(2), 1.75)
        self.assertEqual((SENSOR.raw_druck, SENSOR.druck), (2.0, 1.75))
        self.assertEqual(log.names, ["druckChanged", "rawDruckChanged"])

    def test_without_offset(self) -> None:
        """The value is stored twice as it is."""
        SETTINGS.lw_offset = SETTINGS.p_offset = 0.5
        SENSOR.set_lw_without_offset(7.0)
        SENSOR.set_p_without_offset(3.0)
        self.assertEqual((SENSOR.raw_leitwert, SENSOR.leitwert), (7.0, 7.0))
        self.assertEqual((SENSOR.raw_druck, SENSOR.druck), (3.0, 3.0))

    def test_simulated_pressure(self) -> None:
        """A simulated pressure sets the simulated input as well."""
        SENSOR.p_change_from_simulator(5.0)
        self.assertEqual((simulator.Simulator.a_in_0, SENSOR.druck), (100, 5.0))
        SENSOR.p_change_from_simulator(0.0)
        self.assertEqual((simulator.Simulator.a_in_0, SENSOR.druck), (20, 0.0))

    def test_simulated_pressure_out_of_range(self) -> None:
        """The input is clamped, with a critical message; the pressure is not."""
        capture = _probe.LogCapture()
        SENSOR.p_change_from_simulator(6.0)
        self.assertEqual((simulator.Simulator.a_in_0, SENSOR.druck), (100, 6.0))
        self.assertEqual([level for level, _ in capture.messages], [CRITICAL])

    def test_wrong_arguments(self) -> None:
        """Numbers are numbers, channels are not negative."""
        for function in (
            SENSOR.set_lw_and_apply_offset,
            SENSOR.set_p_without_offset,
            SENSOR.p_change_from_simulator,
        ):
            with self.subTest(function), self.assertRaises(TypeError):
                function("1.0")
        for channel in (-1, 1.5, None, 2**40):
            with self.subTest(channel), self.assertRaises(TypeError):
                SENSOR.setup_lw_edge_detect(channel)
        with self.assertRaises(TypeError):
            SENSOR.din_from_enum(0)


if __name__ == "__main__":
    unittest.main()
