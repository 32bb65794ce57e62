"""Parameters: wishes of the operator, and what is left of them after the end of the program."""

import json
import math
import os
import signal
import sqlite3
import subprocess
import unittest
from contextlib import closing

import demo_path  # pylint: disable=unused-import
import _probe
from brovik.auto import Auto, AutoEnum
from brovik.sensor import Sensor
from brovik.settings import SettingsClass, SettingsEnum, SettingsValues

from demo_support import RunningCase, SteppedCase, reset_host
from controller.settings_table import HOST_SETTINGS
from controller.storage import SETTINGS, Change, Storage
from logbook.place import FILE_NAME
from tests.rig import PARAMETERS

#: A process that does nothing but run the backend and set one parameter over and over.
CHILD = "demo_child"
ACTIONS = ("POffsetSet", "POffsetReset", "LwOffsetSet", "LwOffsetReset")


class StoredCase(SteppedCase):
    """Looks into the file. The machine has all that there are parameters for."""

    def setUp(self) -> None:
        super().setUp()
        self.configure(has_steam_valve=True)

    def store(self, **values: object) -> None:
        """Puts parameters into the file."""
        with closing(Storage(self.directory / FILE_NAME)) as storage:
            storage.apply([Change(SETTINGS, values)])

    def stored(self) -> dict[str, object]:
        """The parameters in the file, which a stopped backend has written to the end."""
        with closing(Storage(self.directory / FILE_NAME)) as storage:
            return storage.read(SETTINGS)

    def wish(self, name: str, value: object) -> None:
        """What a screen sends."""
        self.backend.settings.wish(SettingsEnum.__members__[name], value)


class WishTest(StoredCase):
    """From a screen into the host and the file."""

    def test_every_parameter(self) -> None:
        """Numbers come as floats; the type of the key is kept."""
        self.make()
        wished: dict[str, object] = {}
        for name, default in SettingsValues.get_default_values().items():
            if name not in SettingsEnum.__members__:
                continue
            with self.subTest(name):
                value: object
                if isinstance(default, bool):
                    value = wished[name] = not default
                elif isinstance(default, str):
                    value = wished[name] = "Ätznatron <b>5 %</b>"
                else:
                    wished[name] = getattr(SettingsValues, f"{name}_max")
                    # The maximum is read by its name, so its type is not known here.
                    value = float(wished[name])  # type: ignore[arg-type]
                self.wish(name, value)
                self.assertEqual(getattr(SettingsValues, name), wished[name])
                self.assertIs(type(getattr(SettingsValues, name)), type(default))
        defaults = SettingsValues.get_default_values()
        self.assertEqual(wished.keys(), defaults.keys() & SettingsEnum.__members__.keys())
        self.backend.stop()
        self.assertEqual(self.stored(), wished)

    def test_clamped(self) -> None:
        """What the host has made of a wish is what is stored."""
        self.make()
        self.wish("secs_pump", 25.0)
        self.backend.stop()
        self.assertEqual((SettingsValues.secs_pump, self.stored()["secs_pump"]), (20, 20))

    def test_refused(self) -> None:
        """A wrong type changes nothing and is logged."""
        self.make()
        log = _probe.LogCapture()
        rows = (
            ("secs_pump", 7.5),
            ("secs_pump", True),
            ("secs_pump", "7"),
            ("secs_pump", None),
            ("intense_factor", math.nan),
            ("intense_factor", "3"),
            ("intense_cleaning", 1.0),
            ("lw_saure_name", 5.0),
            ("lw_saure_name", ["x"]),
        )
        for name, value in rows:
            self.wish(name, value)
        self.wish("Invalid", None)
        self.assertEqual(len(log.messages), len(rows) + 1)
        defaults = SettingsValues.get_default_values()
        self.assertEqual({key: getattr(SettingsValues, key) for key in defaults}, dict(defaults))
        self.backend.stop()
        self.assertEqual(self.stored(), {})

    def test_calibration(self) -> None:
        """The present raw value becomes the offset; reset takes it away."""
        self.make()
        self.operation.advance(0.1)
        self.assertGreater(Sensor.druck, 0.0)
        self.wish("POffsetSet", None)
        self.wish("LwOffsetSet", None)
        self.operation.advance(0.1)
        self.assertEqual((Sensor.druck, Sensor.leitwert), (0.0, 0.0))
        self.assertEqual(SettingsValues.p_offset, Sensor.raw_druck)
        self.wish("LwOffsetReset", None)
        self.backend.stop()
        self.assertEqual(self.stored(), {"p_offset": Sensor.raw_druck, "lw_offset": 0.0})

    def test_no_calibration_during_a_run(self) -> None:
        """The system has to be without pressure, and a run never is."""
        self.make()
        self.operation.toggle(AutoEnum.Toggle)
        self.run_until(lambda: Sensor.druck > 0.3)
        for action in ACTIONS:
            self.wish(action, None)
        self.assertEqual((SettingsValues.p_offset, SettingsValues.lw_offset), (0.0, 0.0))
        self.assertEqual(len(self.signals("toastWarn")), 4)
        self.assertTrue(Auto.active)


