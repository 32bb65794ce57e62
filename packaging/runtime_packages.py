#!/usr/bin/python3
"""Prints the Debian packages that Kubelor loads at run time and no linker sees: QML modules, plug-ins of Qt.

runtime_packages.py [MULTIARCH], where MULTIARCH is the triplet of the architecture, that of this machine if
not given. The modules are those that the sources import, with what these import in turn; they have to be
installed. The answer is one line as the field Depends takes it.
"""

import argparse
import json
import subprocess
import sys
from collections.abc import Iterable
from pathlib import Path
from typing import Final

ROOT: Final = Path(__file__).resolve().parents[1]
#: Where the program's own QML is.
SOURCES: Final = ("main", "qt")
SCANNER: Final = "/usr/lib/qt6/libexec/qmlimportscanner"

#: Loaded by Qt itself: pictures, the compositor's protocol, the keyboard on the screen.
PLUGINS: Final = (
    "iconengines/libqsvgicon.so",
    "imageformats/libqsvg.so",
    "platforminputcontexts/libqtvirtualkeyboardplugin.so",
    "platforms/libqoffscreen.so",
    "platforms/libqwayland-egl.so",
    "platforms/libqwayland-generic.so",
    "platforms/libqxcb.so",
    "wayland-shell-integration/libxdg-shell.so",
)

#: What modules of Qt import and what is never loaded here: styles of other systems, the sound of the
#: keyboard, the marking of table cells.
UNUSED: Final = frozenset(
    {
        "QtMultimedia",
        "QtQuick.Controls.Windows",
        "QtQuick.Controls.iOS",
        "QtQuick.Controls.macOS",
        "QtQuick.Shapes",
    }
)


class NotInstalled(Exception):
    """Something that is needed at run time is not there, so nobody can tell its package."""


def main() -> int:
    """Prints the packages. 1 if something that is needed is not installed."""
    parser = argparse.ArgumentParser(description=__doc__.partition("\n")[0] if __doc__ else None)
    parser.add_argument("multiarch", nargs="?", metavar="MULTIARCH", help="triplet of the architecture")
    installed = Path("/usr/lib", parser.parse_args().multiarch or _own_multiarch(), "qt6")
    try:
        files = _module_files(installed / "qml") | {installed / "plugins" / name for name in PLUGINS}
        print(", ".join(packages_of(files)))
    except NotInstalled as error:
        print(f"runtime_packages: {error}", file=sys.stderr)
        return 1
    return 0


def _own_multiarch() -> str:
    command = ["dpkg-architecture", "--query", "DEB_HOST_MULTIARCH"]
    return subprocess.run(command, check=True, stdout=subprocess.PIPE, text=True).stdout.strip()


def _module_files(import_path: Path) -> set[Path]:
    """The descriptions of all modules that the sources need."""
    if not import_path.is_dir():
        raise NotInstalled(f"no QML module is installed in {import_path}")
    command = [SCANNER, "-importPath", str(import_path)]
    for folder in SOURCES:
        command += ["-rootPath", str(ROOT / folder)]
    answer = subprocess.run(command, check=True, stdout=subprocess.PIPE)
    modules = [found for found in json.loads(answer.stdout) if found["type"] == "module"]
    own = _own_modules()
    missing = sorted({found["name"] for found in modules if "path" not in found} - own - UNUSED)
    if missing:
        raise NotInstalled(f"the QML modules {', '.join(missing)} are not in {import_path}")
    return {Path(found["path"], "qmldir") for found in modules if "path" in found}


def _own_modules() -> set[str]:
    """The program's: that of the window, and one for each folder that describes one."""
    return {"main"} | {f"brovik.{path.parent.name}" for path in ROOT.glob("qt/brovik/*/CMakeLists.txt")}


def packages_of(files: Iterable[Path]) -> list[str]:
    """The packages that these files are of, sorted."""
    command = ["dpkg-query", "--search", *map(str, files)]
    answer = subprocess.run(command, check=False, capture_output=True, text=True)
    if answer.returncode != 0:
        raise NotInstalled(answer.stderr.strip())
    # package:architecture: file
    return sorted({line.split(":", 1)[0] for line in answer.stdout.splitlines()})


if __name__ == "__main__":
    sys.exit(main())
