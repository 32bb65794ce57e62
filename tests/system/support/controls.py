"""Switches and number boxes."""

from support.accessible import Node
from support.panel import Panel


def spin_box(program: Panel, name: str) -> Node:
    """Waits for that box."""
    return program.wait_until_shown(name, "spin button")


def is_on(program: Panel, name: str) -> bool:
    """Waits for that switch; whether it is on."""
    return program.wait_until_shown(name, "check box").checked
