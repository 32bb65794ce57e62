"""The order of the steps, and what depends on the machine in it."""

from collections.abc import Callable
from dataclasses import dataclass
from functools import partial
from typing import Final

from . import steps
from .control import Control, Procedure
from .outputs import Output
from .recipe import Electrolyte, Recipe


#: Rise of the pressure that the weights reckon with, bar/s.
EXPECTED_RISE: Final = 0.05
#: What a step takes besides what its parameters say, about.
MARGIN_SECS: Final = 2.0
#: A step that is switched off still counts for something, so that the total is never 0.
LEAST_SECS: Final = 0.1


@dataclass(frozen=True)
class Step:
    """One line of the sequence. The key is what a stored run is found again by."""

    key: str
    title: str
    run: Callable[[Control], Procedure]
    #: Expected length in seconds; weighs the step in the progress.
    secs: Callable[[Control], float]
    legacy_only: bool = False
    steam_only: bool = False

    def applies(self, recipe: Recipe) -> bool:
        """Whether a run with this recipe has the step."""
        if self.steam_only and not recipe.steam:
            return False
        return recipe.equipment.legacy or not self.legacy_only


def _leak_secs(control: Control) -> float:
    settings = control.settings
    if not settings.test_leakage_p:
        return 0.0
    return MARGIN_SECS + settings.leakage_p_fill / EXPECTED_RISE + settings.leakage_p_hold_secs


def _blow_secs(control: Control) -> float:
    return control.settings.secs_blow_min + MARGIN_SECS


def _rinse_secs(control: Control, passes: int) -> float:
    return passes * float(control.settings.secs_pump + control.settings.secs_blow_after_pump)


def _steam_secs(control: Control) -> float:
    return float(control.settings.steam_sterilization_secs + control.settings.steam_co2_blow_secs)


def _hot_circuit_secs(control: Control) -> tuple[int, int]:
    settings = control.settings
    return settings.hot_kreis_fill_secs_legacy, settings.hot_kreis_clean_secs_legacy


def _cold_circuit_secs(control: Control) -> tuple[int, int]:
    settings = control.settings
    return settings.cold_kreis_fill_secs_legacy, settings.cold_kreis_clean_secs_legacy


def _rinsing(key: str, title: str, water: Output, passes: int, *, legacy_only: bool = False) -> Step:
    """Water through the barrel, some times over."""
    run = partial(steps.rinse, water=water, passes=passes)
    return Step(key, title, run, partial(_rinse_secs, passes=passes), legacy_only)


def _circuit_rinsing(key: str, title: str, water: Output, secs: Callable[[Control], tuple[int, int]]) -> Step:
    """Water through the circuit; `secs` are those to fill it and those to pump the water round."""

    def run(control: Control) -> Procedure:
        return steps.rinse_circuit(control, water, *secs(control))

    return Step(key, title, run, lambda control: float(sum(secs(control))), legacy_only=True)


def _cleaning(key: str, title: str, electrolyte: Electrolyte) -> Step:
    """Lye or acid through the barrel."""
    run = partial(steps.clean, electrolyte=electrolyte)
    return Step(key, title, run, partial(steps.circuit_secs, electrolyte=electrolyte))


def _giving_back(key: str, title: str, electrolyte: Electrolyte) -> Step:
    """Lye or acid back into its bath."""
    return Step(key, title, partial(steps.give_back, electrolyte=electrolyte), _blow_secs)


SEQUENCE: Final = (
    Step("leak_test", "Dichtheitsprobe", steps.leak_test, _leak_secs),
    Step(
        "empty",
        "Fass in den Kanal entleeren",
        steps.empty_into_channel,
        lambda c: _blow_secs(c) + c.settings.blow_after_empty_secs,
    ),
    _rinsing("rinse_hot", "Spülen mit Heißwasser", Output.MV_HEISS, 3),
    _cleaning("lye", "Reinigen mit Lauge", Electrolyte.LYE),
    _giving_back("lye_back", "Lauge zurückfördern", Electrolyte.LYE),
    _rinsing("rinse_lye", "Laugereste in den Kanal spülen", Output.MV_HEISS, 1),
    _circuit_rinsing("circuit_hot", "Kreislauf mit Heißwasser spülen", Output.MV_HEISS, _hot_circuit_secs),
    _rinsing("rinse_hot_again", "Nachspülen mit Heißwasser", Output.MV_HEISS, 1, legacy_only=True),
    _cleaning("acid", "Reinigen mit Säure", Electrolyte.ACID),
    _giving_back("acid_back", "Säure zurückfördern", Electrolyte.ACID),
    _rinsing("rinse_cold", "Spülen mit Kaltwasser", Output.MV_KALT, 3),
    _circuit_rinsing("circuit_cold", "Kreislauf mit Kaltwasser spülen", Output.MV_KALT, _cold_circuit_secs),
    _rinsing("rinse_cold_again", "Nachspülen mit Kaltwasser", Output.MV_KALT, 1, legacy_only=True),
    Step("steam", "Sterilisieren mit Dampf", steps.steam, _steam_secs, steam_only=True),
    Step(
        "air_out",
        "Luft mit CO2 austreiben",
        steps.drive_air_out,
        lambda c: _blow_secs(c) + c.settings.co2_blow_after_empty_secs,
    ),
    Step(
        "prestress",
        "Vorspannen mit CO2",
        steps.prestress,
        lambda c: c.settings.vorspannen_p / EXPECTED_RISE,
    ),
)


def steps_for(recipe: Recipe) -> tuple[Step, ...]:
    """The steps of a run, in order. Their place, counted from 1, is the number on the screens."""
    return tuple(step for step in SEQUENCE if step.applies(recipe))


class Progress:
    """How far a run is, by the expected length of its steps."""

    def __init__(self, control: Control, sequence: tuple[Step, ...]) -> None:
        self._control = control
        self._weights = [max(step.secs(control), LEAST_SECS) for step in sequence]
        self._started = control.now

    def start_step(self) -> None:
        """Marks the moment from which the present step's time counts."""
        self._started = self._control.now

    def percent(self, index: int) -> int:
        """Percentage during the step of this index; 100 only after the last one."""
        elapsed = min(self._control.now - self._started, self._weights[index])
        done = sum(self._weights[:index]) + elapsed
        return min(99, int(100 * done / sum(self._weights)))
