"""Installing updates."""

import time
import unittest

from brovik.actuator import ActuatorEnum
from brovik.auto import Auto, AutoEnum
from brovik.gui import Gui, PageEnum
from brovik.sensor import SensorEnum
from brovik.shell import Shell, ShellActionEnum

from demo_support import outputs_on
from update_case import BROKEN, UpdateCase
import controller
from controller.packages.updates import UPGRADED
from controller.storage import PACKAGES


class UpgradeTest(UpdateCase):
    """Installing updates."""

    def upgrade(self) -> None:
        """Searches and upgrades."""
        self.work(ShellActionEnum.Update)
        self.shell.clear()
        self.work(ShellActionEnum.Upgrade)

    def test_upgrade_with_a_fault(self) -> None:
        """The console comes to the front; what can be installed is; the screens are unlocked."""
        self.start()
        self.work(ShellActionEnum.Update)
        offers = self.offers()
        self.shell.clear()
        self.work(ShellActionEnum.Upgrade)
        self.assertEqual(Gui.page, PageEnum.UpdatesShell)
        self.assertTrue(Shell.upgrade_in_progress_or_finished)
        self.assertFalse(Shell.locked)
        self.assertEqual((self.shell.names[0], self.shell.names[-1]), ("lockedChanged", "lockedChanged"))
        self.assertTrue(any(BROKEN in line for line in self.printed("appendStderr")))
        self.assertEqual(list(self.offers()), [BROKEN])
        self.assertEqual(self.installed()["brovik-bedienung"], offers["brovik-bedienung"])
        (title, text, category, _) = self.signals("message")[0]
        self.assertEqual((title, category), ("Updates", "error"))
        self.assertIn(BROKEN, text)

    def test_upgrade_without_faults(self) -> None:
        """Ends with the request to restart the machine."""
        self.use_packages("a", "b")
        self.start()
        self.upgrade()
        self.assertEqual(self.signals("message"), [["Updates", UPGRADED, "success", 0]])
        self.assertEqual((self.installed(), Shell.upgradables), ({"a": "1.1", "b": "1.1"}, []))

    def test_survives_the_end_of_the_program(self) -> None:
        """Installed versions are those of the time before; what is on offer has to be looked for."""
        self.start()
        self.upgrade()
        installed = self.installed()
        self.stop()
        Shell.installed, Shell.upgradables = [], []
        self.start()
        self.assertEqual((self.installed(), Shell.upgradables), (installed, []))
        self.work(ShellActionEnum.Update)
        self.assertEqual(list(self.offers()), [BROKEN])

    def test_nothing_to_install(self) -> None:
        """Is said, and the machine can still run."""
        self.start()
        self.work(ShellActionEnum.Upgrade)
        self.assertEqual(len(self.signals("toastWarn")), 1)
        self.assertFalse(Shell.upgrade_in_progress_or_finished)

    def test_without_network(self) -> None:
        """Nothing is begun, and the machine can still run."""
        self.start()
        self.work(ShellActionEnum.Update)
        self.cut_network()
        self.work(ShellActionEnum.Upgrade)
        self.assertIn("Netzwerkverbindung", self.signals("message")[0][1])
        self.assertFalse(Shell.upgrade_in_progress_or_finished)

    def test_network_lost(self) -> None:
        """An upgrade whose downloads fail leaves all as it was, and the screens unlocked."""
        self.start(factor=5)
        self.work(ShellActionEnum.Update)
        before = self.installed()
        self.act(ShellActionEnum.Upgrade)
        self.until(lambda: Shell.upgrade_in_progress_or_finished, "begin")
        self.cut_network()
        self.until(lambda: self.locks() == 4, "end of the upgrade")
        self.assertIn("Netzwerkverbindung", self.signals("message")[0][1])
        self.assertEqual(self.installed(), before)

    def test_refused_during_a_run(self) -> None:
        """The run goes on, and nothing is installed."""
        self.start(factor=5)
        self.work(ShellActionEnum.Update)
        for enum, name in (
            (AutoEnum.Toggle, "active"),
            (AutoEnum.ToggleLwTestSaure, "lw_saure_active"),
            (AutoEnum.ToggleLwTestLauge, "lw_lauge_active"),
        ):
            with self.subTest(name):
                self.gui.clear()
                controller.auto_value_from_cpp(enum, None)
                self.until(lambda: getattr(Auto, name), "start")
                self.work(ShellActionEnum.Upgrade)
                self.assertIn("Während eines Laufs", self.signals("toastWarn")[0][0])
                self.assertFalse(Shell.upgrade_in_progress_or_finished)
                self.assertTrue(getattr(Auto, name))
                controller.auto_value_from_cpp(enum, None)
                self.until(lambda: not getattr(Auto, name), "end")

    def test_no_run_afterwards(self) -> None:
        """From nowhere can one be started: neither screens nor push button."""
        self.use_packages("a")
        self.start()
        self.upgrade()
        self.gui.clear()
        for enum in (AutoEnum.Toggle, AutoEnum.ToggleLwTestSaure, AutoEnum.ToggleLwTestLauge):
            controller.auto_value_from_cpp(enum, None)
        controller.sensor_value_from_cpp(SensorEnum.Start, True)
        self.handled()
        self.assertEqual(len(self.signals("toastWarn")), 4)
        self.assertFalse(Auto.active or Auto.lw_saure_active or Auto.lw_lauge_active)
        controller.actuator_toggle_from_cpp(ActuatorEnum.MvKalt)
        self.until(outputs_on, "operation by hand")

    def test_end_of_the_program(self) -> None:
        """Breaks it off at once; what had been set up by then stays so."""
        self.start(factor=20)
        self.work(ShellActionEnum.Update)
        self.act(ShellActionEnum.Upgrade)
        self.until(lambda: any("eingerichtet" in line for line in self.printed("appendStdout")), "set-up")
        started = time.monotonic()
        self.stop()
        self.assertLess(time.monotonic() - started, 2.0)
        self.assertFalse(Shell.locked)
        self.assertEqual(self.in_file(PACKAGES)["installed"], self.installed())
        self.assertEqual(self.signals("exception"), [])

    def test_file_that_makes_no_sense(self) -> None:
        """Counts as if nothing had been stored."""
        rows: tuple[dict[str, object], ...] = (
            {"installed": 5, "testing": "ja"},
            {"installed": {BROKEN: None, "nicht-da": "1.0"}},
        )
        for stored in rows:
            with self.subTest(stored=stored):
                self.put_into_file(PACKAGES, stored)
                self.start()
                self.assertEqual(self.installed()[BROKEN], "0.4.0")
                self.assertFalse(Shell.testing_repo_enabled)
                self.stop()


if __name__ == "__main__":
    unittest.main()
