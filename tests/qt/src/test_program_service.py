"""The program as a service: test_program_service.py <entry host> <backend> <python>."""

import os
import signal
import socket
import unittest
from collections.abc import Callable
from pathlib import Path

from program_case import PATIENCE, ProgramCase, Run

# Long enough for drawing that busy cores do.
PERIOD_MS = 4000
WATCHDOG = "WATCHDOG=1"
END = "STOPPING=1"


class Manager:
    """The service manager's end of the socket; all lines it is sent, in order."""

    def __init__(self, address: str) -> None:
        self.address = address
        self.lines: list[str] = []
        self._socket = self._bound()

    def _bound(self) -> socket.socket:
        server = socket.socket(socket.AF_UNIX, socket.SOCK_DGRAM)
        server.bind(self.address.replace("@", "\0", 1))
        server.settimeout(PATIENCE)
        return server

    def wait_for(self, condition: Callable[[str], bool]) -> str:
        """Receives up to a line that fulfils the condition, and gives it. Earlier ones are not looked at."""
        while True:
            new = self._socket.recv(4096).decode().split("\n")
            self.lines += new
            found = next((line for line in new if condition(line)), None)
            if found is not None:
                return found

    def wait_for_line(self, line: str) -> None:
        """Receives up to that line."""
        self.wait_for(line.__eq__)

    def so_far(self) -> list[str]:
        """All lines so far."""
        self._socket.setblocking(False)
        try:
            while True:
                self.lines += self._socket.recv(4096).decode().split("\n")
        except BlockingIOError:
            self._socket.settimeout(PATIENCE)
        return self.lines

    def vanish(self) -> None:
        """Is gone, with its socket."""
        self._socket.close()
        os.unlink(self.address)

    def come_back(self) -> None:
        """Another one takes the address."""
        self._socket = self._bound()

    def close(self) -> None:
        """Gives the socket up."""
        self._socket.close()


class Service(Run):
    """A run of the program whose backend runs what it is told, and waits for a pipe."""

    def __init__(self, environment: dict[str, str]) -> None:
        super().__init__(environment)
        self._fifo = Path(environment["TEST_FIFO"])

    def run(self, code: str) -> None:
        """Lets the backend run a line of code."""
        self.tell(code + "\n")

    def go_on(self) -> None:
        """Lets go on who waits for the pipe."""
        with self._fifo.open("wb"):
            pass

    def terminate(self) -> int:
        """Ends the program as the service manager does; gives the exit code."""
        self.send(signal.SIGTERM)
        return self.end()


