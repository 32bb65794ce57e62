"""Tells what a stub run does to it."""

# pylint: disable=wildcard-import,unused-wildcard-import
import os

from controller.recording import *
from controller.telling import tell

tell("stubs at import", os.environ.get("BROVIK_MAKE_PY_STUBS"))
