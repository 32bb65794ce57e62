"""Makes states of threads: one at the start, one in an exit function that runs after those of the host."""

import atexit

# A module of the test that runs this.
import _thread_state  # pylint: disable=import-error  # only there

_thread_state.make()
atexit.register(_thread_state.make)
