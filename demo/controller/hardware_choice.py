"""The hardware that the backend drives. For a machine of your own, this is the place to change."""

from dataclasses import dataclass, field
from typing import Final

from .process.hardware import Hardware
from .simulator_window import NoSimulatorWindow, SimulatorWindow

NO_HARDWARE: Final = (
    "Es ist keine Hardware gewählt: Den Ordner controller/simulation gibt es nicht, "
    "und controller/hardware_choice.py nennt keine andere."
)


@dataclass(frozen=True)
class HardwareChoice:
    """The hardware, and who takes what is played in the simulator's window."""

    hardware: Hardware
    window: SimulatorWindow = field(default_factory=NoSimulatorWindow)


def choose_hardware() -> HardwareChoice:
    """Called once, in `init`. An exception is shown to the operator, and the machine stays off."""
    # With a machine of your own: return HardwareChoice(YourHardware()), and delete what follows.
    return _simulation()


def _simulation() -> HardwareChoice:
    try:
        # Only here, for all else works without that folder.
        from .simulation.hardware import SimulatedHardware  # pylint: disable=import-outside-toplevel
    except ModuleNotFoundError as error:
        if str(error.name).startswith(f"{__package__}.simulation"):
            raise RuntimeError(NO_HARDWARE) from error
        raise
    simulated = SimulatedHardware.from_environment()
    return HardwareChoice(simulated, simulated)
