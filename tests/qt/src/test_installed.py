"""The programs as `cmake --install` puts them: test_installed.py <cmake> <build directory>."""

import shutil
import subprocess
import sys
import tempfile
import unittest
from pathlib import Path

CMAKE, BUILD = sys.argv[1:3]
del sys.argv[1:3]
PATIENCE = 100


class InstalledTest(unittest.TestCase):
    """A tree of its own, in a place that the build knows nothing of."""

    prefix: Path

    @classmethod
    def setUpClass(cls) -> None:
        folder = tempfile.mkdtemp()
        cls.addClassCleanup(shutil.rmtree, folder)
        cls.prefix = Path(folder)
        command = [CMAKE, "--install", BUILD, "--prefix", str(cls.prefix)]
        subprocess.run(command, check=True, capture_output=True)

    def run_program(self, name: str, *arguments: str) -> subprocess.CompletedProcess[str]:
        """Runs an installed program to its end."""
        return subprocess.run(
            [self.prefix / "bin" / name, *arguments],
            capture_output=True,
            encoding="utf-8",
            env={"HOME": str(self.prefix), "PATH": "", "QT_QPA_PLATFORM": "offscreen"},
            timeout=PATIENCE,
            check=False,
        )

    def test_programs(self) -> None:
        """Both are there and tell the same version."""
        for name in ("kubelor", "kubelor-demo"):
            run = self.run_program(name, "--version")
            self.assertEqual((run.returncode, run.stdout.split()[0]), (0, "Kubelor"))

    def test_demo_machine(self) -> None:
        """The demo finds the backend that was installed with it, and writes its stubs there."""
        demo = self.prefix / "share/kubelor/demo"
        stubs = demo / "stubs/brovik/gui.pyi"
        before = stubs.read_text(encoding="utf-8")
        stubs.unlink()
        run = self.run_program("kubelor-demo", "--make-stubs")
        self.assertEqual(run.returncode, 0, run.stderr)
        self.assertIn(f"] BROVIK_PY_DIR: {demo}\n", run.stderr)
        self.assertEqual(stubs.read_text(encoding="utf-8"), before)

    def test_what_is_left_out(self) -> None:
        """Neither tests nor what Python leaves behind; manuals are there."""
        files = {str(path.relative_to(self.prefix)) for path in self.prefix.rglob("*") if path.is_file()}
        self.assertIn("share/doc/kubelor/bedienung.md", files)
        # The tests of the template are those of the backends that are made of it.
        own = [name for name in files if "/template/" not in name]
        self.assertEqual([name for name in own if "/tests/" in name or "CMakeLists" in name], [])

    def test_kit_for_backends(self) -> None:
        """The tool writes and checks a backend, and finds what was installed with it."""
        packages = self.prefix / "lib/python3/dist-packages"
        environment = {"HOME": str(self.prefix), "PATH": "", "PYTHONPATH": str(packages)}
        folder = tempfile.mkdtemp()
        self.addCleanup(shutil.rmtree, folder)
        mine = Path(folder) / "mine"
        for arguments, told in (
            (("new", mine), f"Next: kubelor-backend check {mine}\n"),
            (("check", mine), "No fault found.\n"),
        ):
            with self.subTest(arguments[0]):
                run = subprocess.run(
                    [sys.executable, "-B", self.prefix / "bin/kubelor-backend", *arguments],
                    capture_output=True,
                    encoding="utf-8",
                    env=environment,
                    timeout=PATIENCE,
                    check=False,
                )
                self.assertEqual((run.returncode, run.stderr), (0, ""), run.stdout)
                self.assertTrue(run.stdout.endswith(told), run.stdout)
        self.assertTrue((packages / "brovik/py.typed").exists())


if __name__ == "__main__":
    unittest.main(verbosity=2)