class SteamTest(StoredCase):
    """The steam step of a machine that has no valve for it."""

    def make_without_valve(self) -> None:
        """Starts a program on a machine whose valve has been taken out."""
        reset_host()
        self.configure(has_steam_valve=False)
        self.make()

    def make_with_valve(self) -> None:
        """Starts a program on a machine whose valve is back."""
        reset_host()
        self.configure(has_steam_valve=True)
        self.make()

    def test_off_without_the_valve(self) -> None:
        """Whatever the operator wished once; the wish stays, and comes back with the valve."""
        for wished in (True, False):
            with self.subTest(wished):
                self.make_with_valve()
                self.wish("do_steam_step", wished)
                self.backend.stop()
                self.make_without_valve()
                self.assertFalse(SettingsValues.do_steam_step)
                self.backend.stop()
                self.assertEqual(self.stored(), {"do_steam_step": wished})
                self.make_with_valve()
                self.assertEqual(SettingsValues.do_steam_step, wished)
                self.backend.stop()

    def test_default_comes_with_the_valve(self) -> None:
        """Nothing is stored of a wish that there never was."""
        self.make_without_valve()
        self.assertFalse(SettingsValues.do_steam_step)
        self.backend.stop()
        self.assertEqual(self.stored(), {})
        self.make_with_valve()
        self.assertTrue(SettingsValues.do_steam_step)

    def test_wish_without_the_valve(self) -> None:
        """No screen offers it. It is logged, and neither taken nor stored."""
        self.store(do_steam_step=False)
        self.make_without_valve()
        log = _probe.LogCapture()
        self.wish("do_steam_step", True)
        self.assertFalse(SettingsValues.do_steam_step)
        self.assertEqual(len(log.messages), 1)
        self.backend.stop()
        self.assertEqual(self.stored(), {"do_steam_step": False})


class TableTest(StoredCase):
    """The backend's table of the host's parameters."""

    def test_complete(self) -> None:
        """Each parameter, under its own name, with the bounds that it has."""
        self.assertEqual(HOST_SETTINGS.keys(), SettingsValues.get_default_values().keys())
        for name, setting in HOST_SETTINGS.items():
            with self.subTest(name):
                host = vars(SettingsClass)
                self.assertIs(setting.holder, host[name])
                self.assertIs(setting.lowest, host.get(f"{name}_min"))
                self.assertIs(setting.highest, host.get(f"{name}_max"))


class RigTest(unittest.TestCase):
    """What the tests of the units take for granted, without a host."""

    def test_parameters(self) -> None:
        """The units are tested with the host's defaults."""
        defaults = SettingsValues.get_default_values()
        self.assertEqual(PARAMETERS, {name: defaults[name] for name in PARAMETERS})


