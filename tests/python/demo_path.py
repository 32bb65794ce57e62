"""Puts the demo machine's backend on the search path, as the host does with a backend's directory."""

import sys
from pathlib import Path

sys.path.insert(0, str(Path(__file__).resolve().parents[2] / "demo"))
sys.dont_write_bytecode = True
