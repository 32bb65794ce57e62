"""A plant with a process on it, without host and threads."""

from types import SimpleNamespace
from typing import Any

from controller.process.control import Check, Control, Procedure
from controller.process.outputs import Output
from controller.simulation.dosing import Dosing
from controller.simulation.faults import PlantFault
from controller.simulation.plant import Plant
from controller.process.recipe import Electrolyte, Equipment, Limits, Recipe

STEP_SECS = 0.1
LIMIT_SECS = 3600.0

#: The parameters that the steps read, at the values that the machine is delivered with.
PARAMETERS = {
    "threshold_p_blow": 0.05,
    "threshold_lw_empty": 0.07,
    "threshold_lw_water": 0.1,
    "threshold_lw_electrolyte": 1.5,
    "secs_blow_min": 5,
    "secs_pump": 5,
    "secs_blow_after_pump": 3,
    "leakage_p_fill": 0.5,
    "leakage_p_inc_rate": 0.03,
    "leakage_p_hold_secs": 3,
    "leakage_p_max_loss": 0.07,
    "blow_after_empty_secs": 10,
    "lauge_kreis_secs": 100,
    "hot_kreis_fill_secs_legacy": 6,
    "hot_kreis_clean_secs_legacy": 6,
    "saure_kreis_secs": 100,
    "cold_kreis_fill_secs_legacy": 6,
    "cold_kreis_clean_secs_legacy": 6,
    "co2_blow_after_empty_secs": 5,
    "vorspannen_p": 0.7,
    "steam_sterilization_secs": 40,
    "steam_co2_blow_secs": 3,
    "lw_test_hold_secs": 20,
    "test_leakage_p": True,
    "test_lw_water_cold": True,
    "test_lw_water_hot": True,
    "test_lw_kreis_saure": True,
    "test_lw_kreis_lauge": True,
    "test_lauge_level": True,
    "use_co2_after_saure": True,
}

#: Bounds of the parameters that are times, pressures and rates.
LOWEST = {
    "secs_blow_min": 1,
    "secs_pump": 5,
    "secs_blow_after_pump": 1,
    "leakage_p_fill": 0.3,
    "leakage_p_inc_rate": 0.01,
    "leakage_p_hold_secs": 1,
    "leakage_p_max_loss": 0.01,
    "blow_after_empty_secs": 1,
    "lauge_kreis_secs": 10,
    "hot_kreis_fill_secs_legacy": 1,
    "hot_kreis_clean_secs_legacy": 1,
    "saure_kreis_secs": 10,
    "cold_kreis_fill_secs_legacy": 1,
    "cold_kreis_clean_secs_legacy": 1,
    "co2_blow_after_empty_secs": 1,
    "vorspannen_p": 0.1,
    "steam_sterilization_secs": 15,
    "steam_co2_blow_secs": 1,
    "threshold_p_blow": 0.01,
    "threshold_lw_empty": 0.01,
}
HIGHEST = {
    "secs_blow_min": 20,
    "secs_pump": 20,
    "secs_blow_after_pump": 20,
    "leakage_p_fill": 1.0,
    "leakage_p_inc_rate": 0.04,  # the plant gives 0.05
    "leakage_p_hold_secs": 20,
    "leakage_p_max_loss": 0.2,
    "blow_after_empty_secs": 60,
    "lauge_kreis_secs": 600,
    "hot_kreis_fill_secs_legacy": 20,
    "hot_kreis_clean_secs_legacy": 20,
    "saure_kreis_secs": 600,
    "cold_kreis_fill_secs_legacy": 20,
    "cold_kreis_clean_secs_legacy": 20,
    "co2_blow_after_empty_secs": 60,
    "vorspannen_p": 2.0,
    "steam_sterilization_secs": 180,
    "steam_co2_blow_secs": 20,
    "threshold_p_blow": 0.2,
    "threshold_lw_empty": 1.0,
}

LIMITS = {Electrolyte.LYE: Limits(30, 60), Electrolyte.ACID: Limits(10, 20)}


class Rig:  # pylint: disable=too-many-instance-attributes
    """Inputs, outputs and watcher in one: outputs that act on a plant, and a record of what was told."""

    def __init__(
        self,
        *faults: PlantFault,
        equipment: Equipment = Equipment(),
        steam: bool = False,
        lengthening: float = 1.0,
    ) -> None:
        self.plant = Plant(frozenset(faults))
        self.dosing = Dosing()
        self.on: set[Output] = set()
        self.settings: Any = SimpleNamespace(**PARAMETERS)
        self.recipe = Recipe(equipment, steam, lengthening, LIMITS)
        self.control = Control(self, self, self.settings, self.recipe)
        self.sensor_defective = False
        self.details: list[str] = []
        self.peaks: dict[Electrolyte, float] = {}
        self.low: list[Electrolyte] = []
        self.checks: dict[str, Check] = {}
        self.reached = 0
        self.used: dict[Output, float] = {}

    @property
    def pressure(self) -> float:
        """Pressure in the barrel."""
        return self.plant.pressure

    @property
    def conductivity(self) -> float:
        """Conductivity at the sensor."""
        return self.plant.conductivity

    @property
    def level_reached(self) -> bool:
        """The level switch."""
        return self.plant.level

    def switch(self, output: Output, on: bool) -> None:
        """Switches one output."""
        (self.on.add if on else self.on.discard)(output)

    def detail(self, text: str) -> None:
        """Records the text."""
        self.details.append(text)

    def peak(self, electrolyte: Electrolyte, conductivity: float) -> None:
        """Records the peak."""
        self.peaks[electrolyte] = conductivity

    def too_low(self, electrolyte: Electrolyte) -> None:
        """Records the bath."""
        self.low.append(electrolyte)

    def set_point_reached(self) -> None:
        """Counts."""
        self.reached += 1

    def checked(self, check: Check) -> None:
        """Records the check."""
        self.checks[check.name] = check

    def advance(self) -> None:
        """Lets one period pass for the plant."""
        self.plant.advance(STEP_SECS, self.on)
        self.dosing.advance(STEP_SECS)
        self.control.now += STEP_SECS
        for output in self.on:
            self.used[output] = self.used.get(output, 0.0) + STEP_SECS

    def run(self, procedure: Procedure) -> float:
        """Runs a procedure to its end. Returns the seconds that it took."""
        start = self.control.now
        for _ in procedure:
            self.advance()
            assert self.control.now - start < LIMIT_SECS, "the procedure does not end"
        return self.control.now - start

    def secs_on(self, output: Output) -> float:
        """How long an output was on."""
        return self.used.get(output, 0.0)
