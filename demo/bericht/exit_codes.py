"""With what the program ends."""

from typing import Final

OK: Final = 0
BROKEN: Final = 1
USAGE: Final = 2
UNREADABLE: Final = 3
UNWRITABLE: Final = 4
INTERRUPTED: Final = 130
