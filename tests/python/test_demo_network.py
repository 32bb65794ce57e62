"""The network of the demo machine, from the operator's action to what the screens show."""

import json
import stat
import time
import unittest
from collections.abc import Callable
from typing import Any
from unittest.mock import patch

import demo_path  # pylint: disable=unused-import
import _probe
from brovik.wifi import Wifi, WifiActionEnum, WifiStateEnum

from demo_support import RunningCase
import controller
from controller.network.interfaces import NO_ADDRESS
from controller.network.radio import FILE, Radio
from controller.storage import NETWORK
from logbook.place import FILE_NAME

HOME = "Brovik-Werkstatt"
HOME_PASSWORD = "fass-und-lauge"
OFFICE = "Brovik-Büro"
OFFICE_PASSWORD = "kaffee-um-zehn"
SILENT = "Pumpenhaus (antwortet nie)"
SLOW = 0.01
WIFI_SIGNALS = [
    "stateChanged",
    "qualityLevelChanged",
    "ipMapListChanged",
    "gotLoginData",
    "gotScanResults",
    "abortWifiScan",
]


class NetworkCase(RunningCase):
    """A machine whose network is watched."""

    def setUp(self) -> None:
        super().setUp()
        self.wifi = _probe.SignalLog("Wifi", WIFI_SIGNALS)

    def act(self, enum: WifiActionEnum, value: object = None) -> None:
        """What the screens send."""
        controller.wifi_action_from_cpp(enum, value)

    def connect(self, ssid: str, password: str) -> WifiStateEnum:
        """Disconnects and attempts to connect. Returns the state in which the attempt ends."""
        self.act(WifiActionEnum.Disconnect)
        self.services_handled()
        self.wifi.clear()
        self.act(WifiActionEnum.Connect, [ssid, password])
        # To Connecting, and on from there.
        self.until(lambda: self.count("stateChanged") == 2, "end of the attempt")
        self.services_handled()
        return Wifi.state

    def start_slowly(self) -> None:
        """Starts a machine on which nothing ends by itself during a test."""
        self.start(factor=SLOW)
        _probe.settle()
        self.wifi.clear()

    def count(self, signal: str) -> int:
        """How often a signal was raised."""
        return int(self.wifi.names.count(signal))

    def toasts(self) -> list[str]:
        """The texts of the warning toasts."""
        return [text for text, _ in self.signals("toastWarn")]

    def login_data(self, ssid: str) -> list[str]:
        """What the login page gets for a network."""
        self.wifi.clear()
        self.act(WifiActionEnum.Login, ssid)
        self.until(lambda: self.count("gotLoginData"), "login data")
        (data,) = (values for name, _, values in self.wifi.emissions if name == "gotLoginData")
        return list(data)

    @staticmethod
    def addresses() -> dict[str, str]:
        """The address of each interface."""
        return {record["name"]: record["ip4"] for record in Wifi.ip_map_list}

    @staticmethod
    def level() -> int:
        """The bars that the icon shows, after all that has been written."""
        _probe.settle()
        return int(_probe.qml("Wifi", "qualityLevel"))


class StartTest(NetworkCase):
    """What there is before anybody has touched anything."""

    def test_connected(self) -> None:
        """To the network whose password the machine is delivered with."""
        self.start()
        self.assertEqual((Wifi.state, Wifi.ssid, Wifi.is_5_ghz), (WifiStateEnum.Connected, HOME, True))
        self.assertGreater(Wifi.quality_percantage, 70)
        self.assertEqual(self.level(), 3)
        self.assertEqual(list(self.addresses()), ["eth0", "wlan0", "wg0", "wg1"])
        self.assertTrue(self.addresses()["wlan0"].startswith("192.168.1."))

    def test_as_before(self) -> None:
        """To the network of the last time."""
        self.start()
        self.connect(OFFICE, OFFICE_PASSWORD)
        self.stop()
        self.start()
        self.assertEqual((Wifi.state, Wifi.ssid), (WifiStateEnum.Connected, OFFICE))

    def test_network_that_is_gone(self) -> None:
        """There is no connection then."""
        self.put_into_file(NETWORK, {"last": "nicht-da"})
        self.start()
        self.assertEqual((Wifi.state, Wifi.ssid), (WifiStateEnum.Disconnected, ""))
        self.assertEqual(self.addresses()["wlan0"], NO_ADDRESS)

    def test_file_that_makes_no_sense(self) -> None:
        """Counts as if nothing had been stored."""
        self.put_into_file(NETWORK, {"last": 5, "passwords": [1]})
        self.start()
        self.assertEqual(Wifi.ssid, HOME)

    def test_senders_that_make_no_sense(self) -> None:
        """The machine runs without a network, and the log tells why."""
        log = _probe.LogCapture()
        with patch("controller.maintenance.FILE", self.directory / "nicht-da"):
            self.start()
        self.assertEqual(Wifi.state, WifiStateEnum.Disconnected)
        self.assertTrue(any("nicht-da" in message[1] for message in log.messages))


