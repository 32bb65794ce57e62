"""Stays in an entry function until the test asks for a page."""

from brovik.gui import PageEnum

from controller.telling import tell, wait_for_page


def actuator_toggle_from_cpp(_output: object) -> None:
    """Waits."""
    tell("entered")
    wait_for_page(PageEnum.Chart)
    tell("left")
