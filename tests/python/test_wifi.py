"""The state of the network as the backend sees it."""

import unittest

import _probe
from brovik import wifi
from shared_properties import Attribute, check_initial_values, check_writes

INTERFACE = {"name": "wg0", "ip4": "10.0.0.2", "type_": "", "is_wg": True}
NETWORKS = {"Halle": {"quality": 70, "is5GHz": True}, "": {}}

STATE = [
    Attribute("state", "state", wifi.WifiStateEnum.Disconnected, wifi.WifiStateEnum.Connecting),
    Attribute("ssid", "ssid", "", "Halle <b>"),
    Attribute("is_5_ghz", "is5GHz", False, True),
    Attribute("ip_map_list", "ipMapList", [], [INTERFACE, INTERFACE]),
    Attribute("scan_results", "scanResults", {}, NETWORKS),
]


class WifiTest(unittest.TestCase):
    """Attributes and functions of brovik.wifi.Wifi."""

    def tearDown(self) -> None:
        wifi.Wifi.state = wifi.WifiStateEnum.Disconnected
        wifi.Wifi.quality_percantage = 1
        wifi.Wifi.quality_percantage = 0
        wifi.Wifi.scan_results = {}
        _probe.settle()

    def test_initial_values(self) -> None:
        """Every attribute starts as documented."""
        check_initial_values(self, wifi.Wifi, STATE)
        self.assertEqual(wifi.Wifi.quality_percantage, 0)

    def test_writes(self) -> None:
        """Every attribute can be written and notifies once."""
        check_writes(self, "Wifi", wifi.Wifi, STATE)

    def test_quality_after_state_gives_the_level(self) -> None:
        """The level is worked out on the GUI thread, in the order of the writes, and not known here."""
        log = _probe.SignalLog("Wifi")
        wifi.Wifi.state = wifi.WifiStateEnum.Connected
        wifi.Wifi.quality_percantage = 65
        _probe.settle()
        self.assertEqual(
            log.emissions,
            [
                ("stateChanged", False, []),
                ("qualityPercentageChanged", False, []),
                ("qualityLevelChanged", True, []),
            ],
        )
        self.assertEqual(_probe.qml("Wifi", "qualityLevel"), 3)
        self.assertFalse(hasattr(wifi.Wifi, "quality_level"))

    def test_login_data(self) -> None:
        """By place and by name; texts alone."""
        log = _probe.SignalLog("Wifi")
        wifi.Wifi.set_login_data("Halle", "geheim")
        wifi.Wifi.set_login_data(psk="", ssid="Büro")
        self.assertEqual(
            log.emissions,
            [("gotLoginData", False, ["Halle", "geheim"]), ("gotLoginData", False, ["Büro", ""])],
        )

    def test_scan_results(self) -> None:
        """Told of every time, changed once."""
        log = _probe.SignalLog("Wifi")
        wifi.Wifi.set_scan_results(NETWORKS)
        wifi.Wifi.set_scan_results(dict(NETWORKS))
        self.assertEqual(log.names, ["scanResultsChanged", "gotScanResults", "gotScanResults"])
        self.assertEqual(wifi.Wifi.scan_results, NETWORKS)

    def test_no_results(self) -> None:
        """The end of a scan without results changes none."""
        log = _probe.SignalLog("Wifi")
        wifi.Wifi.abort_wifi_scan()
        self.assertEqual(log.emissions, [("abortWifiScan", False, [])])

    def test_wrong_types(self) -> None:
        """TypeError, and nothing changes."""
        for name, wrong in (
            ("state", 0),
            ("quality_percantage", "5"),
            ("quality_percantage", 5.5),
            ("is_5_ghz", 1),
            ("ip_map_list", 5),
        ):
            with self.subTest(name), self.assertRaises(TypeError):
                setattr(wifi.Wifi, name, wrong)
        self.assertEqual((wifi.Wifi.quality_percantage, wifi.Wifi.ip_map_list), (0, []))

    def test_results_that_are_no_dict(self) -> None:
        """They are reported, and taken for none."""
        _probe.screens_loaded()
        log = _probe.SignalLog("Gui", ["exception"])
        wifi.Wifi.set_scan_results(5)
        self.assertEqual(wifi.Wifi.scan_results, {})
        self.assertEqual(len(log.emissions), 1)

    def test_records_compare_by_type_and_value(self) -> None:
        """3, "3" and 3.0 are three values, as are True and 1, however deep."""
        values = [3, "3", 3.0, True, 1, None, "", [3], [True], {"x": 1}, {"x": True}]
        log = _probe.SignalLog("Wifi", ["ipMapListChanged", "scanResultsChanged"])
        for value in values * 2:
            for _ in range(2):
                wifi.Wifi.ip_map_list = [{"is_wg": value}]
                wifi.Wifi.scan_results = {"Halle": {"is5GHz": value}}
        self.assertEqual(log.names, ["ipMapListChanged", "scanResultsChanged"] * 2 * len(values))
        wifi.Wifi.ip_map_list = []

    def test_documented_types(self) -> None:
        """As a backend's checker reads them."""
        doc = wifi.WifiClass.set_scan_results.__doc__ or ""
        self.assertIn("results: dict[str, typing.Any]", doc)

    def test_actions(self) -> None:
        """Names and numbers of what the screens ask for."""
        self.assertEqual(
            {name: int(value) for name, value in wifi.WifiActionEnum.__members__.items()},
            {"Scan": 0, "IPData": 1, "Connect": 2, "Disconnect": 3, "Login": 4, "RestartWireguard": 5},
        )

    def test_states(self) -> None:
        """Names and numbers of the enumeration."""
        self.assertEqual(
            {name: int(value) for name, value in wifi.WifiStateEnum.__members__.items()},
            {"Connected": 0, "Connecting": 1, "Disconnected": 2, "Aborted": 3},
        )


if __name__ == "__main__":
    unittest.main()
