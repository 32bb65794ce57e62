"""A backend for tests, played by the module that the environment variable TEST_BACKEND names.

The module holds what is special about its backend, and LACKING names what its backend does
not have; the rest is that of `recording`.
"""

import importlib
import os
from types import ModuleType
from typing import Any

from controller import recording


def _public(module: ModuleType) -> dict[str, Any]:
    return {name: value for name, value in vars(module).items() if not name.startswith("_")}


_PLAYED = importlib.import_module("controller." + os.environ["TEST_BACKEND"])
globals().update(_public(recording) | _public(_PLAYED))
for _name in getattr(_PLAYED, "LACKING", ()):
    del globals()[_name]