class ServiceTest(ProgramCase):
    """What the service manager is told, and when."""

    def setUp(self) -> None:
        super().setUp()
        self.fifo = self.folder / "fifo"
        os.mkfifo(self.fifo)

    def manager(self, prefix: str = "") -> Manager:
        """A service manager, with nothing received yet."""
        manager = Manager(f"{prefix}{self.folder}/notify")
        self.addCleanup(manager.close)
        return manager

    def start(self, manager: Manager | None, backend: str = "serving", **environment: str) -> Service:
        """Starts the program as that manager's service."""
        notify = {"NOTIFY_SOCKET": manager.address} if manager else {}
        variables = self.variables(backend, TEST_FIFO=str(self.fifo), **notify, **environment)
        return self.enterContext(Service(variables))

    def watched(self, manager: Manager, **environment: str) -> Service:
        """The program with a watchdog, when it is ready."""
        service = self.start(manager, WATCHDOG_USEC=str(PERIOD_MS * 1000), **environment)
        manager.wait_for_line("READY=1")
        return service

    def test_ready_after_the_backends_answer(self) -> None:
        """The status comes at once, and READY when the backend has answered; the end is told once."""
        manager = self.manager()
        service = self.start(manager, TEST_LATE_READY="1")
        service.wait_for("waits in Ready")
        manager.wait_for_line("STATUS=Noch nicht bereit")
        self.assertNotIn("READY=1", manager.lines)
        self.assertEqual(manager.lines[0].split("=")[0], "STATUS")
        service.go_on()
        manager.wait_for_line("READY=1")
        self.assertEqual(service.terminate(), 0, service.lines)
        lines = manager.so_far()
        self.assertEqual([lines.count("READY=1"), lines.count(END)], [1, 1])
        self.assertLess(lines.index("READY=1"), lines.index(END))
        self.assertNotIn(WATCHDOG, lines)

    def test_abstract_socket(self) -> None:
        """A name instead of a path."""
        manager = self.manager("@")
        service = self.start(manager)
        manager.wait_for_line("READY=1")
        self.assertEqual(service.terminate(), 0, service.lines)
        self.assertIn(END, manager.so_far())

    def test_never_ready(self) -> None:
        """Neither a failed backend nor a missing main screen is ready."""
        manager = self.manager()
        service = self.start(manager, "init_fails")
        service.wait_for("Python-Funktion gui_value_from_cpp() nicht gefunden")
        service.wait_for("frame")
        self.assertEqual(service.terminate(), 0, service.lines)
        service = self.start(manager, TEST_NO_SCREEN="1", QML_DISABLE_DISK_CACHE="1")
        self.assertEqual(service.end(), 255, service.lines)
        lines = manager.so_far()
        self.assertNotIn("READY=1", lines)
        self.assertEqual(lines.count(END), 2)

    def test_status(self) -> None:
        """The newest status is told, in one line, with whether the automatic run is on."""
        manager = self.manager()
        service = self.start(manager)
        manager.wait_for_line("READY=1")
        service.run("Gui.status = 'Zwei\\nREADY=1'")
        manager.wait_for_line("STATUS=Zwei READY=1")
        service.run("import brovik.auto; Gui.status = 'Schritt 4 von 11'; brovik.auto.Auto.active = True")
        manager.wait_for_line("STATUS=Automatik läuft, Schritt 4 von 11")
        told = len(manager.lines)
        service.run("for i in range(20000): Gui.status = f'Flut {i}'")
        manager.wait_for_line("STATUS=Automatik läuft, Flut 19999")
        service.run("brovik.auto.Auto.active = False")
        manager.wait_for_line("STATUS=Flut 19999")
        self.assertLess(len(manager.lines) - told, 200)
        self.assertEqual(manager.lines.count("READY=1"), 1)

    def test_children_are_no_service(self) -> None:
        """What the backend starts knows nothing of the manager."""
        service = self.watched(self.manager())
        self.assertEqual(service.wait_for("children know"), "children know []\n")

    def test_backend_hangs(self) -> None:
        """While an entry function hangs the watchdog starves; the log has its name and the stacks."""
        manager = self.manager()
        service = self.watched(manager)
        for _ in range(3):
            manager.wait_for_line(WATCHDOG)
        service.run("answers.append('in a press'); Gui.message('Titel', 'Text', 'info')")
        service.wait_for("waits in a press")
        line = service.wait_for("Bleibt es dabei, startet der Dienst neu.")
        self.assertRegex(line, r"^\[CRIT \].* Seit 3000 ms steht der GUI-Thread. ")
        self.assertIn(" Das Backend ist in gui_value_from_cpp(DialogData). ", line)
        service.wait_for("in gui_value_from_cpp")
        self.assertIn("(most recent call first):", "".join(service.lines))
        manager.so_far()
        count = manager.lines.count(WATCHDOG)
        service.go_on()
        service.wait_for("Es antworten wieder alle.")
        self.assertEqual(manager.so_far().count(WATCHDOG), count + 1)
        self.assertEqual(service.terminate(), 0, service.lines)

    def test_gui_stands(self) -> None:
        """Nobody but the GUI thread stands."""
        manager = self.manager()
        service = self.watched(manager)
        service.run("Gui.set_pico_stdout(FIFO)")
        service.wait_for("GUI stands")
        line = service.wait_for("Bleibt es dabei")
        self.assertIn(" ms steht der GUI-Thread. Bleibt", line)
        service.go_on()
        service.wait_for("Es antworten wieder alle.")
        self.assertEqual(service.terminate(), 0, service.lines)

    def test_interpreter_hangs(self) -> None:
        """A call that nobody waits for hangs: the screens go on, the watchdog starves all the same."""
        manager = self.manager()
        service = self.watched(manager)
        service.run("answers.append('behind the screens'); Gui.set_pico_stderr('')")
        service.wait_for("waits behind the screens")
        line = service.wait_for("Bleibt es dabei")
        self.assertIn(" steht der Interpreter-Thread. ", line)
        self.assertIn(" Das Backend ist in gui_value_from_cpp(DeleteWarnings). ", line)
        service.go_on()
        service.wait_for("Es antworten wieder alle.")
        self.assertEqual(service.terminate(), 0, service.lines)

    def test_long_end(self) -> None:
        """While the end of Python is waited for the watchdog is fed on."""
        manager = self.manager()
        service = self.watched(manager, TEST_LATE_END="1")
        service.run("Gui.set_pico_return_value(0)")
        manager.wait_for_line(END)
        service.wait_for("waits at the end")
        for _ in range(3):
            manager.wait_for_line(WATCHDOG)
        service.go_on()
        self.assertEqual(service.end(), 0, service.lines)
        self.assertNotIn("Bleibt es dabei", "".join(service.lines))

    def test_manager_comes_and_goes(self) -> None:
        """What a manager has not taken is told to its successor."""
        manager = self.manager()
        manager.vanish()
        service = self.start(manager)
        service.wait_for("ready")
        self.assertIn("Der Dienstverwalter nimmt nichts an", "".join(service.lines))
        manager.come_back()
        manager.wait_for_line("READY=1")
        manager.vanish()
        service.run("Gui.status = 'Vertan'")
        service.wait_for("Der Dienstverwalter nimmt nichts an")
        manager.come_back()
        manager.wait_for_line("STATUS=Vertan")
        manager.vanish()
        self.assertEqual(service.terminate(), 0, service.lines)

    def test_no_manager(self) -> None:
        """Without a manager there is no watchdog either."""
        service = self.start(None, WATCHDOG_USEC="1000")
        service.wait_for("ready")
        service.run("Gui.set_pico_stdout(FIFO)")
        service.wait_for("GUI stands")
        service.go_on()
        self.assertEqual(service.terminate(), 0, service.lines)
        log = "".join(service.lines)
        self.assertNotIn("Dienst", log)
        self.assertIn("children know []", log)

    def test_what_is_no_socket(self) -> None:
        """An address that cannot be one is logged."""
        manager = self.manager()
        manager.close()
        manager.address = "nowhere"
        service = self.start(manager)
        service.wait_for("ready")
        self.assertIn("NOTIFY_SOCKET ist kein Socket: nowhere", "".join(service.lines))
        self.assertEqual(service.terminate(), 0, service.lines)


if __name__ == "__main__":
    unittest.main(verbosity=2)
