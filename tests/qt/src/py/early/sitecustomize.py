"""Registers an exit function before the host can, so that it runs after those of the host."""

import atexit

# A module of the test that runs this.
import _thread_state  # pylint: disable=import-error  # only there

atexit.register(_thread_state.make)
