"""Lacks an entry function."""

# pylint: disable=wildcard-import,unused-wildcard-import
from controller.recording import *

del wifi_action_from_cpp