class LoadTest(StoredCase):
    """From the file into the host, at the start."""

    def test_loaded(self) -> None:
        """All that fits."""
        self.store(secs_pump=12, intense_factor=4, lw_saure_name="X", p_offset=-0.2)
        self.make()
        self.assertEqual(SettingsValues.secs_pump, 12)
        self.assertEqual(SettingsValues.intense_factor, 4.0)
        self.assertEqual(SettingsValues.lw_saure_name, "X")
        self.assertEqual(SettingsValues.p_offset, -0.2)

    def test_ignored(self) -> None:
        """Unknown, out of range, of another type: a log line each, the default holds."""
        log = _probe.LogCapture()
        self.store(
            secs_pump=500,
            vorspannen_p=-1.0,
            intense_factor="viel",
            test_leakage_p=1,
            secs_pump_max=99,
            unheard_of=5,
            lw_lauge_min=None,
        )
        self.make()
        defaults = SettingsValues.get_default_values()
        self.assertEqual({key: getattr(SettingsValues, key) for key in defaults}, dict(defaults))
        self.assertEqual(SettingsValues.secs_pump_max, 20)
        texts = [text for _, text in log.messages if "Gespeicherte Einstellung" in text]
        self.assertEqual(len(texts), 7)
        self.assertEqual(sum("WERT ZU" in text for _, text in log.messages), 0)

    def test_ignored_values_stay_in_the_file(self) -> None:
        """A newer program may know what to do with them."""
        self.store(unheard_of=5, secs_pump=500)
        self.make().stop()
        self.assertEqual(self.stored(), {"unheard_of": 5, "secs_pump": 500})

    def test_damaged_file(self) -> None:
        """Moved aside, reported to the operator, and the program starts with the defaults."""
        content = b"no database, but long enough to be taken for one" * 20
        (self.directory / FILE_NAME).write_bytes(content)
        self.make()
        self.wish("secs_pump", 9.0)
        self.backend.stop()
        ((title, text, category, id_),) = self.signals("message")
        self.assertEqual((title, category, id_), ("Einstellungen", "error", 0))
        (aside,) = self.directory.glob("*.damaged-*")
        self.assertIn(aside.name, text)
        self.assertEqual(aside.read_bytes(), content)
        self.assertEqual(self.stored(), {"secs_pump": 9})

    def test_unwritable_directory(self) -> None:
        """The program runs without its file, and says so."""
        self.directory = self.directory / "file" / "below"
        self.directory.parent.write_bytes(b"")
        self.make()
        self.wish("secs_pump", 9.0)
        self.assertEqual(SettingsValues.secs_pump, 9)
        self.assertEqual(len(self.signals("message")), 1)


class KillTest(RunningCase):
    """The sudden end of the whole program."""

    def test_kill_9(self) -> None:
        """The last change that the file showed is still there, and the file is sound."""
        last = 0
        for _ in range(3):
            with subprocess.Popen(
                [f"/proc/{os.getpid()}/exe", CHILD],
                env={**os.environ, "BROVIK_CONFIG_DIR": str(self.directory)},
                stderr=subprocess.DEVNULL,
            ) as child:
                self.until(lambda: self._shown() >= last + 20 or child.poll() is not None)
                self.assertIsNone(child.poll(), "the child has ended by itself")
                last = self._shown()
                os.kill(child.pid, signal.SIGKILL)
            self.assertGreaterEqual(self._shown(), last)
            last = self._shown()
        self.start()
        self.assertEqual(SettingsValues.lw_lauge_name, str(last))
        self.assertEqual(self.signals("message"), [])

    def _shown(self) -> int:
        """The number that the file holds at this moment."""
        path = f"file:{self.directory / FILE_NAME}?mode=ro"
        query = "SELECT value FROM entry WHERE key = 'lw_lauge_name'"
        try:
            with closing(sqlite3.connect(path, uri=True)) as connection:
                row = connection.execute(query).fetchone()
        except sqlite3.OperationalError:  # not made yet
            return 0
        return int(json.loads(row[0])) if row else 0


if __name__ == "__main__":
    unittest.main()
