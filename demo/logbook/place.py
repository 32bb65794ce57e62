"""Where the file of the demo machine is."""

import os
from pathlib import Path
from typing import Final

FILE_NAME: Final = "kubelor-demo.sqlite3"
#: The host tells the directory by this variable.
DIRECTORY_VARIABLE: Final = "BROVIK_CONFIG_DIR"
_USUAL: Final = Path("kubelor-demo", "BrovikGmbH")


def usual_path() -> Path:
    """The file in the directory that the host names, else where the host has it if nobody says otherwise."""
    directory = os.environ.get(DIRECTORY_VARIABLE)
    return (Path(directory) if directory else _configuration() / _USUAL) / FILE_NAME


def _configuration() -> Path:
    """The user's directory of settings. The standard has it that a relative one is ignored."""
    told = os.environ.get("XDG_CONFIG_HOME", "")
    return Path(told) if told.startswith("/") else Path.home() / ".config"
