"""The settings pages on the demo machine: what the operator changes holds, and the machine follows."""

import re
import tempfile
import unittest
from pathlib import Path

from support import desktop, panel
from support.accessible import Box
from support.controls import is_on, spin_box
from support.panel import Panel

READY = "Bereit"
RUN, BATHS, MISC, HAND = "Reinigungsprozess", "Leitwertprüfung", "Sonstige Einstellungen", "Handbetrieb"
WATER = "Leitwert in mS/cm, ab dem das Medium als Wasser erkannt wird"
INTENSE = "Intensivreinigung durchführen"
NAME = "Produktname Säure: "


class SettingsTest(unittest.TestCase):
    """Each on a machine of its own."""

    def setUp(self) -> None:
        # enterContext() ends it with the test.
        folder = tempfile.TemporaryDirectory()  # pylint: disable=consider-using-with
        self._configuration = self.enterContext(folder)
        panel.store_window(Path(self._configuration), b"[window]\nwidth=800\nheight=1200\n")
        self.program = self._start()

    def _start(self) -> Panel:
        program = self.enterContext(panel.demo(5, XDG_CONFIG_HOME=self._configuration))
        program.wait_until_shown(READY)
        return program

    def _restart(self) -> None:
        self.assertEqual(self.program.close(), 0)
        self.program = self._start()

    def _control(self, name: str, role: str) -> Box:
        return self.program.wait_until_shown(name, role).box

    def _pressure(self) -> float:
        texts = (re.fullmatch(r"Druck:\n(-?[\d.]+) bar", name) for name in self.program.names())
        return next((float(match[1]) for match in texts if match), 0.0)

    def test_number_and_switch_are_kept(self) -> None:
        """A step up and a switch turned on are still there after a restart."""
        self.program.open_settings(RUN)
        before = spin_box(self.program, WATER).value
        desktop.click(*spin_box(self.program, WATER).box.plus)
        self.program.wait_for("the step", lambda: spin_box(self.program, WATER).value == before + 5)
        self.program.click(INTENSE, "check box")
        self.program.wait_for("the switch", lambda: is_on(self.program, INTENSE))
        self._restart()
        self.program.open_settings(RUN)
        self.assertEqual(spin_box(self.program, WATER).value, before + 5)
        self.assertTrue(is_on(self.program, INTENSE))

    def test_product_name_is_kept(self) -> None:
        """It reaches the first page some seconds after the last key, and the file."""
        self.program.open_settings(BATHS)
        self.program.click(NAME, "text")
        desktop.press_key("ctrl+a")
        desktop.type_text("Neue <b>Saeure</b>")
        self.program.click("Automatik", "page tab")
        self.program.wait_until_shown("Neue <b>Saeure</b>", "label")
        self._restart()
        self.program.wait_until_shown("Neue <b>Saeure</b>", "label")

    def test_calibration(self) -> None:
        """The raw pressure becomes the offset, and reset takes it away."""
        self.program.open_settings(MISC)
        self.program.wait_until_shown("Aktueller Offset: 0 bar")
        self.program.click("Kalibrieren")
        self.program.wait_until_gone("Aktueller Offset: 0 bar")
        offsets = (re.fullmatch(r"Aktueller Offset: 0\.\d+ bar", name) for name in self.program.names())
        self.assertTrue(any(offsets))
        self.program.click("Offset zurücksetzen")
        self.program.wait_until_shown("Aktueller Offset: 0 bar")

    def test_hand_operation(self) -> None:
        """Air fills the barrel, the channel empties it; the heating waits for its hand operation."""
        self.program.open_settings(HAND)
        self.program.click("Luft")
        self.program.wait_for("pressure", lambda: self._pressure() > 0.3)
        self.program.click("Luft")
        self.program.click("Kanal")
        self.program.wait_for("no pressure", lambda: self._pressure() < 0.1)
        self.program.click("Heizungs-Handbetrieb")
        self.program.wait_for("hand operation", lambda: is_on(self.program, "Heizungs-Handbetrieb"))
        self.program.click("Heizung")
        self.program.wait_for(
            "the heater", lambda: any("Heizung ein" in name for name in self.program.names())
        )


if __name__ == "__main__":
    unittest.main()
