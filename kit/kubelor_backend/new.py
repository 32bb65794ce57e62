"""`kubelor-backend new`: writes a small complete backend."""

import re
import shutil
from pathlib import Path

from .places import TEMPLATE


def write_backend(folder: Path) -> list[str]:
    """Fills a folder that is empty or not there yet. Returns the names of the files.

    FileExistsError if there is something in it; ValueError for a name that no Python project can have.
    """
    name = re.sub(r"[^A-Za-z0-9]+", "-", folder.resolve().name).strip("-").lower()
    if not name:
        raise ValueError(f"{folder} gives no name for the project: use letters")
    if folder.exists() and (not folder.is_dir() or any(folder.iterdir())):
        raise FileExistsError(f"{folder} is there already, and not empty")
    shutil.copytree(TEMPLATE, folder, dirs_exist_ok=True, ignore=shutil.ignore_patterns("__pycache__", ".*"))
    for file in (folder / "pyproject.toml", folder / "README.md"):
        file.write_text(file.read_text(encoding="utf-8").replace("@NAME@", name), encoding="utf-8")
    return sorted(str(file.relative_to(folder)) for file in folder.rglob("*") if file.is_file())
