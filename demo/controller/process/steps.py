"""The steps of the cleaning process, one function each.

Every function takes the `Control` and is a procedure as told there. `sequence` puts the steps in
order.
"""

from collections.abc import Callable, Iterator
from contextlib import contextmanager
from typing import Final

from .control import AT_LEAST, AT_MOST, BELOW, ROUNDING, Check, Control, Medium, Procedure, StepFailed
from .outputs import Output
from .recipe import CIRCUITS, Electrolyte

BLOW_LIMIT_SECS: Final = 90.0
VENT_LIMIT_SECS: Final = 30.0
FLOOD_SECS: Final = 8.0  # until an electrolyte has reached the sensor
RATE_GRACE_SECS: Final = 1.0  # until a gas valve is really open
STEAM_FLUSH_SECS: Final = 10.0  # of steaming under pressure
PRESTRESS_LIMIT_SECS: Final = 120.0


def leak_test(control: Control) -> Procedure:
    """Puts the barrel under air, sees whether it holds, and lets the air out."""
    if not control.settings.test_leakage_p:
        return
    yield from _fill_for_leak_test(control)
    yield from _hold_for_leak_test(control)
    yield from vent(control)


def _fill_for_leak_test(control: Control) -> Procedure:
    settings = control.settings
    target, rate = settings.leakage_p_fill, settings.leakage_p_inc_rate
    limit = max(0.0, target - control.io.pressure) / rate + RATE_GRACE_SECS
    control.watcher.detail(f"Fass wird auf {target:.1f} bar gespannt")
    begun, before = control.now, control.io.pressure

    def risen() -> Check:
        secs = max(control.now - begun, ROUNDING)
        return Check("Druckanstieg", (control.io.pressure - before) / secs, "bar/s", rate, AT_LEAST)

    with control.outputs(Output.MV_LUFT), control.telling(risen):
        yield from control.until(
            lambda: control.io.pressure >= target,
            limit,
            f"Undicht: Der Druck steigt langsamer als {rate:.2f} bar/s.",
        )


def _hold_for_leak_test(control: Control) -> Procedure:
    start, max_loss = control.io.pressure, control.settings.leakage_p_max_loss
    with control.telling(
        lambda: Check("Druckverlust", start - control.io.pressure, "bar", max_loss, AT_MOST)
    ):
        for _ in control.wait(control.settings.leakage_p_hold_secs, "Druck wird gehalten"):
            if start - control.io.pressure > max_loss:
                raise StepFailed(f"Undicht: Der Druck ist um mehr als {max_loss:.2f} bar gefallen.")
            yield


def vent(control: Control) -> Procedure:
    """Lets the pressure out into the channel."""
    control.watcher.detail("Druck wird abgelassen")
    with control.outputs(Output.MV_KANAL):
        yield from control.until(
            lambda: control.io.pressure < control.settings.threshold_p_blow,
            VENT_LIMIT_SECS,
            "Der Druck lässt sich nicht ablassen.",
        )


def _blow_out(control: Control, gas: Output, outlet: Output, gone: Callable[[], bool]) -> Procedure:
    """Blows until the sensor says that the medium is gone and nothing stands against the gas."""
    settings = control.settings
    with control.outputs(gas, outlet):
        yield from control.wait(settings.secs_blow_min, "Fass wird ausgeblasen")
        control.watcher.detail("Fass wird ausgeblasen, bis es leer ist")
        with (
            control.telling(lambda: Check("Leitwert nach dem Ausblasen", control.io.conductivity, "mS/cm")),
            control.telling(
                lambda: Check(
                    "Druck nach dem Ausblasen", control.io.pressure, "bar", settings.threshold_p_blow, BELOW
                )
            ),
        ):
            yield from control.until(
                lambda: gone() and control.io.pressure < settings.threshold_p_blow,
                BLOW_LIMIT_SECS,
                f"Das Fass wird nicht leer ({control.io.conductivity:.2f} mS/cm).",
            )


def empty_into_channel(control: Control) -> Procedure:
    """Empties the barrel and drives the gas that was in it out with air."""
    yield from _blow_out(control, Output.MV_LUFT, Output.MV_KANAL, lambda: control.medium is Medium.AIR)
    with control.outputs(Output.MV_LUFT, Output.MV_KANAL):
        yield from control.wait(control.settings.blow_after_empty_secs, "Gas wird ausgeblasen")


