"""`kubelor-backend check`: whether the program can work with a backend."""

import importlib.util
import json
import os
import signal
import subprocess
import sys
import tempfile
from collections.abc import Iterator
from pathlib import Path
from typing import Final

from .places import environment, python_path

#: For everything that runs in the backend, seconds.
PATIENCE_SECS: Final = 30.0

#: Fits if the functions take what the program hands over.
_TEN_FUNCTIONS: Final = """\
import controller
from brovik.testing import Backend

CONTROLLER: Backend = controller
"""


def check_backend(folder: Path, patience: float = PATIENCE_SECS, types: bool = True) -> bool:
    """Prints what is found in plain sentences. With `types` mypy looks as well. True if there is no fault."""
    if not (folder / "controller" / "__init__.py").exists() and not (folder / "controller.py").exists():
        print(f"{folder} has no package controller.")
        return False
    faults = list(_run(folder.resolve(), patience))
    if types:
        faults += _types(folder.resolve())
    for fault in faults:
        print(fault)
    if not faults:
        print("No fault found.")
    return not faults


def _run(folder: Path, patience: float) -> Iterator[str]:
    """Runs the backend in a process of its own, and gives the faults."""
    with tempfile.TemporaryDirectory() as directory:
        report = Path(directory) / "report"
        report.touch()
        command = [sys.executable, "-m", "kubelor_backend.inside", str(report)]
        kept = {"BROVIK_CONFIG_DIR": os.path.join(directory, "config")}
        with subprocess.Popen(
            command,
            cwd=folder,
            env=environment(folder) | kept,
            stdout=subprocess.PIPE,
            stderr=subprocess.STDOUT,
            encoding="utf-8",
            errors="replace",
        ) as process:
            try:
                output, _ = process.communicate(timeout=patience)
                late = False
            except subprocess.TimeoutExpired:
                process.kill()
                output, _ = process.communicate()
                late = True
        entries = [json.loads(line) for line in report.read_text(encoding="utf-8").splitlines()]
    yield from _judge(entries, process.returncode, patience if late else None, output)


def _judge(entries: list[dict[str, str]], code: int, waited: float | None, output: str) -> Iterator[str]:
    begun = [entry["begin"] for entry in entries if "begin" in entry] or ["the start of Python"]
    for entry in entries:
        if "remark" in entry:
            print(f"Remark: {entry['remark']}")
    faults = [entry["fault"] for entry in entries if "fault" in entry]
    yield from faults
    if waited is not None:
        yield f"{begun[-1]} did not come to its end within {waited:g} s."
    elif code < 0:
        yield f"{begun[-1]} ended the process with {signal.Signals(-code).name}."
    elif code > 0:
        yield f"{begun[-1]} ended the process with code {code}."
    elif not faults and begun[-1] != "the end of Python":
        yield f"{begun[-1]} ended the process."
    else:
        return
    if not faults:
        yield "The last lines of its output:\n" + "\n".join(f"  {line}" for line in output.splitlines()[-15:])


def _types(folder: Path) -> Iterator[str]:
    """The types, if there is something to check them with."""
    if importlib.util.find_spec("mypy") is None:
        print("Remark: mypy is not installed, so the types were not checked.")
        return
    target = "controller" if (folder / "controller").is_dir() else "controller.py"
    with tempfile.TemporaryDirectory() as directory:
        functions = Path(directory) / "ten_functions.py"
        functions.write_text(_TEN_FUNCTIONS, encoding="utf-8")
        checked = subprocess.run(
            [sys.executable, "-m", "mypy", "--strict", "--cache-dir", directory, target, str(functions)],
            cwd=folder,
            env=os.environ | {"MYPYPATH": str(python_path())},
            capture_output=True,
            encoding="utf-8",
            check=False,
        )
    if checked.returncode != 0:
        yield f"The types do not fit:\n{(checked.stdout + checked.stderr).rstrip()}"
