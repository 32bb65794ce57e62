"""What `kubelor-backend run` has the Python of the demo program do at its start: it opens the shell.

Python imports this module by itself, for the folder is on its path. Programs that the backend starts do not.
"""

import importlib.util
import os
import sys
from pathlib import Path

_HERE = Path(__file__).resolve().parent


def _leave_the_path() -> None:
    paths = os.environ.get("PYTHONPATH", "").split(os.pathsep)
    os.environ["PYTHONPATH"] = os.pathsep.join(path for path in paths if path != str(_HERE))
    sys.path[:] = [path for path in sys.path if path != str(_HERE)]


def _open_shell() -> None:
    spec = importlib.util.spec_from_file_location("kubelor_shell_server", _HERE.parent / "shell_server.py")
    if spec is None or spec.loader is None:
        return
    server = importlib.util.module_from_spec(spec)
    sys.modules[spec.name] = server
    spec.loader.exec_module(server)
    server.serve()


_leave_the_path()
# Nothing but the demo program, whoever has set the path.
if Path(os.readlink("/proc/self/exe")).name == "kubelor-demo":
    _open_shell()
