"""The network pages on the real window: the way through a login, and what no network may do."""

import socket
import unittest
from collections.abc import Mapping

from support import desktop, panel
from support.automatic import START
from support.complaints import complaints
from support.panel import Panel
from support.waiting import hold

NETWORK, HAND = "Netzwerk", "Handbetrieb"
SCAN, ABORT = "Suche nach WLAN-Netzen", "Verbindungsversuch abbrechen"
CONNECT, BACK = "Verbinden", "zurück"
# A field whose text is hidden goes without a name.
FIELD = ("", "password text")
PASSWORD = "geheimesWort4711"
# Two periods of the question for addresses, and a margin.
TWO_PERIODS_SECS = 2.5

IMPORT = """
import controller
from brovik.wifi import Wifi, WifiActionEnum, WifiStateEnum
"""

# A radio that finds one network and tries to connect for ever.
RADIO = (
    IMPORT
    + """
def radio(action, value):
    if action == WifiActionEnum.Scan:
        Wifi.set_scan_results({"Halle": {"quality": 61, "is5GHz": True}})
    elif action == WifiActionEnum.Login:
        Wifi.set_login_data(value, "")
    elif action == WifiActionEnum.Connect:
        Wifi.state = WifiStateEnum.Connecting
    elif action == WifiActionEnum.Disconnect:
        Wifi.state = WifiStateEnum.Disconnected

controller.answers["wifi_action_from_cpp"] = radio
"""
)


def scan_results(networks: Mapping[str, Mapping[str, object]]) -> str:
    """The code that ends a scan with these networks."""
    return f"{IMPORT}\nWifi.set_scan_results({networks})"


def interfaces(*records: Mapping[str, object]) -> str:
    """The code that reports these network interfaces."""
    return f"{IMPORT}\nWifi.ip_map_list = {list(records)}"


