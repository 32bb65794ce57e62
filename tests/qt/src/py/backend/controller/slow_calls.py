"""Stays in its functions until the test asks for a page."""

import os
import threading

from brovik.gui import PageEnum

from controller.telling import tell, wait_for_page


def init(_debug: bool) -> None:
    """Waits if it is to."""
    if "TEST_SLOW_INIT" in os.environ:
        wait_for_page(PageEnum.Chart)
    tell("threads", threading.active_count())


def sensor_value_from_cpp(_sensor: object, state: bool) -> None:
    """Waits if the input is on."""
    tell("entered")
    if state:
        wait_for_page(PageEnum.Chart)
    tell("left")
