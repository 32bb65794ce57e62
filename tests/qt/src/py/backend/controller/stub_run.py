"""Tells what a stub run does to it."""

import os

from controller.telling import tell

tell("stubs at import", os.environ.get("BROVIK_MAKE_PY_STUBS"))
