"""Registers an exit function before the host does, so that it runs after the host's: an environment may do so."""

import atexit

import _thread_state  # pylint: disable=import-error  # of the test that runs this

atexit.register(_thread_state.make)
