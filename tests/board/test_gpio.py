"""GPIO lines, by the rights that the packages give, and the backend's virtual environment."""

import unittest

import backends
from board_case import PROGRAM, BoardCase

EDGES = 5


class GpioTest(BoardCase):
    """The service may use the chip."""

    def test_edges(self) -> None:
        """The host counts each falling edge on a line that is driven from outside the board."""
        self.board.shell(f"python3 -m venv --without-pip {backends.FOLDER}/venv")
        self.board.set_input(backends.INPUT, True)
        self.put_backend(backends.FOLDER, backends.COUNTS)
        for count in range(1, EDGES + 1):
            self.board.set_input(backends.INPUT, False)
            self.board.set_input(backends.INPUT, True)
            self.board.wait_for(f"{count} edges", lambda: self.status.startswith(f"{count} Flanken"))
        self.evidence(self.status)
        self.assertEqual(self.status, f"{EDGES} Flanken, {backends.FOLDER}/venv")
        self.evidence(self.board.shell("gpioinfo gpiochip0"))

    @property
    def status(self) -> str:
        """What the service tells of itself."""
        return self.board.value(PROGRAM, "StatusText")


if __name__ == "__main__":
    unittest.main()
