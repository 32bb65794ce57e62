"""A backend for tests: the environment variable TEST_BACKEND names the module that plays it."""

import importlib
import os

_PLAYED = importlib.import_module("controller." + os.environ["TEST_BACKEND"])
globals().update({name: value for name, value in vars(_PLAYED).items() if not name.startswith("_")})
