"""Each call that the program makes for its own files and sockets fails once, in turn.

KUBELOR_FAULTS_EVERY_START says how many calls to go on to the next one; 1 takes all of them.
"""

import os
import socket
import unittest
from collections import Counter
from collections.abc import Callable
from typing import Final

from layer import Way
from program import CHOSEN, GEOMETRY, SETTINGS_FOLDER, ProgramCase, Run

EVERY: Final = int(os.environ.get("KUBELOR_FAULTS_EVERY_START", "17"))


class ProgramCallsTest(ProgramCase):
    """Runs of the program in which one call fails."""

    def each_call(self, paths: str, prepare: Callable[[], None], judge: Callable[[Run], None]) -> None:
        """Runs in which one of the calls about these paths fails."""
        silent: Counter[str] = Counter()
        runs = 0
        for way in (Way.BROKEN, Way.REFUSED):
            prepare()
            whole = self.run_program(paths)
            self.assertEqual((whole.code, whole.complaints), (0, []))
            self.assertTrue(whole.calls)
            for at in range(1, len(whole.calls) + 1, EVERY):
                with self.subTest(way=way.name, call=str(whole.calls[at - 1])):
                    prepare()
                    run = self.run_program(paths, at, way)
                    runs += 1
                    self.assertEqual(run.code, 0, run.output)
                    if run.failed is None:
                        continue  # A program that is faster or slower has fewer calls.
                    judge(run)
                    if not run.complaints:
                        silent[run.failed.name] += 1
        print(f"{paths}: {runs} runs; without a consequence, and nothing told: {dict(silent.most_common())}")

    def test_settings_file(self) -> None:
        """What the window was is not lost; what it is now is kept, or there is a line in the log."""
        self.each_call(SETTINGS_FOLDER, lambda: self.store(CHOSEN), self.judge_settings)

    def judge_settings(self, run: Run) -> None:
        """The file has what it had, and what the window is now, or there is a line."""
        stored = self.stored()
        self.assertEqual({key: stored.get(key) for key in CHOSEN}, CHOSEN, run.complaints)
        self.assertTrue(run.complaints or stored.keys() >= GEOMETRY, stored)
        left = {path.name for path in self.settings.parent.iterdir()}
        self.assertEqual(left - {f"{self.settings.name}.lock"}, {self.settings.name})

    def test_environment_file(self) -> None:
        """The program starts, whatever has come of it."""
        file = self.folder / "environment"

        def prepare() -> None:
            self.store(CHOSEN)
            file.write_text("BROVIK_FAULTS=read\n", "utf-8")

        self.each_call(
            str(file),
            prepare,
            lambda run: self.assertRegex(run.output, "environment (read|None)\n"),
        )

    def test_raise_socket(self) -> None:
        """The program starts: no other one has answered."""
        self.each_call("raise.sock:socket:", lambda: self.store(CHOSEN), lambda _: None)

    def test_service_manager(self) -> None:
        """READY and STOPPING reach the manager, or there is a line in the log."""
        address = self.folder / "notify.sock"
        with socket.socket(socket.AF_UNIX, socket.SOCK_DGRAM) as manager:
            manager.bind(str(address))
            os.environ["NOTIFY_SOCKET"] = str(address)
            self.addCleanup(os.environ.pop, "NOTIFY_SOCKET")

            def prepare() -> None:
                self.store(CHOSEN)
                _received(manager)

            def judge(run: Run) -> None:
                told = b"".join(_received(manager))
                self.assertTrue(run.complaints or (b"STOPPING=1" in told), (told, run.output))

            self.each_call(
                "notify.sock:socket:",
                prepare,
                judge,
            )


def _received(manager: socket.socket) -> list[bytes]:
    """All that waits at a socket."""
    received = []
    while True:
        try:
            received.append(manager.recv(4096, socket.MSG_DONTWAIT))
        except BlockingIOError:
            return received


if __name__ == "__main__":
    unittest.main(verbosity=2)
