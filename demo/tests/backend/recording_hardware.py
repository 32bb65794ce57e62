"""A machine that does what it should, and remembers what it was told."""

from collections.abc import Set
from dataclasses import replace

from controller.process.hardware import Readings
from controller.process.outputs import Output
from controller.process.recipe import Electrolyte

#: What flows in through a valve while the pump runs: its conductivity, mS/cm.
MEDIA = {Output.MV_KALT: 0.5, Output.MV_HEISS: 0.6, Output.MV_LAUGE_IN: 58.0, Output.MV_SAURE_IN: 19.0}
GASES = frozenset({Output.MV_LUFT, Output.MV_CO2, Output.MV_STEAM})
OUTLETS = frozenset({Output.MV_KANAL, Output.MV_LAUGE_OUT, Output.MV_SAURE_OUT})


class RecordingHardware:
    """Each change of the outputs is one entry of the record, and so is each event."""

    def __init__(self) -> None:
        self.record: list[str] = []
        self.readings = Readings(0.0, 0.0, 55.0, level_reached=True)  # bar, mS/cm, °C
        self._on: Set[Output] = frozenset()

    def exchange(self, dt: float, on: Set[Output]) -> Readings:
        """A gas fills the barrel at 0.05 bar/s, or dries the sensor on its way out."""
        if on != self._on:
            self.record.append(" ".join(output.name for output in Output if output in on))
        self._on, old = on, self.readings
        pressure = 0.0 if OUTLETS & on else old.pressure + (0.05 * dt if GASES & on else 0.0)
        dried = 0.0 if GASES & on and OUTLETS & on else old.conductivity
        flowing = [MEDIA[output] for output in MEDIA.keys() & on if Output.PUMPE in on]
        self.readings = replace(old, pressure=pressure, conductivity=flowing[0] if flowing else dried)
        return self.readings

    def all_off(self) -> None:
        """Records."""
        self.record.append("all off")

    def run_started(self, resumed: bool) -> None:
        """Records."""
        self.record.append(f"run started, resumed: {resumed}")

    def bath_test_started(self, electrolyte: Electrolyte, set_point: float) -> None:
        """Records."""
        self.record.append(f"test of {electrolyte.name} started, {set_point} mS/cm")

    def job_ended(self) -> None:
        """Records."""
        self.record.append("job ended")

    def tick_ended(self) -> None:
        """Has nothing to show."""