class ScanTest(NetworkCase):
    """Looking for networks."""

    def scan(self) -> dict[str, Any]:
        """The result of a scan."""
        self.wifi.clear()
        self.act(WifiActionEnum.Scan)
        self.until(lambda: self.count("gotScanResults"), "results")
        return dict(Wifi.scan_results)

    def test_results(self) -> None:
        """Each network once, with quality and band; one that hides its name is not there."""
        self.start()
        found = self.scan()
        names = {record["ssid"] for record in json.loads(FILE.read_text(encoding="utf-8"))} - {""}
        self.assertEqual(set(found), names)
        self.assertEqual(found["Kühlraum (ohne Messwert)"], {"quality": 0, "is5GHz": False})
        self.assertTrue(found[HOME]["is5GHz"])
        self.assertTrue(20 < found["Lager"]["quality"] < 50)
        self.assertEqual(self.count("abortWifiScan"), 0)

    def test_qualities_move(self) -> None:
        """Not every scan finds the same."""
        self.start(factor=2000)
        first = self.scan()
        self.until(lambda: self.scan() != first, "another result")

    def test_takes_visible_time(self) -> None:
        """The entry function has long returned, and a second press changes nothing."""
        self.start_slowly()
        for _ in range(3):
            self.act(WifiActionEnum.Scan)
        self.services_handled()
        self.assertEqual(self.wifi.names, [])

    def test_aborted(self) -> None:
        """By whatever else the operator does with the radio, be it at once."""
        self.start_slowly()
        actions: tuple[tuple[WifiActionEnum, object], ...] = (
            (WifiActionEnum.Connect, [OFFICE, OFFICE_PASSWORD]),
            (WifiActionEnum.Disconnect, None),
        )
        waits: tuple[Callable[[], None], ...] = (self.services_handled, lambda: None)
        for wait in waits:
            for enum, value in actions:
                with self.subTest(enum.name, wait=wait):
                    self.act(WifiActionEnum.Disconnect)
                    self.services_handled()
                    self.wifi.clear()
                    self.gui.clear()
                    self.act(WifiActionEnum.Scan)
                    wait()
                    self.act(enum, value)
                    self.services_handled()
                    self.assertEqual(self.count("abortWifiScan"), 1)
                    self.assertEqual(self.toasts(), ["Die Suche nach WLAN-Netzen wurde abgebrochen"])
        self.assertEqual(self.count("gotScanResults"), 0)

    def test_after_an_abort(self) -> None:
        """The next scan has results, though it is asked for at once."""
        self.start()
        self.act(WifiActionEnum.Scan)
        self.act(WifiActionEnum.Disconnect)
        self.assertTrue(self.scan())

    def test_while_connecting(self) -> None:
        """The screen does not wait for what cannot be."""
        self.start()
        self.act(WifiActionEnum.Connect, [SILENT, "hallo-hallo"])
        self.act(WifiActionEnum.Scan)
        self.until(lambda: self.count("abortWifiScan"), "abort")
        self.until(lambda: Wifi.state == WifiStateEnum.Connecting, "the attempt")
        self.assertEqual(self.count("gotScanResults"), 0)

    def test_fault_of_the_program(self) -> None:
        """Is shown, and the screen does not wait."""
        self.start()
        with patch.object(Radio, "scan", side_effect=OSError("schlecht")):
            self.act(WifiActionEnum.Scan)
            self.until(lambda: self.signals("exception"), "exception")
        self.assertEqual(self.count("abortWifiScan"), 1)


