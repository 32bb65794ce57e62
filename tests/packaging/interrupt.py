"""interrupt.py N PROGRAM ARGUMENT...: runs a Python program, and kills it before its Nth deed outside."""

import os
import runpy
import signal
import sys

OUTSIDE = {"os.chmod", "os.mkdir", "os.remove", "os.rename", "os.rmdir", "subprocess.Popen"}
steps = iter(range(1, int(sys.argv[1])))


def count(event: str, arguments: tuple[object, ...]) -> None:
    """Python tells of everything that it does."""
    writes = event == "open" and isinstance(arguments[2], int) and arguments[2] & (os.O_WRONLY | os.O_RDWR)
    if (event in OUTSIDE or writes) and next(steps, None) is None:
        os.kill(os.getpid(), signal.SIGKILL)


program = sys.argv[2]
sys.argv = sys.argv[2:]
sys.dont_write_bytecode = True
sys.addaudithook(count)
runpy.run_path(program, run_name="__main__")
