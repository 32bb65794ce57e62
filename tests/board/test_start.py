"""From the plug to the panel, and the finger on it."""

import unittest

from board_case import DISPLAY, PROGRAM, START, BoardCase, Drawing, note
from picture import Picture

#: The rectangle of the status line.
STATUS = (0, 85, 800, 40)


class StartTest(BoardCase):
    """The board as it is when the units of the packages have started everything, drawn as on a machine."""

    drawing = Drawing.OPENGL

    def test_panel(self) -> None:
        """The units bring up the panel; nothing has failed, and the program is the package's."""
        self.board.keep_picture("panel")
        self.assertEqual(self.board.shell("systemctl --failed --no-legend"), "")
        state = self.board.show(PROGRAM, "MainPID", "NRestarts", "StatusText")
        self.evidence(str(state))
        self.assertEqual(state["NRestarts"], "0")
        program = self.board.shell(f"readlink /proc/{state['MainPID']}/exe")
        self.assertEqual(program, "/usr/bin/kubelor")
        self.assertRegex(self.board.shell(f"dpkg --search {program}"), "^kubelor:")
        for unit in (PROGRAM, DISPLAY):
            self.assertRegex(
                self.board.shell(f"dpkg --search $(systemctl show --value -p FragmentPath {unit})"),
                "^kubelor-kiosk:",
            )
            self.assertEqual(
                self.board.shell(f"stat --format=%U /proc/{self.board.value(unit, 'MainPID')}"), "kubelor"
            )

    def test_automatic_run(self) -> None:
        """A finger on "Automatikbetrieb starten" starts a run, if it stays for a second."""
        self.board.plug_in_touch()
        before = self.board.keep_picture("before")
        self.board.touch(*START, seconds=1.5)

        def runs() -> bool:
            return "Automatik läuft" in self.board.value(PROGRAM, "StatusText")

        def differs(picture: Picture) -> bool:
            return picture.part(*STATUS).changed(before.part(*STATUS)) > 0.01

        self.board.wait_for("the run", runs)
        self.board.wait_for_picture("the run on the panel", differs)
        self.evidence(self.board.value(PROGRAM, "StatusText"))
        self.board.keep_picture("run")
        note("run", program_bytes=self.board.memory(PROGRAM))


if __name__ == "__main__":
    unittest.main()
