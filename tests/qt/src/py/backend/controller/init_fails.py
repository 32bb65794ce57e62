"""Fails at its start."""


def init(_debug: bool) -> None:
    """Gives up."""
    raise ValueError("kein Start")