class ConnectTest(NetworkCase):
    """Connecting and disconnecting."""

    def begin(self, ssid: str, password: str) -> None:
        """An attempt that has not ended yet."""
        self.act(WifiActionEnum.Connect, [ssid, password])
        self.until(lambda: Wifi.state == WifiStateEnum.Connecting, "begin of the attempt")
        self.services_handled()

    def assert_unconnected(self, state: WifiStateEnum) -> None:
        """There is no connection, and the icon shows that."""
        self.assertEqual((Wifi.state, Wifi.ssid, Wifi.quality_percantage), (state, "", 0))
        self.assertFalse(Wifi.is_5_ghz)
        self.assertEqual(self.addresses()["wlan0"], NO_ADDRESS)
        self.assertEqual(self.level(), 0)

    def test_right_password(self) -> None:
        """Name, band, quality and address are those of the network, and the icon follows."""
        toasts = _probe.SignalLog("Gui", ["toastNotify"])
        self.start()
        self.assertEqual(self.connect(OFFICE, OFFICE_PASSWORD), WifiStateEnum.Connected)
        self.assertEqual((Wifi.ssid, Wifi.is_5_ghz), (OFFICE, True))
        self.assertTrue(self.addresses()["wlan0"].startswith("192.168.2."))
        self.assertIn(self.level(), (2, 3))
        self.assertEqual([values[0] for _, _, values in toasts.emissions], [f"Verbunden mit {OFFICE}"])

    def test_icon_of_every_network(self) -> None:
        """Follows, even where the quality is that of before or is not known."""
        self.start()
        for ssid, password, levels in (
            ("Labor", "p-h-neutral", {3}),
            ("Labor", "p-h-neutral", {3}),
            ("Lager", "palette-4711", {1, 2}),
            ("Kühlraum (ohne Messwert)", "minus-achtzehn", {1}),
        ):
            with self.subTest(ssid):
                self.connect(ssid, password)
                self.assertIn(self.level(), levels)

    def test_states_on_the_way(self) -> None:
        """While the attempt goes on, there is no connection, and nothing ends it but its end."""
        self.start_slowly()
        self.begin(OFFICE, OFFICE_PASSWORD)
        self.assert_unconnected(WifiStateEnum.Connecting)

    def test_failures(self) -> None:
        """Each has its message, in which names are no markup, and ends without a connection."""
        self.start()
        for ssid, password, message in (
            (OFFICE, "falsch-4711", "Das Passwort für „Brovik-Büro“ ist falsch."),
            (OFFICE, "", "Das Passwort für „Brovik-Büro“ ist falsch."),
            ("<img src=x>", "falsch-4711", "Das Netz „&lt;img src=x&gt;“ ist nicht in Reichweite."),
            ("", "falsch-4711", "Das Netz „“ ist nicht in Reichweite."),
        ):
            with self.subTest(ssid=ssid, password=password):
                self.gui.clear()
                self.assertEqual(self.connect(ssid, password), WifiStateEnum.Disconnected)
                self.assertEqual(self.signals("message"), [["Netzwerk", message, "error", 0]])
                self.assert_unconnected(WifiStateEnum.Disconnected)

    def test_open_network(self) -> None:
        """Takes an empty password."""
        self.start()
        self.assertEqual(self.connect("Brauerei Gäste", ""), WifiStateEnum.Connected)

    def test_never_answers(self) -> None:
        """Goes on until the operator aborts it, who can connect to another network then."""
        self.start(factor=5000)
        self.begin(SILENT, "hallo-hallo")
        began = controller.backend().maintenance.services.now
        self.until(lambda: controller.backend().maintenance.services.now > began + 3600.0, "an hour")
        self.assert_unconnected(WifiStateEnum.Connecting)
        self.act(WifiActionEnum.Disconnect)
        self.services_handled()
        self.assert_unconnected(WifiStateEnum.Aborted)
        self.assertEqual(self.connect(OFFICE, OFFICE_PASSWORD), WifiStateEnum.Connected)

    def test_aborted_at_once(self) -> None:
        """The attempt does not even begin, and nothing of it comes later."""
        self.start(factor=2000)
        self.act(WifiActionEnum.Connect, [OFFICE, OFFICE_PASSWORD])
        self.act(WifiActionEnum.Disconnect)
        self.until(lambda: Wifi.state == WifiStateEnum.Aborted, "abort")
        began = controller.backend().maintenance.services.now
        self.until(lambda: controller.backend().maintenance.services.now > began + 60.0, "a minute")
        self.assert_unconnected(WifiStateEnum.Aborted)

    def test_another_attempt(self) -> None:
        """Takes the place of the first."""
        self.start()
        self.begin(SILENT, "hallo-hallo")
        self.act(WifiActionEnum.Connect, [OFFICE, OFFICE_PASSWORD])
        self.until(lambda: Wifi.state == WifiStateEnum.Connected, "connection")
        self.services_handled()
        self.assertEqual(Wifi.ssid, OFFICE)

    def test_disconnect(self) -> None:
        """Once or more often."""
        self.start()
        for _ in range(2):
            self.act(WifiActionEnum.Disconnect)
            self.services_handled()
            self.assert_unconnected(WifiStateEnum.Disconnected)

    def test_end_of_the_program(self) -> None:
        """Waits for no attempt, no scan and no tunnel."""
        self.start_slowly()
        self.act(WifiActionEnum.RestartWireguard, "wg0")
        self.act(WifiActionEnum.Scan)
        self.services_handled()
        self.act(WifiActionEnum.Connect, [SILENT, "hallo-hallo"])
        self.services_handled()
        started = time.monotonic()
        self.stop()
        self.assertLess(time.monotonic() - started, 2.0)
        self.assertEqual(self.signals("exception"), [])


