"""`kubelor-demo --make-stubs` for a backend that knows nothing of it."""

import os
import subprocess
import tempfile
import unittest
from pathlib import Path

import brovik

PROGRAM = os.environ["KUBELOR_DEMO"]
PACKAGE = Path(str(brovik.__file__)).parent
PATIENCE = 60


class MakeStubsTest(unittest.TestCase):
    """From a folder of one's own."""

    def setUp(self) -> None:
        # addCleanup() ends it with the test.
        directory = tempfile.TemporaryDirectory()  # pylint: disable=consider-using-with
        self.addCleanup(directory.cleanup)
        self.folder = Path(directory.name)
        backend = self.folder / "mine" / "controller"
        backend.mkdir(parents=True)
        (backend / "__init__.py").write_text(
            "import os, sys\n"
            "print('imported', os.environ['BROVIK_MAKE_PY_STUBS'])\n"
            "print('left behind', [path for path in sys.path if 'tools' in path], 'tools' in sys.modules)\n",
            encoding="utf-8",
        )

    def make_stubs(self, *arguments: str) -> subprocess.CompletedProcess[str]:
        """Runs the program to its end."""
        return subprocess.run(
            [PROGRAM, "--make-stubs", *arguments],
            cwd=self.folder,
            env={
                "HOME": str(self.folder),
                "PATH": "",
                "QT_QPA_PLATFORM": "offscreen",
                "KUBELOR_DEMO_BACKEND": "mine",
            },
            capture_output=True,
            encoding="utf-8",
            timeout=PATIENCE,
            check=False,
        )

    def assert_written(self, run: subprocess.CompletedProcess[str], folder: str) -> None:
        """All files are told and there, and say what those of the package say; the backend is imported."""
        self.assertEqual(run.returncode, 0, run.stderr)
        *told, imported, left = run.stdout.splitlines()
        written = [str(path.relative_to(self.folder)) for path in (self.folder / folder).rglob("*.*")]
        self.assertEqual(sorted(told), sorted(written))
        self.assertEqual((imported, left), ("imported 1", "left behind [] False"))
        stubs = list(PACKAGE.glob("*.pyi"))
        self.assertGreater(len(stubs), 1)
        for stub in stubs:
            if not stub.name.startswith("_k"):
                self.assertEqual(
                    (self.folder / folder / "brovik" / stub.name).read_bytes(), stub.read_bytes(), stub.name
                )

    def test_beside_the_backend(self) -> None:
        """Without a folder they go where the backend is."""
        self.assert_written(self.make_stubs(), "mine/stubs")

    def test_into_a_folder(self) -> None:
        """Behind the bare dash stands where they are to go."""
        self.assert_written(self.make_stubs("-", "types/of/the/host"), "types/of/the/host")

    def test_where_nothing_can_be_written(self) -> None:
        """A plain sentence, and the code says so, too."""
        (self.folder / "file").touch()
        run = self.make_stubs("-", "file")
        self.assertEqual((run.returncode, run.stdout), (1, ""))
        self.assertIn(
            "\nDie Stub-Dateien ließen sich nicht schreiben. file/brovik: Not a directory\n", run.stderr
        )

    def test_more_than_one_folder(self) -> None:
        """Nothing is written."""
        run = self.make_stubs("-", "a", "b")
        self.assertEqual((run.returncode, run.stdout), (1, ""))
        self.assertIn("\n--make-stubs nimmt nur einen Ordner, nicht 2.\n", run.stderr)
        self.assertEqual([path.name for path in self.folder.glob("[ab]")], [])


if __name__ == "__main__":
    unittest.main()
