"""The radio and the network interfaces."""

import asyncio
import tempfile
import unittest
from pathlib import Path
from typing import TYPE_CHECKING, Any

from controller.network.interfaces import LEASE_SECS, NO_ADDRESS, Interfaces
from controller.network.radio import FILE, SWING, SWING_SECS, AccessPoint, ConnectError, Radio
from controller.network.radio import read_access_points

from .service_rig import Clock

if TYPE_CHECKING:
    from brovik.records import NetworkInterface


def sender(ssid: str, quality: int = 50, **values: Any) -> AccessPoint:
    """A sender around the machine."""
    given: dict[str, Any] = {
        "is_5_ghz": False,
        "password": "geheim-geheim",
        "subnet": "10.0.0",
        "answers": True,
        "known": False,
    }
    return AccessPoint(ssid=ssid, quality=quality, **(given | values))


class RadioCase(unittest.TestCase):
    """A radio in time that only passes when someone waits."""

    def setUp(self) -> None:
        self.clock = Clock()

    def radio(self, *senders: AccessPoint) -> Radio:
        """A radio that receives these."""
        return Radio(senders, self.clock.sleep, self.clock.now)


class QualityTest(RadioCase):
    """How well a sender is received."""

    def test_changes(self) -> None:
        """It moves around its mean, and not far from it."""
        received = sender("a", 50)
        radio = self.radio(received)
        seen = set()
        for _ in range(int(SWING_SECS)):
            self.clock.secs += 1.0
            seen.add(radio.quality(received))
        self.assertGreater(len(seen), SWING)
        self.assertTrue(50 - SWING <= min(seen) < 50 < max(seen) <= 50 + SWING)

    def test_ends(self) -> None:
        """It is a percentage; only where it is not known, it is 0."""
        for mean in (0, 1, 100):
            received = sender("a", mean)
            radio = self.radio(received)
            for second in range(int(SWING_SECS)):
                self.clock.secs = second
                quality = radio.quality(received)
                self.assertTrue(1 <= quality <= 100 if mean else quality == 0)


class ScanTest(RadioCase):
    """Looking for networks."""

    def test_best_of_each_name(self) -> None:
        """Networks with several senders appear once, those without name not at all."""
        best = sender("a", 90, is_5_ghz=True)
        radio = self.radio(sender("a", 40), best, sender("b"), sender(""))
        found = asyncio.run(radio.scan())
        self.assertEqual(sorted(s.ssid for s in found), ["a", "b"])
        self.assertIn(best, found)
        self.assertGreater(self.clock.now(), 1.0)

    def test_nothing_around(self) -> None:
        """Is a result, too."""
        self.assertEqual(asyncio.run(self.radio().scan()), [])


class ConnectTest(RadioCase):
    """Logging in to a network."""

    def connect(self, radio: Radio, ssid: str, password: str) -> AccessPoint:
        """Connects, or raises ConnectError."""
        return asyncio.run(radio.connect(ssid, password))

    def test_right_password(self) -> None:
        """Takes a while and gives the best sender."""
        best = sender("a", 90)
        self.assertIs(self.connect(self.radio(sender("a", 10), best), "a", "geheim-geheim"), best)
        self.assertGreater(self.clock.now(), 1.0)

    def test_open_network(self) -> None:
        """Takes any password, and none."""
        radio = self.radio(sender("a", password=""))
        for password in ("", "irgendwas"):
            self.assertEqual(self.connect(radio, "a", password).ssid, "a")

    def test_failures(self) -> None:
        """The message names the network and no password."""
        radio = self.radio(sender("a"), sender(""))
        for ssid, password, message in (
            ("a", "falsch-falsch", "Das Passwort für „a“ ist falsch."),
            ("a", "", "Das Passwort für „a“ ist falsch."),
            ("b", "geheim-geheim", "Das Netz „b“ ist nicht in Reichweite."),
            ("", "geheim-geheim", "Das Netz „“ ist nicht in Reichweite."),
        ):
            with self.subTest(ssid=ssid, password=password):
                with self.assertRaises(ConnectError) as caught:
                    self.connect(radio, ssid, password)
                self.assertEqual(str(caught.exception), message)

    def test_never_answers(self) -> None:
        """Goes on until it is cancelled, however much time passes."""
        radio = self.radio(sender("a", answers=False))

        async def attempt() -> None:
            work = asyncio.create_task(radio.connect("a", "geheim-geheim"))
            for _ in range(100):
                await self.clock.sleep(3600.0)
            self.assertFalse(work.done())
            work.cancel()
            await asyncio.gather(work, return_exceptions=True)
            self.assertTrue(work.cancelled())

        asyncio.run(attempt())


