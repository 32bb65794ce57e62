"""Updates and network of the demo machine on the real window, and what must not be told of them."""

import sqlite3
import tempfile
import unittest
from contextlib import closing
from pathlib import Path

from support import desktop, panel
from support.accessible import Node
from support.complaints import complaints
from support.panel import Panel

TIME_FACTOR = 5
NETWORK, UPDATES = "Netzwerk", "Updates"
SCAN, SEARCH, UPGRADE = "Suche nach WLAN-Netzen", "Suche nach Updates", "Upgrade durchführen"
CONNECT = "Verbinden"
OFFICE, SILENT = "Brovik-Büro", "Pumpenhaus (antwortet nie)"
OFFICE_PASSWORD, WRONG_PASSWORD, TESTING_PASSWORD = "kaffee-um-zehn", "falsch-4711", "vorab-2026"
HIDDEN_FIELD = "password text"
NO_RUN = "Es wird/wurde ein Upgrade durchgeführt. Bitte die Maschine nach dem Upgrade neu starten."


class MaintenanceCase(unittest.TestCase):
    """A machine of its own for each test, tall enough for all networks."""

    def setUp(self) -> None:
        # enterContext() ends it with the test.
        folder = tempfile.TemporaryDirectory()  # pylint: disable=consider-using-with
        self._configuration = Path(self.enterContext(folder))
        panel.store_window(self._configuration, b"[window]\nwidth=800\nheight=1200\n")
        environment = {"XDG_CONFIG_HOME": str(self._configuration)}
        self.program: Panel = self.enterContext(panel.demo(TIME_FACTOR, **environment))
        self.program.wait_until_shown("Bereit")

    def type_hidden(self, text: str) -> None:
        """Types into the field whose text is hidden."""
        field = self.program.wait_for("the field", self._hidden_field)
        desktop.click(*field.box.middle)
        desktop.type_text(text)
        self.program.wait_for("the text", lambda: len(self._field_text()) == len(text))

    def _hidden_field(self) -> Node | None:
        return next((node for node in self.program.nodes() if node.role == HIDDEN_FIELD), None)

    def _field_text(self) -> str:
        field = self._hidden_field()
        return field.text if field else ""

    def dismiss(self, part: str) -> None:
        """Waits for a message with this text and closes it."""
        self.program.wait_for(f"a message with {part!r}", lambda: self._shows(part))
        self.program.click("OK")
        self.program.wait_until_gone("OK")
        self.program.wait_until_still()

    def _shows(self, part: str) -> bool:
        return any(part in name for name in self.program.names())

    def stored(self) -> str:
        """All values in the machine's file, once the program has ended."""
        (path,) = self._configuration.rglob("*.sqlite3")
        with closing(sqlite3.connect(path)) as connection:
            return "\n".join(value for (value,) in connection.execute("SELECT value FROM entry"))


class NetworkTest(MaintenanceCase):
    """From the scan to the connection."""

    def setUp(self) -> None:
        super().setUp()
        self.program.open_settings(NETWORK)
        self.program.wait_until_shown("eth0 (Ethernet): 192.168.10.2", "label")

    def log_in(self, ssid: str, password: str) -> None:
        """Scans, chooses a network and types the password."""
        self.program.wait_until_still()
        self.program.click(SCAN)
        self._wait_for_button(ssid)
        # The list has its order once the scan is over.
        self.program.wait_until_still()
        desktop.click(*self._wait_for_button(ssid).box.middle)
        self.program.wait_until_shown(f"Passwort für: {ssid}")
        self.type_hidden(password)
        self.program.click(CONNECT)

    def _wait_for_button(self, ssid: str) -> Node:
        def button() -> Node | None:
            nodes = self.program.nodes()
            return next((node for node in nodes if (node.name, node.description) == (CONNECT, ssid)), None)

        return self.program.wait_for(f"the button of {ssid}", button)

    def test_passwords_are_never_logged(self) -> None:
        """A wrong one ends in a message, the right one in the file, and neither in the log."""
        self.log_in(OFFICE, WRONG_PASSWORD)
        self.dismiss(f"Das Passwort für „{OFFICE}“ ist falsch.")
        self.log_in(OFFICE, OFFICE_PASSWORD)
        self.program.wait_for("the connection", lambda: self._shows("wlan0 (WLAN): 192.168.2."))
        self.program.wait_until_shown(OFFICE, "label")
        self.assertEqual(self.program.close(), 0)
        log = "\n".join(self.program.log)
        self.assertNotIn(WRONG_PASSWORD, log)
        self.assertNotIn(OFFICE_PASSWORD, log)
        self.assertNotIn(WRONG_PASSWORD, self.stored())
        self.assertIn(OFFICE_PASSWORD, self.stored())
        self.assertEqual(complaints(self.program), [])

    def test_network_that_never_answers(self) -> None:
        """The operator aborts the attempt, and can look for networks again."""
        self.log_in(SILENT, "hallo-hallo")
        self.program.click("Verbindungsversuch abbrechen")
        self.program.wait_until_shown(SCAN)
        self.program.wait_until_still()
        self.program.click(SCAN)
        self.program.wait_until_shown(SILENT, "label")
        self.assertEqual(complaints(self.program), [])


class UpdatesTest(MaintenanceCase):
    """From the search to the upgrade."""

    def setUp(self) -> None:
        super().setUp()
        self.program.open_settings(UPDATES)
        self.program.wait_until_shown("Es sind aktuell keine Updates verfügbar")

    def test_upgrade(self) -> None:
        """Brings the console to the front, tells of the package that failed, and locks the machine."""
        self.program.click(SEARCH)
        self.program.wait_until_shown("Es sind Updates für 6 Brovik-Pakete verfügbar")
        self.program.wait_until_still()
        self.program.click(UPGRADE)
        self.program.wait_until_shown("Ausgabe löschen")
        self.dismiss("brovik-waage")
        self.program.click("Übersicht", "page tab")
        self.program.wait_until_shown("Es ist ein Update für ein Brovik-Paket verfügbar")
        self.program.click("Automatik", "page tab")
        self.program.wait_until_shown(NO_RUN)
        self.assertEqual(complaints(self.program), [])

    def test_password_of_testing_is_never_logged(self) -> None:
        """Neither a wrong one nor the right one, which switches the component on."""
        self._toggle_testing(WRONG_PASSWORD)
        self.dismiss("Das Passwort ist falsch.")
        self._toggle_testing(TESTING_PASSWORD)
        self.program.wait_until_shown("Testing deaktivieren")
        self.assertEqual(self.program.close(), 0)
        told = "\n".join(self.program.log) + self.stored()
        self.assertNotIn(WRONG_PASSWORD, told)
        self.assertNotIn(TESTING_PASSWORD, told)
        self.assertEqual(complaints(self.program), [])

    def _toggle_testing(self, password: str) -> None:
        self.program.click("Testing aktivieren")
        self.program.wait_until_still()
        self.type_hidden(password)
        desktop.press_key("Return")


if __name__ == "__main__":
    unittest.main()
