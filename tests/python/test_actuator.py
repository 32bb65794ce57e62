"""The outputs as the backend sees them."""

import unittest
from collections.abc import Iterator

import _probe
from brovik import actuator
from brovik.actuator import ActuatorEnum, DOut, DOutTypeEnum
from shared_properties import Attribute, check_initial_values, check_writes

# Python name of the output, its enumerator, name, log name, type.
OUTPUTS = [
    ("mv_lauge_in", ActuatorEnum.MvLaugeIn, "Lauge IN", "l_in", DOutTypeEnum.Mv),
    ("mv_saure_in", ActuatorEnum.MvSaureIn, "Säure IN", "s_in", DOutTypeEnum.Mv),
    ("mv_kalt", ActuatorEnum.MvKalt, "Wasser kalt", "kalt", DOutTypeEnum.Mv),
    ("mv_heiss", ActuatorEnum.MvHeiss, "Wasser Heiß", "heiss", DOutTypeEnum.Mv),
    ("mv_kreis", ActuatorEnum.MvKreis, "Kreislauf", "kreis", DOutTypeEnum.Mv),
    ("mv_saure_out", ActuatorEnum.MvSaureOut, "Säure OUT", "s_out", DOutTypeEnum.Mv),
    ("mv_lauge_out", ActuatorEnum.MvLaugeOut, "Lauge OUT", "l_out", DOutTypeEnum.Mv),
    ("mv_luft", ActuatorEnum.MvLuft, "Luft", "luft", DOutTypeEnum.Mv),
    ("mv_co2", ActuatorEnum.MvCo2, "CO2", "co2", DOutTypeEnum.Mv),
    ("mv_kanal", ActuatorEnum.MvKanal, "Kanal", "kanal", DOutTypeEnum.Pv3),
    ("pumpe", ActuatorEnum.Pumpe, "Pumpe", "pumpe", DOutTypeEnum.Pump),
    ("heat_1", ActuatorEnum.Heat1, "Heizung", "", DOutTypeEnum.Heating),
    ("mv_steam", ActuatorEnum.MvSteam, "Dampf", "steam", DOutTypeEnum.Mv),
]

ACTUATOR = actuator.Actuator


def blocked() -> set[ActuatorEnum]:
    """The outputs that are blocked."""
    return {dout.enum for dout in ACTUATOR.all_douts if dout.blocked}


class ActuatorCase(unittest.TestCase):
    """Leaves the outputs as they were made."""

    def setUp(self) -> None:
        self.addCleanup(self.restore)

    def restore(self) -> None:
        """The state at start."""
        ACTUATOR.unblock_all_except_of(set())
        for dout in ACTUATOR.all_douts:
            dout.state = False
            dout.num = -1
        ACTUATOR.set_dout_model([])
        _probe.settle()


class OutputTest(ActuatorCase):
    """Objects of the class DOut."""

    def test_outputs(self) -> None:
        """Every output with its fixed values, in order."""
        self.assertEqual(len(ACTUATOR.all_douts), 13)
        for number, (name, enum, text, log_name, kind) in enumerate(OUTPUTS):
            with self.subTest(name):
                dout = getattr(ACTUATOR, name)
                self.assertEqual(int(enum), number)
                self.assertIs(ACTUATOR.all_douts[number], dout)
                self.assertIs(ACTUATOR.dout_from_enum(enum), dout)
                self.assertEqual(
                    (dout.enum, dout.name, dout.log_name, dout.type_), (enum, text, log_name, kind)
                )

    def test_enum_numbers(self) -> None:
        """Names and numbers of the enumerations."""
        self.assertEqual(int(ActuatorEnum.ToggleManualHeating), 13)
        self.assertEqual(len(ActuatorEnum.__members__), 14)
        self.assertEqual(
            {name: int(value) for name, value in DOutTypeEnum.__members__.items()},
            {"Mv": 0, "Sv": 1, "Pv3": 2, "Led": 3, "Heating": 4, "Spare": 5, "Pump": 6},
        )

    def test_attributes(self) -> None:
        """Every attribute of an output starts as documented and notifies once."""
        attributes = [
            Attribute("name", "name", "Pumpe", "Pumpe 2"),
            Attribute("log_name", "logName", "pumpe", "p2"),
            Attribute("state", "state", False, True),
            Attribute("blocked", "blocked", False, True),
            Attribute("num", "num", -1, 7),
        ]
        check_initial_values(self, ACTUATOR.pumpe, attributes)
        check_writes(self, "Actuator.pumpe", ACTUATOR.pumpe, attributes)

    def test_equal_state_does_not_notify(self) -> None:
        """The present value is no change."""
        log = _probe.SignalLog("Actuator.pumpe")
        ACTUATOR.pumpe.state = False
        self.assertEqual(log.names, [])

    def test_wrong_types(self) -> None:
        """A wrong type raises TypeError and changes nothing; a text takes any object."""
        wrong: list[tuple[str, object]] = [
            ("state", 1),
            ("state", None),
            ("blocked", "x"),
            ("num", 1.5),
            ("num", "1"),
        ]
        for name, value in wrong:
            with self.subTest(name, value=value):
                before = getattr(ACTUATOR.pumpe, name)
                with self.assertRaises(TypeError):
                    setattr(ACTUATOR.pumpe, name, value)
                self.assertEqual(getattr(ACTUATOR.pumpe, name), before)
        setattr(ACTUATOR.pumpe, "name", 5)
        self.assertEqual(ACTUATOR.pumpe.name, "5")
        ACTUATOR.pumpe.name = "Pumpe"

    def test_read_only(self) -> None:
        """What an output is cannot be changed."""
        for name in ("enum", "type_"):
            with self.subTest(name), self.assertRaises(AttributeError):
                setattr(ACTUATOR.pumpe, name, getattr(ACTUATOR.pumpe, name))

    def test_not_constructible(self) -> None:
        """Python cannot make outputs."""
        with self.assertRaises(TypeError):
            DOut()

    def test_repr(self) -> None:
        """An output shows its name, number, state and mark."""
        self.assertEqual(repr(ACTUATOR.heat_1), "DOut(name=Heizung, num=-1, state=0, blocked=0)")
        ACTUATOR.mv_kalt.name = "%2"
        ACTUATOR.mv_kalt.state = ACTUATOR.mv_kalt.blocked = True
        ACTUATOR.mv_kalt.num = 4
        self.assertEqual(repr(ACTUATOR.mv_kalt), "DOut(name=%2, num=4, state=1, blocked=1)")
        ACTUATOR.mv_kalt.name = "Wasser kalt"

    def test_hashable(self) -> None:
        """An output is one object, in sets and dictionaries too."""
        names = {dout: dout.name for dout in ACTUATOR.all_douts}
        self.assertEqual(names[ACTUATOR.mv_kalt], "Wasser kalt")