def rinse(control: Control, water: Output, passes: int) -> Procedure:
    """Rinses with water and blows out, some times over."""
    for number in range(1, passes + 1):
        prefix = f"Durchgang {number} von {passes}: " if passes > 1 else ""
        with control.outputs(water, Output.PUMPE, Output.MV_KANAL):
            yield from control.wait(control.settings.secs_pump, f"{prefix}Spülen")
            _check_water(control, water)
        with control.outputs(_rinse_gas(control, water), Output.MV_KANAL):
            yield from control.wait(control.settings.secs_blow_after_pump, f"{prefix}Ausblasen")


def _check_water(control: Control, water: Output) -> None:
    name, checked = _water(control, water)
    if checked:
        lowest = control.settings.threshold_lw_water
        control.watcher.checked(Check(f"Leitwert {name}", control.io.conductivity, "mS/cm", lowest, AT_LEAST))
        control.require(Medium.WATER, name)


def _water(control: Control, water: Output) -> tuple[str, bool]:
    """Its name, and whether it is checked."""
    if water is Output.MV_HEISS:
        return "Heißwasser", control.settings.test_lw_water_hot
    return "Kaltwasser", control.settings.test_lw_water_cold


def _rinse_gas(control: Control, water: Output) -> Output:
    """Cold water comes after the acid; from then on no air should get in."""
    return gas_after_acid(control) if water is Output.MV_KALT else Output.MV_LUFT


def gas_after_acid(control: Control) -> Output:
    """The gas that blows out the acid and what follows it."""
    return Output.MV_CO2 if control.settings.use_co2_after_saure else Output.MV_LUFT


def rinse_circuit(control: Control, water: Output, fill_secs: float, clean_secs: float) -> Procedure:
    """Fills the circuit with water for `fill_secs` seconds and pumps it round for `clean_secs`."""
    with control.outputs(Output.PUMPE, Output.MV_KREIS):
        with control.outputs(water):
            yield from control.wait(fill_secs, "Kreislauf wird gefüllt")
        yield from control.wait(clean_secs, "Kreislauf wird gespült")


class Flow:
    """An electrolyte on its way from its bath through the barrel and back."""

    def __init__(self, control: Control, electrolyte: Electrolyte) -> None:
        self._control = control
        self._electrolyte = electrolyte
        self._flooded_at = control.now + FLOOD_SECS
        self._peak = 0.0

    def check(self) -> None:
        """Takes the conductivity in, and fails if another medium flows. Once per period."""
        self._peak = max(self._peak, self._control.io.conductivity)
        self._control.watcher.peak(self._electrolyte, self._peak)
        if self._flooded and _medium_is_checked(self._control, self._electrolyte):
            self._control.require(Medium.ELECTROLYTE, self._electrolyte.value)

    def judge(self) -> None:
        """Tells if the bath is below its minimum, once there was time to see it."""
        minimum = self._control.recipe.limits[self._electrolyte].minimum
        if self._flooded:
            name = f"Höchster Leitwert {self._electrolyte.value}"
            self._control.watcher.checked(Check(name, self._peak, "mS/cm", minimum, AT_LEAST))
            if self._peak < minimum:
                self._control.watcher.too_low(self._electrolyte)

    @property
    def _flooded(self) -> bool:
        return self._control.now >= self._flooded_at


@contextmanager
def _flowing(control: Control, electrolyte: Electrolyte) -> Iterator[Flow]:
    circuit = CIRCUITS[electrolyte]
    flow = Flow(control, electrolyte)
    with control.outputs(circuit.inlet, Output.PUMPE, circuit.outlet):
        try:
            yield flow
        finally:
            flow.judge()


def clean(control: Control, electrolyte: Electrolyte) -> Procedure:
    """Pumps an electrolyte through the barrel for the time that the settings give."""
    if electrolyte is Electrolyte.LYE:
        check_level(control)
    with _flowing(control, electrolyte) as flow:
        text = f"{electrolyte.value} wird im Kreis gepumpt"
        for _ in control.wait(circuit_secs(control, electrolyte), text):
            flow.check()
            yield


