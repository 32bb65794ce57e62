"""Units of the backend that need no host.

The package's own start needs the host, so a bare package stands in for it here. A unit that turns
out to need `brovik` fails to import.
"""

import sys
from pathlib import Path
from types import ModuleType

_PACKAGE = ModuleType("controller")
_PACKAGE.__path__ = [str(Path(__file__).resolve().parents[1] / "controller")]
sys.modules.setdefault("controller", _PACKAGE)
