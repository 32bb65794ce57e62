"""Where the units and scripts of the board are, and how the scripts are run."""

import os
import subprocess
from pathlib import Path

PACKAGING = Path(__file__).parents[2] / "packaging"
UNITS = PACKAGING / "units"


def run_script(script: Path, *arguments: str, **environment: str) -> subprocess.CompletedProcess[str]:
    """Runs a script of the board with these variables besides."""
    return subprocess.run(
        [str(script), *arguments],
        env=os.environ | environment,
        capture_output=True,
        encoding="utf-8",
        timeout=60,
        check=False,
    )