class PasswordTest(NetworkCase):
    """What becomes of passwords."""

    def test_login(self) -> None:
        """The field gets the password that has led to a connection, and else nothing."""
        self.start()
        self.assertEqual(self.login_data(HOME), [HOME, HOME_PASSWORD])
        self.assertEqual(self.login_data(OFFICE), [OFFICE, ""])
        self.connect(OFFICE, "falsch-4711")
        self.assertEqual(self.login_data(OFFICE), [OFFICE, ""])
        self.connect(OFFICE, OFFICE_PASSWORD)
        self.assertEqual(self.login_data(OFFICE), [OFFICE, OFFICE_PASSWORD])
        self.connect(OFFICE, "falsch-4711")
        self.assertEqual(self.login_data(OFFICE), [OFFICE, OFFICE_PASSWORD])
        self.stop()
        self.start()
        self.assertEqual(self.login_data(OFFICE), [OFFICE, OFFICE_PASSWORD])

    def test_kept_in_the_file_alone(self) -> None:
        """Which nobody else may read, and which holds none that was wrong."""
        log = _probe.LogCapture()
        self.start()
        gui = _probe.SignalLog("Gui")
        self.connect(OFFICE, "falsch-4711")
        self.connect(OFFICE, OFFICE_PASSWORD)
        for value in (["x", "falsch-4711", "x"], "falsch-4711", {OFFICE: "falsch-4711"}, [5, "falsch-4711"]):
            self.act(WifiActionEnum.Connect, value)
        self.act(WifiActionEnum.Scan, "falsch-4711")
        self.services_handled()
        self.stop()
        told = str(log.messages) + str(gui.emissions)
        self.assertEqual(told.count("passt nicht"), 5)
        for password in ("4711", OFFICE_PASSWORD, HOME_PASSWORD):
            self.assertNotIn(password, told)
        self.assertNotIn("4711", str(self.in_file(NETWORK)))
        mode = (self.directory / FILE_NAME).stat().st_mode
        self.assertEqual(stat.S_IMODE(mode), 0o600)


class AddressTest(NetworkCase):
    """The interfaces."""

    def poll(self) -> dict[str, str]:
        """The answer to what the page sends each second."""
        self.act(WifiActionEnum.IPData)
        self.services_handled()
        return self.addresses()

    def test_change_over_time(self) -> None:
        """Address and quality move, and the screens hear of changes alone."""
        self.start(factor=1000)
        first = self.poll()
        qualities = set()

        def moved() -> bool:
            qualities.add(Wifi.quality_percantage)
            return self.poll() != first and len(qualities) > 3

        self.until(moved, "another address")
        self.assertLess(self.count("ipMapListChanged"), 50)
        self.assertEqual({n for n, a in self.poll().items() if a != first[n]} - {"wlan0"}, set())

    def test_nothing_changes_by_itself(self) -> None:
        """Without a question, nothing is told; with the same answer, neither."""
        self.start_slowly()
        for _ in range(5):
            self.poll()
        self.assertEqual(self.wifi.names, [])

    def test_restart_of_a_tunnel(self) -> None:
        """It is down for a while; the other one is not."""
        toasts = _probe.SignalLog("Gui", ["toastNotify"])
        self.start(factor=5)
        for name, other in (("wg0", "wg1"), ("wg1", "wg0")):
            with self.subTest(name):
                before = self.poll()
                self.act(WifiActionEnum.RestartWireguard, name)
                self.act(WifiActionEnum.RestartWireguard, name)
                self.until(lambda: self.addresses()[name] == NO_ADDRESS, "tunnel down")
                self.assertEqual(self.addresses()[other], before[other])
                self.until(lambda: self.addresses()[name] == before[name], "tunnel up")
                self.services_handled()
        texts = [values[0] for _, _, values in toasts.emissions]
        self.assertEqual(texts, [f"Schnittstelle {name} neu gestartet" for name in ("wg0", "wg1")])

    def test_no_tunnel(self) -> None:
        """Other interfaces are left alone."""
        self.start()
        for name in ("eth0", "wlan0", "", "wg2"):
            self.act(WifiActionEnum.RestartWireguard, name)
        self.services_handled()
        self.assertEqual(len(self.toasts()), 4)
        self.assertNotIn(NO_ADDRESS, self.poll().values())


if __name__ == "__main__":
    unittest.main()