class ActuatorTest(ActuatorCase):
    """Attributes and operations of brovik.actuator.Actuator."""

    def test_manual_heating(self) -> None:
        """The permission for manual heating."""
        attributes = [Attribute("manual_heating_enabled", "manualHeatingEnabled", False, True)]
        check_initial_values(self, ACTUATOR, attributes)
        check_writes(self, "Actuator", ACTUATOR, attributes)

    def test_active_douts(self) -> None:
        """A set of the outputs that are on."""
        self.assertEqual(ACTUATOR.active_douts, set())
        ACTUATOR.pumpe.state = True
        ACTUATOR.mv_kalt.state = True
        self.assertEqual(ACTUATOR.active_douts, {ACTUATOR.mv_kalt, ACTUATOR.pumpe})
        self.assertIsInstance(ACTUATOR.active_douts, set)

    def test_no_output(self) -> None:
        """Values that are no output have none."""
        self.assertIsNone(ACTUATOR.dout_from_enum(ActuatorEnum.ToggleManualHeating))
        self.assertIsNone(ACTUATOR.dout_from_enum(ActuatorEnum(99)))
        with self.assertRaises(TypeError):
            ACTUATOR.dout_from_enum(2)

    def test_block_all(self) -> None:
        """An empty set blocks all, and says so thirteen times; a repeat says nothing."""
        logs = [_probe.SignalLog(f"Actuator.{name}", ["blockedChanged"]) for name in qml_names()]
        ACTUATOR.block_all_except_of(set())
        self.assertEqual(len(blocked()), 13)
        self.assertEqual([log.names for log in logs], [["blockedChanged"]] * 13)
        ACTUATOR.block_all_except_of(set())
        self.assertEqual(sum(len(log.names) for log in logs), 13)

    def test_block_and_unblock(self) -> None:
        """The two operations set all flags in opposite senses."""
        ACTUATOR.block_all_except_of({ActuatorEnum.MvKalt})
        self.assertEqual(len(blocked()), 12)
        self.assertFalse(ACTUATOR.mv_kalt.blocked)
        ACTUATOR.unblock_all_except_of({ActuatorEnum.MvKalt})
        self.assertEqual(blocked(), {ActuatorEnum.MvKalt})
        ACTUATOR.unblock_all_except_of({ActuatorEnum.ToggleManualHeating})
        self.assertEqual(blocked(), set())

    def test_typed_sets(self) -> None:
        """A set with a wrong element is refused as a whole."""
        for wrong in ({ActuatorEnum.MvKalt, 5}, [ActuatorEnum.MvKalt], None, {"MvKalt"}):
            with self.subTest(wrong):
                with self.assertRaises(TypeError):
                    ACTUATOR.block_all_except_of(wrong)
                with self.assertRaises(TypeError):
                    ACTUATOR.unblock_all_except_of(wrong)
        self.assertEqual(blocked(), set())

    def test_add_and_remove(self) -> None:
        """Any iterable names outputs; the others stay as they are; what is no output is skipped."""
        ACTUATOR.add_blocked(enum for enum in (ActuatorEnum.Pumpe, ActuatorEnum.ToggleManualHeating))
        ACTUATOR.add_blocked([ActuatorEnum.MvKalt])
        self.assertEqual(blocked(), {ActuatorEnum.Pumpe, ActuatorEnum.MvKalt})
        ACTUATOR.remove_blocked((ActuatorEnum.Pumpe, ActuatorEnum.ToggleManualHeating, ActuatorEnum.Heat1))
        self.assertEqual(blocked(), {ActuatorEnum.MvKalt})

    def test_wrong_element(self) -> None:
        """A wrong element raises there, and what stands before it has taken effect."""
        for wrong in (5, None, "MvHeiss", ACTUATOR.mv_heiss):
            with self.subTest(wrong):
                ACTUATOR.unblock_all_except_of(set())
                with self.assertRaisesRegex(RuntimeError, f"^ActuatorEnum expected, got {type(wrong)}$"):
                    ACTUATOR.add_blocked([ActuatorEnum.MvKalt, wrong, ActuatorEnum.MvHeiss])
                self.assertEqual(blocked(), {ActuatorEnum.MvKalt})
                with self.assertRaises(RuntimeError):
                    ACTUATOR.remove_blocked([ActuatorEnum.MvKalt, wrong])
                self.assertEqual(blocked(), set())

    def test_failing_iterable(self) -> None:
        """What an iterable raises reaches the caller, with the earlier elements in effect."""
        with self.assertRaisesRegex(ValueError, "dry"):
            ACTUATOR.add_blocked(failing_after(ActuatorEnum.MvKalt))
        self.assertEqual(blocked(), {ActuatorEnum.MvKalt})

    def test_not_iterable(self) -> None:
        """Something that is no iterable is a type error."""
        for wrong in (5, None, ActuatorEnum.MvKalt):
            with self.subTest(wrong):
                with self.assertRaises(TypeError):
                    ACTUATOR.add_blocked(wrong)
                with self.assertRaises(TypeError):
                    ACTUATOR.remove_blocked(wrong)


