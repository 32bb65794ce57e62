"""What the demo machine shows only after a start of its own: questions, failures, the simulator."""

from pathlib import Path

from support import desktop, panel
from support.album import Album
from support.automatic import ABORT, START
from support.look import Look
from support.panel import Panel

_INTERRUPTED = "Automatikbetrieb unterbrochen"
_DAMAGED = "Einstellungen"
_FAILED = "Automatikbetrieb"


def after_an_interruption(look: Look, configuration: str) -> Panel:
    """The program with the simulator, in whose configuration a run was left."""
    panel.store_window(Path(configuration), look.stored)
    # Slow enough for the run not to reach its end.
    return panel.demo(1, BROVIK_DEMO_SIMULATOR="1", XDG_CONFIG_HOME=configuration)


def take_interruption(program: Panel, album: Album) -> None:
    """The question whether to go on, and the simulator while the run goes on. The run is left once more."""
    simulator = program.window_titled("Simulator")
    program.wait_until_shown(_INTERRUPTED)
    desktop.activate(program.window)
    album.take("unterbrochener-lauf", program.window)
    program.click("Fortsetzen")
    program.wait_until_shown(ABORT)
    desktop.activate(simulator)
    album.take("simulator", simulator)


def with_damaged_storage(look: Look) -> Panel:
    """The program with a leak, and with a file of the machine that is none."""
    program = panel.demo(20, BROVIK_DEMO_FAULT="leak")
    file = panel.store_window(program.directory, look.stored)
    (file.parent / "kubelor-demo.sqlite3").write_bytes(b"no database " * 100)
    return program


def take_failures(program: Panel, album: Album) -> None:
    """The message of the damaged file, and that of a run that fails."""
    program.wait_until_shown(_DAMAGED)
    album.take("einstellungen-beschaedigt", program.window)
    program.click("OK")
    program.wait_until_gone(_DAMAGED)
    program.press_and_hold(START)
    program.wait_until_shown(_FAILED)
    album.take("automatik-gescheitert", program.window)
    program.click("OK")
    program.wait_until_gone(_FAILED)
