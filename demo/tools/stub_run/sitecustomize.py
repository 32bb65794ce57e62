"""What `kubelor-demo --make-stubs` has Python do at its start: it writes the stub files, for any backend.

Python imports this module by itself, for the folder is on its path.
"""

import os
import sys
from pathlib import Path

_HERE = Path(__file__).resolve().parent


def _leave_the_path() -> None:
    paths = os.environ.get("PYTHONPATH", "").split(os.pathsep)
    os.environ["PYTHONPATH"] = os.pathsep.join(path for path in paths if path != str(_HERE))
    sys.path[:] = [path for path in sys.path if path != str(_HERE)]


def _write() -> int:
    demo = str(_HERE.parents[1])
    sys.path.insert(0, demo)
    try:
        # Only now are they on the path.
        from tools.stub_run import main  # pylint: disable=import-outside-toplevel

        return main(sys.argv[1:])
    finally:
        sys.path.remove(demo)
        # A backend may have a package of that name.
        for name in [name for name in sys.modules if name.partition(".")[0] == "tools"]:
            del sys.modules[name]


_leave_the_path()
_code = _write()
for _stream in (sys.stdout, sys.stderr):
    _stream.flush()
if _code:
    # No way but this one to end the program with a code, and nothing has begun yet.
    os._exit(_code)  # pylint: disable=protected-access  # it is a function of the library
