"""The program's entry, run as a whole without a screen: test_program.py <entry host> <backend> <python>."""

import re
import signal
import socket
import subprocess
import unittest

from program_case import BACKEND, HOST, PYTHON, READY, ProgramCase


class ProgramTest(ProgramCase):
    """Start and end."""

    def test_start_and_end(self) -> None:
        """Theme, title, Ready for the backend, and the event loop's result as the exit code."""
        run = self.run_program()
        self.assertEqual(run.returncode, 7, run.stderr)
        told = [line for line in run.stdout.splitlines() if line.startswith(("dark", "title", READY))]
        self.assertEqual(told, ["dark: ", "title: Brovik Kubelor", READY])
        self.assertRegex(
            run.stderr.splitlines()[0], r'^\[DEBUG\]\[.*\]\[0:0:\d+\] BROVIK_VERSION: "2505211"$'
        )
        self.assertIn(f"] BROVIK_PY_DIR: {BACKEND}\n", run.stderr)
        self.assertIn("] Interpreter mit Modul 'controller' initialisiert\n", run.stderr)

    def test_end_by_quit_is_zero(self) -> None:
        """A normal end has code 0."""
        self.assertEqual(self.run_program(TEST_CODE="0").returncode, 0)

    def test_output_of_python(self) -> None:
        """print() reaches the process's streams unchanged, the log its format."""
        run = self.run_program()
        self.assertIn("\nx\\udcff\n", run.stdout)
        self.assertIn("\ny[", run.stderr.replace("y[INFO ]", "\ny["))
        self.assertRegex(run.stderr, r"\[INFO \]\[[^]]+\]\[0:\d+:\d+\]\[Py\] zu 100 %\n")
        self.assertRegex(run.stderr, r"%6\[[^]]+\]\[\d+:\d+:\[INFO \]\]\[Py\] Wert 0\n")

    def test_environment_file(self) -> None:
        """Lines with the prefix reach the backend; the file wins over the environment."""
        self.write("environment", "BROVIK_X=a=b\nexport BROVIK_Y=1\nBROVIK_Z\nBROVIKER=1\nBROVIK_OLD=neu\n")
        run = self.run_program(BROVIK_OLD="alt", BROVIK_KEPT="da")
        expected = {
            "BROVIK_X": "a=b",
            "BROVIKER": "1",
            "BROVIK_OLD": "neu",
            "BROVIK_KEPT": "da",
            "BROVIK_CONFIG_DIR": f"{self.folder}/config/BrovikGmbH",
            "QT_IM_MODULE": "qtvirtualkeyboard",
        }
        self.assertIn(f"environment {sorted(expected.items())}\n", run.stdout)

    def test_environment_file_sets_stub_variable(self) -> None:
        """Without stub mode, the variable of stub mode has the file's value."""
        self.write("environment", "BROVIK_MAKE_PY_STUBS=aus\n")
        self.assertIn("('BROVIK_MAKE_PY_STUBS', 'aus')", self.run_program().stdout)

    def test_theme_of_the_settings_file(self) -> None:
        """The settings file decides on the theme; without the key it is dark."""
        for content, dark in (
            ("[window]\ndark=true\n", True),
            ("[window]\ndark=false\n", False),
            ("[window]\nx=5\n", True),
        ):
            with self.subTest(content):
                self.write("config/BrovikGmbH/Kubelor.ini", content)
                self.assertEqual("dark: \n" in self.run_program().stdout, dark)

    def test_full_screen_and_separator(self) -> None:
        """`-f - --make-stubs` starts normally in full screen and passes the rest to Python."""
        run = self.run_program("-f", "-", "--make-stubs", "-", "--")
        self.assertEqual(run.returncode, 7, run.stderr)
        self.assertIn("fullscreen: \n", run.stdout)
        self.assertIn(f"argv {[PYTHON, '--make-stubs', '-', '--']}\n", run.stdout)
        self.assertIn(READY, run.stdout)

    def test_make_stubs(self) -> None:
        """`--make-stubs` imports the backend and ends with 0: no window, no other instance, no init."""
        self.write("bin/wmctrl", "#!/bin/sh\necho 'Brovik Kubelor'\n", 0o755)
        run = self.run_program("--make-stubs")
        self.assertEqual(run.returncode, 0, run.stderr)
        self.assertIn("imported 1\n", run.stdout)
        for absent in ("argv", "title", "gui_value_from_cpp"):
            self.assertNotIn(absent, run.stdout)
        self.assertNotIn("wmctrl", run.stderr)
        self.assertNotIn("nicht gefunden", run.stderr)

    def test_help_and_version(self) -> None:
        """Both print and end with 0 before an interpreter is started."""
        options = (
            "Startet die Anwendung im Fullscreen-Modus",
            "Verwende den PointingHandCursor als Standard-Cursor (experimentell - Cursor kann von der "
            "Anwendung nicht mehr geändert werden)",
            "Erstelle die Python Stub-Files (*.pyi)",
        )
        for arguments in (["--help"], ["-h", "--make-stubs"], ["--version"], ["-v", "-f"]):
            with self.subTest(arguments):
                run = self.run_program(*arguments)
                self.assertEqual(run.returncode, 0, run.stderr)
                self.assertNotIn("BROVIK_PY_DIR", run.stderr)
                self.assertNotIn("title", run.stdout)
        self.assertEqual(self.run_program("--version").stdout.splitlines()[-1], "Kubelor 2505211")
        text = re.sub(r"\s+", " ", self.run_program("--help").stdout)
        self.assertIn("Brovik Kubelor", text)
        positions = [text.index(option) for option in options]
        self.assertEqual(positions, sorted(positions))

    def test_unknown_option(self) -> None:
        """The main screen comes up first, then the dialog; what was understood keeps its effect."""
        run = self.run_program("--unknown<b>", "-f", "--pointing-hand-cursor")
        self.assertEqual(run.returncode, 7, run.stderr)
        lines = run.stdout.splitlines()
        message = (
            "message: Ungültige(r) Parameter|Beim Programmstart wurden ungültige Parameter übergeben:<br>"
            "Unknown option 'unknown&lt;b&gt;'.<br><br><b>Falls dieser Fehler im Produktivbetrieb auftritt, "
            "bitte der Firma Brovik Bescheid geben.</b>|warning|0"
        )
        self.assertIn("fullscreen: ", lines)
        self.assertLess(lines.index(READY), lines.index(message))

    def test_messages_of_the_start_come_after_it(self) -> None:
        """What comes before the screens are loaded is shown once they are, before what comes later."""
        lines = self.run_program("--unknown", TEST_MESSAGES="1").stdout.splitlines()
        shown = [line.split("|")[0] for line in lines if line.startswith(("message", READY))]
        self.assertEqual(
            shown, [READY, "message: Erste", "message: Zweite", "message: Ungültige(r) Parameter"]
        )

    def test_second_instance_by_window(self) -> None:
        """A listed window ends the second process with 100; its backend has been started and is stopped."""
        self.write(
            "bin/wmctrl", '#!/bin/sh\necho "$@" >>"$HOME/calls"\necho \'0x1 0 h Brovik Kubelor\'\n', 0o755
        )
        run = self.run_program()
        self.assertEqual(run.returncode, 100, run.stderr)
        self.assertEqual((self.folder / "calls").read_text("utf-8"), "-l\n-a Brovik Kubelor\n")
        self.assertIn("argv", run.stdout)
        self.assertNotIn(READY, run.stdout)

    def test_second_instance_by_socket(self) -> None:
        """An answering socket ends the second process with 100, and no window is looked for."""
        self.write("bin/wmctrl", '#!/bin/sh\ntouch "$HOME/called"\n', 0o755)
        with socket.socket(socket.AF_UNIX) as listener:
            listener.bind(str(self.folder / "raise.sock"))
            listener.listen()
            self.assertEqual(self.run_program().returncode, 100)
            connection, _ = listener.accept()
            with connection, connection.makefile("rb") as stream:
                self.assertEqual(stream.read(), b"fullscreen 1")
        self.assertFalse((self.folder / "called").exists())

    def test_missing_window_tool(self) -> None:
        """Without wmctrl there is one info line, and the program starts."""
        run = self.run_program(PATH=f"{self.folder}/bin")
        self.assertEqual(run.returncode, 7, run.stderr)
        self.assertEqual(run.stderr.count("Das Programm 'wmctrl' ist anscheinend nicht installiert."), 1)

    def test_missing_main_screen(self) -> None:
        """A main screen that cannot be created ends the program with -1."""
        run = self.run_program(TEST_NO_SCREEN="1", QML_DISABLE_DISK_CACHE="1")
        self.assertEqual(run.returncode, 255, run.stderr)

    def test_missing_backend(self) -> None:
        """Without a backend the program comes up and stays."""
        with subprocess.Popen(
            [HOST],
            stderr=subprocess.PIPE,
            encoding="utf-8",
            env={
                "PATH": "",
                "XDG_CONFIG_HOME": str(self.folder),
                "QT_QPA_PLATFORM": "offscreen",
                "QT_QUICK_BACKEND": "software",
                "TEST_PYTHON": PYTHON,
                "TEST_BACKEND_DIR": str(self.folder),
            },
        ) as program:
            assert program.stderr is not None
            self.assertTrue(any("gui_value_from_cpp() nicht gefunden" in line for line in program.stderr))
            self.assertIsNone(program.poll())
            program.send_signal(signal.SIGKILL)

    def test_backend_thread_raises_fatal(self) -> None:
        """A fatal message of the backend ends the program with 1, with the line as the last word."""
        for thread in ("interpreter", "backend"):
            with self.subTest(thread):
                run = self.run_program(backend="fatal", TEST_FATAL=thread)
                self.assertEqual(run.returncode, 1, run.stderr)
                self.assertRegex(run.stderr, r"\[FATAL\]\[[^]]+\]\[0:\d+:\d+\]\[Py\] Ende\n")


if __name__ == "__main__":
    unittest.main(verbosity=2)
