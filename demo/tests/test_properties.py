"""Rules of the process that hold whatever happens: any order of steps, settings, readings, faults, aborts."""

import unittest
from collections.abc import Iterable

from hypothesis import strategies as st
from hypothesis.stateful import RuleBasedStateMachine, initialize, invariant, precondition, rule

from controller.process import steps
from controller.process.control import Procedure, StepFailed
from controller.process.outputs import Output
from controller.process.recipe import Electrolyte, Equipment
from controller.process.sequence import Progress, Step, steps_for
from controller.simulation.faults import PlantFault

from .rig import HIGHEST, LOWEST, PARAMETERS, Rig
from .safety import longest_secs, never_together, pumps_in_vain, trials

STEPS = 7000
SWITCHES = sorted(key for key, value in PARAMETERS.items() if isinstance(value, bool))
#: Readings of sensors that are sound, or are not.
PRESSURES = (None, -1.0, 0.0, 0.06, 0.7, 3.0, float("nan"))  # bar
CONDUCTIVITIES = (None, 0.0, 0.08, 0.5, 30.0, 100.0, float("nan"))  # mS/cm


class ShakyRig(Rig):
    """A rig whose sensors may show what is not there. None shows what is."""

    shown_pressure: float | None = None
    shown_conductivity: float | None = None

    @property
    def pressure(self) -> float:
        """Pressure in the barrel."""
        return self.plant.pressure if self.shown_pressure is None else self.shown_pressure

    @property
    def conductivity(self) -> float:
        """Conductivity at the sensor."""
        return self.plant.conductivity if self.shown_conductivity is None else self.shown_conductivity


class ProcessMachine(RuleBasedStateMachine):  # pylint: disable=too-many-instance-attributes
    """Somebody who starts steps and breaks them off, while settings, sensors and plant change."""

    def __init__(self) -> None:
        super().__init__()
        self.rig = ShakyRig()
        self.procedure: Procedure | None = None
        self.finished = False
        #: The step under way, the second that it began at and the last one that it may have.
        self.key = ""
        self.begun = self.last = 0.0
        self.pressure = 0.0

    # What is there from the beginning.

    @initialize(
        legacy=st.booleans(),
        steam=st.booleans(),
        steam_pressure=st.booleans(),
        level_switch=st.booleans(),
        lengthening=st.sampled_from((1.0, 2.5)),
        faults=st.frozensets(st.sampled_from(PlantFault), max_size=2),
        quick=st.booleans(),
    )
    def build(  # pylint: disable=too-many-arguments
        self,
        legacy: bool,
        steam: bool,
        steam_pressure: bool,
        level_switch: bool,
        lengthening: float,
        faults: frozenset[PlantFault],
        quick: bool,
    ) -> None:
        """A machine with a barrel."""
        equipment = Equipment(legacy, steam, steam_pressure, level_switch)
        self.rig = ShakyRig(*faults, equipment=equipment, steam=steam, lengthening=lengthening)
        self.rig.plant.connect_new_barrel()
        if quick:
            vars(self.rig.settings).update(LOWEST)

    # What happens.

    @precondition(lambda self: self.procedure is None)
    @rule(data=st.data())
    def start_step(self, data: st.DataObject) -> None:
        """One step alone, whichever came before."""
        step = data.draw(st.sampled_from(steps_for(self.rig.recipe)))
        self.procedure = self.run([step])

    @precondition(lambda self: self.procedure is None)
    @rule()
    def start_run(self) -> None:
        """All steps."""
        self.procedure = self.run(steps_for(self.rig.recipe))

    @precondition(lambda self: self.procedure is None)
    @rule(electrolyte=st.sampled_from(Electrolyte))
    def start_refreshing(self, electrolyte: Electrolyte) -> None:
        """The bath is tested until somebody has seen enough."""
        self.finished = False
        self.begin("")
        self.procedure = steps.refresh(self.rig.control, electrolyte, lambda: self.finished)

    @rule()
    def finish(self) -> None:
        """Somebody has."""
        self.finished = True

    @rule(periods=st.sampled_from((1, 2, 30, 100, 300)))
    def wait(self, periods: int) -> None:
        """Time passes."""
        for _ in range(periods):
            self.advance()

    @precondition(lambda self: self.procedure is not None)
    @rule()
    def abort(self) -> None:
        """Nothing stays on."""
        assert self.procedure is not None
        self.procedure.close()
        self.procedure = None
        assert not self.rig.on

    @rule(key=st.sampled_from(sorted(LOWEST)), share=st.sampled_from((0.0, 0.3, 1.0)))
    def set_number(self, key: str, share: float) -> None:
        """A value between its bounds."""
        value = LOWEST[key] + share * (HIGHEST[key] - LOWEST[key])
        vars(self.rig.settings)[key] = type(LOWEST[key])(value)

    @rule(key=st.sampled_from(SWITCHES), on=st.booleans())
    def set_switch(self, key: str, on: bool) -> None:
        """A check goes on or off."""
        vars(self.rig.settings)[key] = on

    @rule(pressure=st.sampled_from(PRESSURES), conductivity=st.sampled_from(CONDUCTIVITIES))
    def show(self, pressure: float | None, conductivity: float | None) -> None:
        """Sensors show something."""
        self.rig.shown_pressure, self.rig.shown_conductivity = pressure, conductivity

    @rule(level=st.sampled_from((None, True, False)))
    def hold_level(self, level: bool | None) -> None:
        """The level switch."""
        self.rig.plant.level_override = level

    # What holds.

    @invariant()
    def nothing_on_at_rest(self) -> None:
        """Without a step, nothing is on."""
        assert self.procedure is not None or not self.rig.on

    def advance(self) -> None:
        """One period: the step first, then the plant."""
        if self.procedure is not None:
            try:
                next(self.procedure)
            except (StopIteration, StepFailed):
                self.procedure = None
                assert not self.rig.on
        self.check_outputs()
        self.check_time()
        self.rig.advance()

    def check_outputs(self) -> None:
        """They go together."""
        on = self.rig.on
        wrong = never_together(on) + pumps_in_vain(on)
        assert not wrong, wrong
        assert Output.HEAT_1 not in on, "no step heats"

    def check_time(self) -> None:
        """A step ends within what the settings say, and those may have changed since it began."""
        if self.procedure is None or not self.key:
            return
        rig = self.rig
        self.last = max(self.last, longest_secs(self.key, rig.settings, rig.recipe, self.pressure))
        assert rig.control.now - self.begun <= self.last, f"{self.key} takes longer than {self.last} s"

    def begin(self, key: str) -> None:
        """Notes the beginning of a step; one without a key may take any time."""
        self.key, self.begun, self.last = key, self.rig.control.now, 0.0
        self.pressure = min(self.rig.pressure, self.rig.plant.pressure)

    def run(self, sequence: Iterable[Step]) -> Procedure:
        """Steps, one after the other, with what they show of their progress."""
        sequence = tuple(sequence)
        progress = Progress(self.rig.control, sequence)
        shown = 0
        for index, step in enumerate(sequence):
            progress.start_step()
            self.begin(step.key)
            for _ in step.run(self.rig.control):
                assert shown <= progress.percent(index) < 100, (shown, progress.percent(index))
                shown = progress.percent(index)
                yield

    def teardown(self) -> None:
        """Leaves no generator to be collected at any time."""
        if self.procedure is not None:
            self.procedure.close()


ProcessPropertiesTest = ProcessMachine.TestCase
ProcessPropertiesTest.settings = trials(STEPS)


if __name__ == "__main__":
    unittest.main()