class ModelTest(ActuatorCase):
    """The outputs that the screens show."""

    def setUp(self) -> None:
        super().setUp()
        self.log = _probe.SignalLog("Actuator.doutModel", ["_setDoutsSignal", "rowsInserted", "rowsRemoved"])

    def settled(self) -> list[tuple[str, bool]]:
        """What the model raised, and whether on the GUI thread."""
        _probe.settle()
        return list(self.log.threads)

    def test_rows_change_on_the_gui_thread(self) -> None:
        """The request leaves on the caller's thread, the rows follow on the GUI thread."""
        ACTUATOR.set_dout_model([ACTUATOR.mv_kalt, ACTUATOR.pumpe])
        self.assertCountEqual(self.settled(), [("_setDoutsSignal", False), ("rowsInserted", True)])

    def test_returns_before_the_rows_change(self) -> None:
        """The caller does not wait for the GUI thread."""
        with _probe.BusyGuiThread():
            ACTUATOR.set_dout_model([ACTUATOR.mv_kalt])
            self.assertEqual(self.log.names, ["_setDoutsSignal"])
        self.assertEqual(self.settled()[-1], ("rowsInserted", True))

    def test_any_iterable(self) -> None:
        """Generators and sets will do; a second list replaces the first."""
        ACTUATOR.set_dout_model(dout for dout in ACTUATOR.all_douts)
        self.assertIn(("rowsInserted", True), self.settled())
        ACTUATOR.set_dout_model({ACTUATOR.pumpe})
        self.assertEqual(
            [name for name, on_gui_thread in self.settled() if on_gui_thread],
            ["rowsInserted", "rowsRemoved", "rowsInserted"],
        )

    def test_empty_on_empty(self) -> None:
        """An empty list on an empty model raises no row signal."""
        ACTUATOR.set_dout_model([])
        self.assertEqual(self.settled(), [("_setDoutsSignal", False)])

    def test_wrong_elements(self) -> None:
        """Anything but outputs is a type error, and the model stays as it is."""
        for wrong in ([ACTUATOR.pumpe, None], [5], [ActuatorEnum.MvKalt], 5, None):
            with self.subTest(wrong), self.assertRaises(TypeError):
                ACTUATOR.set_dout_model(wrong)
        with self.assertRaisesRegex(ValueError, "dry"):
            ACTUATOR.set_dout_model(failing_after(ACTUATOR.pumpe))
        self.assertEqual(self.settled(), [])

    def test_signature(self) -> None:
        """The signature names the elements."""
        self.assertIn("typing.Iterable[brovik.actuator.DOut]", ACTUATOR.set_dout_model.__doc__)


def qml_names() -> Iterator[str]:
    """The names by which QML knows the outputs."""
    for name, *_ in OUTPUTS:
        first, *rest = name.split("_")
        yield first + "".join(part.capitalize() for part in rest)


def failing_after(element: object) -> Iterator[object]:
    """One element and then an error."""
    yield element
    raise ValueError("dry")


if __name__ == "__main__":
    unittest.main()