def circuit_secs(control: Control, electrolyte: Electrolyte) -> float:
    """Length of the circuit, seconds; longer for intensive cleaning."""
    settings = control.settings
    lye = electrolyte is Electrolyte.LYE
    secs = settings.lauge_kreis_secs if lye else settings.saure_kreis_secs
    return secs * control.recipe.lengthening


def check_level(control: Control) -> None:
    """Fails if there is too little lye to circulate and to cover the heater."""
    checked = control.recipe.equipment.level_switch and control.settings.test_lauge_level
    if checked and not control.io.level_reached:
        raise StepFailed("Der Füllstand im Laugebecken ist unterschritten.")


def _medium_is_checked(control: Control, electrolyte: Electrolyte) -> bool:
    settings = control.settings
    lye = electrolyte is Electrolyte.LYE
    return settings.test_lw_kreis_lauge if lye else settings.test_lw_kreis_saure


def give_back(control: Control, electrolyte: Electrolyte) -> Procedure:
    """Drives the electrolyte back into its bath, and nothing but the electrolyte."""
    gas = Output.MV_LUFT if electrolyte is Electrolyte.LYE else gas_after_acid(control)
    yield from _blow_out(
        control,
        gas,
        CIRCUITS[electrolyte].outlet,
        lambda: control.medium is not Medium.ELECTROLYTE,
    )


def steam(control: Control) -> Procedure:
    """Sterilises with steam, on some machines under pressure, and blows the steam out."""
    secs: float = control.settings.steam_sterilization_secs
    pressurised = control.recipe.equipment.steam_pressure
    flush_secs = min(STEAM_FLUSH_SECS, secs) if pressurised else secs
    with control.outputs(Output.MV_STEAM):
        with control.outputs(Output.MV_KANAL):
            yield from control.wait(flush_secs, "Fass wird mit Dampf gespült")
        if pressurised:
            yield from control.wait(secs - flush_secs, "Fass steht unter Dampfdruck")
    with control.outputs(Output.MV_CO2, Output.MV_KANAL):
        yield from control.wait(control.settings.steam_co2_blow_secs, "Dampf wird ausgeblasen")


def drive_air_out(control: Control) -> Procedure:
    """Empties the barrel with CO2 and goes on in pulses, which takes more of the air along."""
    yield from _blow_out(control, Output.MV_CO2, Output.MV_KANAL, lambda: control.medium is Medium.AIR)
    with control.outputs(Output.MV_KANAL):
        for second in range(control.settings.co2_blow_after_empty_secs):
            pulse = (Output.MV_CO2,) if second % 2 == 0 else ()
            with control.outputs(*pulse):
                yield from control.wait(1.0, f"CO2-Takt {second + 1}")


def prestress(control: Control) -> Procedure:
    """Leaves the barrel under CO2. The pressure may still be changed while it rises."""
    control.watcher.detail("Fass wird vorgespannt")

    def reached() -> Check:
        wanted = control.settings.vorspannen_p
        return Check("Vorspanndruck", control.io.pressure, "bar", wanted, AT_LEAST)

    with control.outputs(Output.MV_CO2), control.telling(reached):
        yield from control.until(
            lambda: control.io.pressure >= control.settings.vorspannen_p,
            PRESTRESS_LIMIT_SECS,
            "Das Fass erreicht den Vorspanndruck nicht.",
        )


def refresh(control: Control, electrolyte: Electrolyte, finished: Callable[[], bool]) -> Procedure:
    """Circulates a bath while it is refreshed, until the operator has seen enough.

    The set point counts as reached once the conductivity has stayed at it for long enough.
    """
    set_point = control.recipe.limits[electrolyte].set_point
    held_since = control.now
    reached = False
    with _flowing(control, electrolyte) as flow:
        while not finished():
            flow.check()
            if control.io.conductivity < set_point:
                held_since = control.now
            held = control.now - held_since
            if not reached and held >= control.settings.lw_test_hold_secs:
                reached = True
                control.watcher.set_point_reached()
            control.watcher.detail(_refresh_text(set_point, held, reached))
            yield


def _refresh_text(set_point: int, held: float, reached: bool) -> str:
    if reached:
        return "Sollwert erreicht, die Prüfung kann abgeschlossen werden"
    if held > 0:
        return f"Sollwert wird seit {held:.0f} s gehalten"
    return f"Bitte auffrischen, bis {set_point} mS/cm erreicht sind"
