#!/usr/bin/python3
"""A whole cleaning on the demo machine by an operator who takes pictures: demo_run.py <folder>."""

import sys
from pathlib import Path

from support import panel
from support.album import Album
from support.automatic import ABORT, START, progress
from support.desktop import Desktop
from support.look import go_to_theme
from support.panel import Panel

# The demo machine cleans a barrel in some ten minutes.
_TIME_FACTOR = 20
_RUN_DEADLINE_SECS = 300.0
STOPS = (5, 30, 60, 90)


def _take_both_themes(program: Panel, album: Album, name: str) -> None:
    for theme, dark in (("dunkel", True), ("hell", False)):
        go_to_theme(program, dark)
        album.take_moving(f"{name}-{theme}", program.window)


def run_cleaning(program: Panel, album: Album) -> None:
    """Starts a run by hand and stays with it to its end. AssertionError if it does not reach 100 %."""
    _take_both_themes(program, album, "bereit")
    program.press_and_hold(START)
    program.wait_until_shown(ABORT)
    for stop in STOPS:
        program.wait_for(f"{stop} %", lambda: progress(program) >= stop, _RUN_DEADLINE_SECS)
        _take_both_themes(program, album, f"reinigung-{stop}-prozent")
    program.wait_until_shown("100 %", deadline=_RUN_DEADLINE_SECS)
    program.wait_until_shown(START)
    _take_both_themes(program, album, "fertig")


def main() -> int:
    """Gives the exit code."""
    with Desktop(), panel.demo(_TIME_FACTOR) as program:
        program.wait_until_shown(START)
        try:
            run_cleaning(program, Album(Path(sys.argv[1])))
        except AssertionError as error:
            print(f"The run did not reach its end: {error}", file=sys.stderr)
            return 1
        print("The run reached 100 %.")
        return program.close()


if __name__ == "__main__":
    sys.exit(main())