class NetworkTest(unittest.TestCase):
    """Each with the network page open."""

    def setUp(self) -> None:
        self.program: Panel = self.enterContext(panel.remote())
        self.program.wait_until_shown(panel.READY)
        self.program.open_settings(NETWORK)
        self.program.wait_until_shown(SCAN)

    def _calls(self, action: str = "") -> list[str]:
        """The calls for that action, or all but the questions for addresses."""
        calls = self.program.calls("wifi_action_from_cpp")
        if action:
            return [call for call in calls if call.startswith(f"WifiActionEnum.{action} ")]
        return [call for call in calls if "IPData" not in call]

    def _wait_for_calls(self, *expected: str) -> None:
        wanted = [f"WifiActionEnum.{call}" for call in expected]
        self.program.wait_for(f"{wanted} instead of {self._calls()}", lambda: self._calls() == wanted)

    def _open_login(self) -> None:
        self.program.click(CONNECT)
        self.program.wait_until_shown("Passwort für: Halle")

    def _field(self) -> str:
        return self.program.wait_until_shown(*FIELD).text

    def test_login(self) -> None:
        """From the scan to the attempt, which is aborted. The password is nowhere afterwards."""
        self.program.backend(RADIO)
        self.program.click(SCAN)
        for text in ("Halle", "61%", "5GHz"):
            self.program.wait_until_shown(text, "label")
        self._open_login()
        self.program.wait_until_gone(SCAN)
        self.assertIsNone(self.program.find(NETWORK))
        self.program.click(*FIELD)
        desktop.type_text(PASSWORD)
        self.program.wait_for("the password", lambda: len(self._field()) == len(PASSWORD))
        self.program.click(CONNECT)
        login = ["Scan None", "Login Halle", f"Connect ['Halle', '{PASSWORD}']"]
        self._wait_for_calls(*login)
        self.program.wait_until_shown(ABORT)
        self.program.wait_until_gone("Halle")
        self.program.click(ABORT)
        self._wait_for_calls(*login, "Disconnect None")
        self.program.click(SCAN)
        self._open_login()
        self.assertEqual(self._field(), "")
        self.program.click(BACK)
        self.program.wait_until_shown("Halle", "label")
        # The backend of the test prints what it was told, the program must not.
        told = [line for line in self.program.log if PASSWORD in line]
        self.assertEqual(told, [f"CALL wifi_action_from_cpp WifiActionEnum.Connect ['Halle', '{PASSWORD}']"])
        self.assertEqual(complaints(self.program), [])

    def test_addresses_are_asked_for_on_the_page_alone(self) -> None:
        """Another page stops the questions, and so does another tab; they go on with the page."""
        self._wait_for_questions()
        self.program.open_settings(HAND)
        self._wait_for_silence()
        self.program.open_settings(NETWORK)
        self._wait_for_questions()
        self.program.click("Automatik", "page tab")
        self.program.wait_until_gone(SCAN)
        self._wait_for_silence()
        self.program.click("Settings", "page tab")
        self._wait_for_questions()

    def _wait_for_questions(self) -> None:
        before = len(self._calls("IPData"))
        self.program.wait_for("two questions", lambda: len(self._calls("IPData")) >= before + 2)

    def _wait_for_silence(self) -> None:
        before = len(self._calls("IPData"))
        hold(TWO_PERIODS_SECS)
        self.assertEqual(len(self._calls("IPData")), before)

    def test_tunnel_is_restarted(self) -> None:
        """The button beside the address of a WireGuard interface."""
        self.program.backend(interfaces({"name": "wg0", "ip4": "10.0.0.9", "type_": ""}))
        self.program.wait_until_shown("wg0: 10.0.0.9", "label")
        self.program.click("Schnittstelle wg0 neu starten")
        self._wait_for_calls("RestartWireguard wg0")

    def test_scan_that_never_ends(self) -> None:
        """All else goes on; the next scan waits until the backend says that the first has ended."""
        self.program.click(SCAN)
        self._wait_for_calls("Scan None")
        self.program.click(SCAN)
        self.program.click("Automatik", "page tab")
        self.program.press_and_hold(START)
        self.program.wait_for("the start", lambda: self.program.calls("auto_value_from_cpp"))
        self.program.open_settings(NETWORK)
        self._wait_for_calls("Scan None")
        self.program.backend(IMPORT + "Wifi.abort_wifi_scan()")
        self.program.wait_until_still()
        self.program.click(SCAN)
        self._wait_for_calls("Scan None", "Scan None")

    def test_names_of_strangers(self) -> None:
        """They are shown as they stand, nothing is loaded, and a press names the network exactly."""
        with socket.create_server(("127.0.0.1", 0)) as server:
            server.setblocking(False)
            address = f"http://127.0.0.1:{server.getsockname()[1]}/x.png"
            names = [
                f"<img src='{address}'>",
                f"<a href='{address}'>Klick</a>",
                "\u202eabgedreht",
                "\N{GRINNING FACE}" * 8,
            ]
            # What the accessibility bus cannot carry must not end the program either.
            unspeakable = ["a\0b", "\x1b[31m\a", "\ufffe"]
            self.program.backend(scan_results({name: {"quality": 50} for name in names + unspeakable}))
            self.program.backend(f"{IMPORT}\nWifi.ssid = {names[0]!r}")
            self.program.backend(interfaces({"name": names[0], "ip4": names[1], "type_": "x", "is_wg": True}))
            for name in names:
                self.program.wait_until_shown(name, "label")
            self.program.wait_until_shown(f"{names[0]} (x): {names[1]}", "label")
            self.program.click(f"Schnittstelle {names[0]} neu starten")
            self._wait_for_calls(f"RestartWireguard {names[0]}")
            with self.assertRaises(BlockingIOError):
                server.accept()
        self.assertEqual(complaints(self.program), [])

    def test_lists_change_with_the_window(self) -> None:
        """Long lists come and go while the window changes its size."""
        for number, width in enumerate((720, 500, 800)):
            addresses = f"10.0.0.{number} " * 9
            self.program.backend(interfaces(*({"name": f"wg{i}", "ip4": addresses} for i in range(3))))
            networks = {f"Netz {i:03} {number}": {"quality": i} for i in range(200)}
            self.program.backend(scan_results(networks))
            self.program.resize(width, 950)
            self.program.wait_until_shown(f"Netz 000 {number}", "label")
        self.assertEqual(complaints(self.program), [])


if __name__ == "__main__":
    unittest.main()
