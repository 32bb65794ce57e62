"""Has an entry function that is none."""

# pylint: disable=wildcard-import,unused-wildcard-import
from controller.recording import *

chart_action_from_cpp = 5
