"""What the machine does. Here it rinses: the pump runs for a while. Replace it by your own process."""

from brovik.actuator import Actuator, ActuatorEnum
from brovik.auto import Auto
from brovik.gui import Gui
from brovik.settings import SettingsValues


class Process:
    """The run and the outputs. Belongs to the machine's thread, but for `outputs_off`."""

    def __init__(self) -> None:
        #: How long the run has lasted, seconds.
        self._passed = 0.0

    def advance(self, seconds: float) -> None:
        """Lets so much time pass."""
        if not Auto.active:
            return
        self._passed += seconds
        Actuator.pumpe.state = True
        share = min(self._passed / SettingsValues.secs_pump, 1.0)
        Auto.progress, Auto.progress_str = int(100 * share), f"{100 * share:.0f} %"
        if share >= 1.0:
            self._end("Fertig")

    def toggle_run(self) -> None:
        """The operator starts the run or aborts it."""
        if Auto.active:
            self._end("Abgebrochen")
            return
        self._passed = 0.0
        Auto.progress, Auto.progress_str = 0, "0 %"
        Auto.active = True
        Gui.status = "Spülen"

    def toggle_output(self, enum: ActuatorEnum) -> None:
        """The operator switches an output by hand; not during a run, and not one that is blocked."""
        dout = Actuator.dout_from_enum(enum)
        if dout is not None and not dout.blocked and not Auto.active:
            dout.state = not dout.state

    def halt(self) -> None:
        """An error does not let the run go on."""
        self._end("Fehler")

    def _end(self, status: str) -> None:
        self.outputs_off()
        Auto.active = False
        Gui.status = status

    @staticmethod
    def outputs_off() -> None:
        """Any thread."""
        for dout in Actuator.all_douts:
            dout.state = False