class SendersTest(unittest.TestCase):
    """The file with the senders."""

    def test_own_senders(self) -> None:
        """A dozen networks, and among them what there is to see."""
        senders = read_access_points(FILE)
        names = [s.ssid for s in senders]
        self.assertGreaterEqual(len(set(names) - {""}), 12)
        self.assertEqual(len([s for s in senders if not s.answers]), 1)
        self.assertEqual({s.is_5_ghz for s in senders}, {True, False})
        self.assertEqual(len([s for s in senders if not s.password]), 1)
        self.assertTrue(any(names.count(name) > 1 for name in names))
        self.assertTrue(any(s.quality == 0 for s in senders))
        for part in ("", "<img", "\u202e", "\n"):
            self.assertTrue(any(part in name for name in names), part)
        self.assertEqual(max(len(name.encode()) for name in names), 32)
        self.assertEqual({s.ssid for s in senders if s.known}, {senders[0].ssid})

    def test_passwords_do_not_show(self) -> None:
        """A sender that gets into a message brings no password with it."""
        self.assertNotIn("geheim", repr(sender("a")))

    def test_files_that_make_no_sense(self) -> None:
        """They raise what the reader promises."""
        for text in ("", "5", "[5]", '[{"ssid": "a"}]', '[{"ssid": 5}]', "{"):
            with self.subTest(text), tempfile.TemporaryDirectory() as directory:
                path = Path(directory) / "networks.json"
                path.write_text(text, encoding="utf-8")
                with self.assertRaises((ValueError, KeyError, TypeError)):
                    read_access_points(path)
        self.assertRaises(OSError, read_access_points, Path("nicht-da"))


class InterfacesTest(unittest.TestCase):
    """Addresses."""

    def setUp(self) -> None:
        self.clock = Clock()
        self.interfaces = Interfaces(self.clock.now)

    def record(self, name: str) -> "NetworkInterface":
        """The record of one interface."""
        (record,) = (r for r in self.interfaces.records() if r["name"] == name)
        return record

    def test_records(self) -> None:
        """Two interfaces and two tunnels, of which one does not tell its type."""
        names = [record["name"] for record in self.interfaces.records()]
        self.assertEqual(names, ["eth0", "wlan0", "wg0", "wg1"])
        self.assertEqual([r["is_wg"] for r in self.interfaces.records()], [False, False, True, True])
        self.assertEqual(self.record("wg1")["type_"], "")

    def test_wireless_address(self) -> None:
        """There is one while there is a connection, and from time to time it is another one."""
        self.assertEqual(self.record("wlan0")["ip4"], NO_ADDRESS)
        self.interfaces.connect(sender("a", subnet="10.1.2"))
        first = self.record("wlan0")["ip4"]
        self.assertTrue(str(first).startswith("10.1.2."))
        self.assertEqual(self.record("wlan0")["ip4"], first)
        self.clock.secs += LEASE_SECS
        self.assertNotEqual(self.record("wlan0")["ip4"], first)
        self.clock.secs += 1e6
        self.assertLess(int(str(self.record("wlan0")["ip4"]).rpartition(".")[2]), 255)

    def test_tunnel_down(self) -> None:
        """It has no address."""
        self.interfaces.tunnels["wg0"].is_up = False
        self.assertEqual(self.record("wg0")["ip4"], NO_ADDRESS)
        self.assertNotEqual(self.record("wg1")["ip4"], NO_ADDRESS)


if __name__ == "__main__":
    unittest.main()
