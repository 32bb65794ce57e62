"""Puts the demo machine's backend on the search path, as the host does with a backend's directory.

Behind it comes what its tests have in common.
"""

import sys
from pathlib import Path

DEMO = Path(__file__).resolve().parents[2] / "demo"
sys.path[:0] = [str(DEMO), str(DEMO / "tests" / "backend")]
sys.dont_write_bytecode = True
