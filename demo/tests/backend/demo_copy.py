"""A copy of the demo machine's backend without the simulation, on the search path in place of it."""

import atexit
import shutil
import sys
import tempfile
from pathlib import Path

DEMO = Path(__file__).resolve().parents[2]
COPY = Path(tempfile.mkdtemp(prefix="kubelor-demo-copy-"))

atexit.register(shutil.rmtree, COPY, ignore_errors=True)
for name in ("controller", "logbook", "package_source"):
    shutil.copytree(DEMO / name, COPY / name, ignore=shutil.ignore_patterns("simulation", "__pycache__"))
shutil.copy(DEMO / "networks.json", COPY)
sys.path.insert(0, str(COPY))
sys.dont_write_bytecode = True
