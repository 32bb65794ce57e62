"""Where the tool finds what it works with: what is installed, else what was built in the tree around it."""

import importlib.util
import os
import shutil
from pathlib import Path
from typing import Final

_HERE: Final = Path(__file__).resolve().parent
_TREE: Final = _HERE.parents[1]

#: Installed it lies in the package, in the tree beside it.
TEMPLATE: Final = next(path for path in (_HERE / "template", _HERE.parent / "template") if path.exists())

#: What the Python of the demo program imports at its start, to open the shell.
SHELL_SITE: Final = _HERE / "demo_site"


class NotFound(Exception):
    """Something that the tool needs is not there."""


def python_path() -> Path:
    """The folder that the package `brovik` lies in."""
    if found := importlib.util.find_spec("brovik"):
        for folder in found.submodule_search_locations or ():
            if (Path(folder) / "testing.py").exists() and list(Path(folder).glob("__init__.*.so")):
                return Path(folder).parent
    for package in sorted(_TREE.glob("build/*/python/brovik/__init__.*.so")):
        return package.parents[1]
    raise NotFound(
        "The module brovik is not there. Install python3-brovik, or build the target brovik_package."
    )


def demo_program() -> Path:
    """The program that runs a backend on a desk."""
    if named := os.environ.get("KUBELOR_DEMO"):
        return Path(named)
    if installed := shutil.which("kubelor-demo"):
        return Path(installed)
    for built in sorted(_TREE.glob("build/*/qt/src/kubelor-demo")):
        return built
    raise NotFound(
        "The program kubelor-demo is not there. Install kubelor-demo, or build the target of that name."
    )


def environment(folder: Path) -> dict[str, str]:
    """That of a Python which imports the backend in `folder` and the module brovik."""
    paths = [str(folder), str(python_path()), str(_HERE.parent), os.environ.get("PYTHONPATH", "")]
    return os.environ | {"PYTHONPATH": os.pathsep.join(filter(None, paths)), "PYTHONDONTWRITEBYTECODE": "1"}
