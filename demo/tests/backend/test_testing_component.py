"""The component of the package source with preliminary versions."""

import unittest

import watching
from brovik.auto import Auto
from brovik.shell import Shell, ShellActionEnum

from update_case import PASSWORD, UpdateCase
from controller.packages.updates import WRONG_PASSWORD


class TestingTest(UpdateCase):
    """The component with preliminary versions."""

    def test_wrong_password(self) -> None:
        """Is told, and nothing changes."""
        self.start()
        for password in ("", "falsch", PASSWORD.upper(), "\ud800"):
            with self.subTest(password):
                self.gui.clear()
                self.work(ShellActionEnum.ToggleTesting, password)
                self.assertEqual(self.signals("message"), [["Updates", WRONG_PASSWORD, "error", 0]])
                self.assertFalse(Shell.testing_repo_enabled or Shell.locked)

    def test_on_and_off(self) -> None:
        """Its versions are there at once, and gone at once; it survives the end of the program."""
        self.start()
        self.work(ShellActionEnum.ToggleTesting, PASSWORD)
        self.assertTrue(Shell.testing_repo_enabled)
        self.assertEqual(self.offers()["brovik-bedienung"], "2.5.0~rc1")
        self.stop()
        Shell.testing_repo_enabled = False
        self.start()
        self.assertTrue(Shell.testing_repo_enabled)
        self.work(ShellActionEnum.ToggleTesting, PASSWORD)
        self.assertFalse(Shell.testing_repo_enabled)
        self.assertEqual(self.offers()["brovik-bedienung"], "2.4.0")

    def test_without_network(self) -> None:
        """It is switched all the same; the old list, which says nothing any more, goes."""
        self.start()
        self.work(ShellActionEnum.Update)
        self.cut_network()
        self.work(ShellActionEnum.ToggleTesting, PASSWORD)
        self.assertEqual((Shell.testing_repo_enabled, Shell.upgradables), (True, []))
        self.assertEqual(len(self.signals("message")), 1)

    def test_refused_during_a_run(self) -> None:
        """Nothing changes."""
        self.start()
        Auto.active = True
        self.work(ShellActionEnum.ToggleTesting, PASSWORD)
        self.assertFalse(Shell.testing_repo_enabled)

    def test_password_is_never_logged(self) -> None:
        """Neither a right one nor a wrong one, nor one in a place where none belongs."""
        log = watching.LogCapture()
        self.start()
        self.work(ShellActionEnum.ToggleTesting, PASSWORD)
        self.work(ShellActionEnum.ToggleTesting, "falsch-4711")
        self.act(ShellActionEnum.ToggleTesting, ["falsch-4711"])
        self.act(ShellActionEnum.Update, PASSWORD)
        self.services_handled()
        self.stop()
        told = str(log.messages) + str(self.shell.emissions) + str(self.gui.emissions)
        self.assertIn("ToggleTesting", told)
        for path in self.directory.iterdir():
            told += path.read_bytes().decode("latin-1")
        self.assertNotIn(PASSWORD, told)
        self.assertNotIn("4711", told)


if __name__ == "__main__":
    unittest.main()
