"""What the Debian packages are made of, and those made of this build."""

import os
import re
import shutil
import subprocess
import tempfile
import unittest
from pathlib import Path

ROOT = Path(__file__).parents[2]
BUILD = Path(os.environ["KUBELOR_BUILD"])
PACKAGING = ROOT / "packaging"

# Added and removed by hand: a change of the sources that needs another package shows here.
RUNTIME_PACKAGES = {
    "libqt6gui6",
    "libqt6svg6",
    "qml6-module-qt-labs-folderlistmodel",
    "qml6-module-qt-labs-qmlmodels",
    "qml6-module-qt-labs-settings",
    "qml6-module-qt5compat-graphicaleffects",
    "qml6-module-qtcharts",
    "qml6-module-qtqml",
    "qml6-module-qtqml-models",
    "qml6-module-qtqml-workerscript",
    "qml6-module-qtquick",
    "qml6-module-qtquick-controls",
    "qml6-module-qtquick-layouts",
    "qml6-module-qtquick-templates",
    "qml6-module-qtquick-virtualkeyboard",
    "qml6-module-qtquick-window",
    "qt6-virtualkeyboard-plugin",
    "qt6-wayland",
}

PROGRAMS = {
    "kubelor": BUILD / "qt/src/kubelor",
    "kubelor-backend": ROOT / "kit/kubelor-backend",
    "kubelor-bericht": ROOT / "demo/bericht/kubelor-bericht",
}


def output(*command: str | Path) -> str:
    """What a command prints that comes to a good end."""
    environment = os.environ | {"LC_ALL": "C.UTF-8", "QT_QPA_PLATFORM": "offscreen"}
    done = subprocess.run(command, env=environment, capture_output=True, text=True, check=False)
    if done.returncode != 0:
        raise AssertionError(f"{command}:\n{done.stdout}{done.stderr}")
    return done.stdout + done.stderr


def options(text: str) -> set[str]:
    """The long options that a text names."""
    return set(re.findall(r"(?<![\w-])--[a-z][a-z-]+", text))


def field(name: str) -> str:
    """A field of the source package."""
    found = re.search(rf"^{name}:(.*\n(?: .*\n)*)", (PACKAGING / "debian/control").read_text("utf-8"), re.M)
    assert found
    return found[1]


class DescriptionsTest(unittest.TestCase):
    """Files that are installed as they are."""

    def test_desktop_entries(self) -> None:
        """They follow the standard."""
        for entry in sorted(PACKAGING.glob("desktop/*.desktop")):
            with self.subTest(entry.name):
                self.assertEqual(output("desktop-file-validate", entry), "")

    def test_manuals(self) -> None:
        """They are formatted without a complaint."""
        for page in sorted(PACKAGING.glob("man/*")):
            with self.subTest(page.name):
                command = ["man", "--warnings", "--encoding=UTF-8", "--local-file", str(page)]
                done = subprocess.run(command, capture_output=True, text=True, check=False)
                self.assertEqual((done.returncode, done.stderr), (0, ""))

    def test_manuals_name_all_options(self) -> None:
        """Those of the program's own help, and no others."""
        for name, program in PROGRAMS.items():
            with self.subTest(name):
                helps = output(program, "--help")
                for command in re.findall(r"^    (\w+)  ", helps, re.M):
                    helps += output(program, command, "--help")
                page = (PACKAGING / f"man/{name}.1").read_text("utf-8").replace(r"\-", "-")
                # What Qt adds is the same for all of its programs.
                self.assertEqual(
                    options(page) | {"--help", "--help-all"}, options(helps) | {"--help", "--help-all"}
                )


class DependenciesTest(unittest.TestCase):
    """What no linker sees."""

    def test_runtime_packages(self) -> None:
        """Modules and plug-ins are those of these packages, for which a build has to ask."""
        found = set(output(PACKAGING / "runtime_packages.py").strip().split(", "))
        self.assertEqual(found, RUNTIME_PACKAGES)
        asked = {line.strip(" ,") for line in field("Build-Depends").splitlines()}
        self.assertEqual(found - {"libqt6gui6"} - asked, set())

    def test_missing_modules(self) -> None:
        """What is not installed is told, not left out."""
        command = [str(PACKAGING / "runtime_packages.py"), "none-linux-gnu"]
        done = subprocess.run(command, capture_output=True, text=True, check=False)
        self.assertEqual((done.returncode, done.stdout), (1, ""))
        self.assertIn("no QML module is installed in /usr/lib/none-linux-gnu/qt6/qml", done.stderr)


class PackagesTest(unittest.TestCase):
    """The packages of what this build folder holds."""

    packages: Path

    @classmethod
    def setUpClass(cls) -> None:
        folder = tempfile.mkdtemp()
        cls.addClassCleanup(shutil.rmtree, folder)
        cls.packages = Path(folder)
        output(ROOT / "scripts/package", "--built", BUILD, "--output", folder)

    def package(self, name: str) -> Path:
        """The file of a package."""
        return next(self.packages.glob(f"{name}_*.deb"))

    def test_lintian(self) -> None:
        """No error and no warning."""
        changes = next(self.packages.glob("*.changes"))
        said = output("lintian", "--fail-on", "error,warning", "--allow-root", changes)
        self.assertNotRegex(said, r"(?m)^[EW]: ")

    def test_version(self) -> None:
        """It is that of the program."""
        version = output("dpkg-deb", "--field", self.package("kubelor"), "Version").strip()
        self.assertTrue(output(PROGRAMS["kubelor"], "--version").startswith(f"Kubelor {version}\n"))

    def test_runtime_dependencies(self) -> None:
        """Both programs ask for what they load."""
        for name in ("kubelor", "kubelor-demo"):
            with self.subTest(name):
                depends = output("dpkg-deb", "--field", self.package(name), "Depends")
                names = {part.split()[0] for part in depends.split(", ")}
                self.assertEqual(RUNTIME_PACKAGES - names, set())

    def test_owners_things(self) -> None:
        """No package holds, and no script touches, what belongs to the owner of the machine."""
        for package in sorted(self.packages.glob("*.deb")):
            with self.subTest(package.name), tempfile.TemporaryDirectory() as folder:
                output("dpkg-deb", "--raw-extract", package, folder)
                found = {str(path.relative_to(folder)) for path in Path(folder).rglob("*")}
                self.assertEqual(
                    {name for name in found if re.match(r"opt|home|root|var|tmp|srv", name)}, set()
                )
                for script in Path(folder, "DEBIAN").glob("p*"):
                    self.assertNotRegex(script.read_text("utf-8"), r"/opt/brovik|/var/lib/kubelor|\.config")


if __name__ == "__main__":
    unittest.main()
