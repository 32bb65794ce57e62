"""The backend of the demo machine."""

from brovik.gui import Gui


def init(_debug: bool) -> None:
    """Starts the demo machine."""
    Gui.status = "Demo-Maschine bereit"
