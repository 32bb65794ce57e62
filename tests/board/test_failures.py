"""What brings the panel back when something on the board fails."""

import unittest

import backends
from board_case import DISPLAY, PROGRAM, START, BoardCase, note
from picture import Picture

#: Seconds of the board's clock within which the panel is back after its service manager has ended it.
BACK_SECS = 30
#: Crashes after which the program is not started any more.
CRASHES = 5


class FailureTest(BoardCase):
    """The program, its backend or the display hangs or ends."""

    def note_return(self, name: str, ended: str) -> None:
        """Compares the time from the end of the process that failed, a line of the journal, to the panel."""
        end = float(ended.strip(" [").split("]")[0])
        back = self.board.since_boot(PROGRAM, "ActiveEnter")
        note(name, back_after=round(back - end, 1))
        self.assertLess(back - end, BACK_SECS)

    def test_backend_hangs(self) -> None:
        """A backend that never comes back: restarted, output off, and the stacks in the journal."""
        self.put_backend(backends.FOLDER, backends.HANGS)
        self.assertFalse(self.board.output(backends.OUTPUT))
        pid = self.board.value(PROGRAM, "MainPID")
        self.board.plug_in_touch()
        self.board.touch(*START, seconds=1.5)
        self.evidence(
            self.board.wait_for_journal("Seit .* ms steht .* in auto_value_from_cpp", f"_PID={pid}")
        )
        self.assertTrue(self.board.output(backends.OUTPUT))
        self.evidence(self.board.wait_for_journal("wait_for_a_valve_that_never_answers", f"_PID={pid}"))
        self.evidence(self.board.wait_for_journal("Watchdog timeout", f"-u {PROGRAM}"))
        ended = self.board.wait_for_journal("Failed with result|Main process exited", f"-u {PROGRAM}")
        # The lines of a chip stay as they were when their process ends.
        self.board.wait_until_up(another_than=pid)
        self.assertFalse(self.board.output(backends.OUTPUT))
        self.board.keep_picture("back")
        self.note_return("backend hangs", ended)

    def test_program_stopped(self) -> None:
        """A process that gets no time at all is ended by the watchdog and started anew."""
        pid = self.board.value(PROGRAM, "MainPID")
        self.board.shell(f"kill -STOP {pid}")
        self.evidence(self.board.wait_for_journal("Watchdog timeout", f"-u {PROGRAM}"))
        ended = self.board.wait_for_journal("Failed with result|Main process exited", f"-u {PROGRAM}")
        self.board.wait_until_up(another_than=pid)
        self.board.keep_picture("back")
        self.note_return("kill -STOP", ended)

    def test_compositor_killed(self) -> None:
        """The display ends: it comes back, and the program with it."""
        pid = self.board.value(PROGRAM, "MainPID")
        self.board.shell(f"kill -KILL {self.board.value(DISPLAY, 'MainPID')}")
        ended = self.board.wait_for_journal("Failed with result|Main process exited", f"-u {DISPLAY}")
        self.board.wait_until_up(another_than=pid)
        self.evidence(self.board.wait_for_journal("Scheduled restart job", f"-u {DISPLAY}"))
        self.board.keep_picture("back")
        self.note_return("compositor killed", ended)

    def test_stop_and_start(self) -> None:
        """An ordered end is one, and the program comes up again after it."""
        pid = self.board.value(PROGRAM, "MainPID")
        begin = self.board.uptime()
        self.board.shell(f"systemctl stop {PROGRAM}")
        took = self.board.uptime() - begin
        state = self.board.show(PROGRAM, "Result", "ExecMainStatus", "ExecMainCode", "ActiveState")
        self.assertEqual([state["Result"], state["ActiveState"]], ["success", "inactive"])
        self.board.wait_for_picture("an empty screen", lambda picture: picture.colours() < 5)
        begin = self.board.uptime()
        self.board.shell(f"systemctl start {PROGRAM}")
        self.board.wait_until_up(another_than=pid)
        note("stop and start", stop=round(took, 1), start=round(self.board.uptime() - begin, 1))
        self.board.keep_picture("back")

    def test_five_crashes(self) -> None:
        """A program that never lives: the console tells what to do."""
        for _ in range(CRASHES):
            pid = self.board.value(PROGRAM, "MainPID")
            self.board.shell(f"kill -ABRT {pid}")
            self.board.wait_for("another process, or none", lambda: self.has_gone_on(pid))
        self.board.wait_for("the fall-back screen", lambda: self.fallback_is_shown)
        before = self.board.picture()

        def is_console(picture: Picture) -> bool:
            return picture.colours() < 30 and picture.changed(before) == 0

        self.board.wait_for_picture("a console", is_console)
        self.board.keep_picture("fallback")

    def has_gone_on(self, pid: str) -> bool:
        """Whether the service has another process than this one, or is not started any more."""
        state = self.board.show(PROGRAM, "MainPID", "ActiveState")
        return state["MainPID"] not in {"0", pid} or state["ActiveState"] in {"failed", "inactive"}

    @property
    def fallback_is_shown(self) -> bool:
        """Whether the console has what the operator is to do."""
        return self.board.value("kubelor-fallback.service", "ActiveState") == "active"


if __name__ == "__main__":
    unittest.main()
