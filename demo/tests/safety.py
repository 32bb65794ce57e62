"""What holds at every moment, whatever anybody does: rules of the machine.

Outputs and numbers stand here by themselves: they are not taken from the process, which they are to judge.
"""

import os
from collections.abc import Set

from hypothesis import HealthCheck, Phase, settings

from controller.process.outputs import Output
from controller.process.recipe import Recipe
from controller.process.settings import ProcessSettings

LYE = frozenset({Output.MV_LAUGE_IN, Output.MV_LAUGE_OUT})
ACID = frozenset({Output.MV_SAURE_IN, Output.MV_SAURE_OUT})
#: Ways to the pump and from the barrel; the circuit is both.
INLETS = frozenset({Output.MV_KALT, Output.MV_HEISS, Output.MV_LAUGE_IN, Output.MV_SAURE_IN, Output.MV_KREIS})
OUTLETS = frozenset({Output.MV_KANAL, Output.MV_LAUGE_OUT, Output.MV_SAURE_OUT, Output.MV_KREIS})
#: Steam drives neither cold water nor the pump before it.
COLD = frozenset({Output.MV_KALT, Output.PUMPE})

#: Steps of a state machine from its start to its end.
STEPS_OF_A_TRIAL = 50

#: Seconds of waiting that may be added to what the settings say, for periods that have begun.
ROUNDED_SECS = 1.0
BLOW_SECS = 90.0
VENT_SECS = 30.0
PRESTRESS_SECS = 120.0


def never_together(on: Set[Output]) -> list[str]:
    """What is wrong with these outputs being on, by hand or by the process."""
    wrong = []
    if on & LYE and on & ACID:
        wrong.append(f"lye meets acid: {on}")
    if Output.MV_STEAM in on and on & COLD:
        wrong.append(f"steam meets what is cold: {on}")
    return wrong


def pumps_in_vain(on: Set[Output]) -> list[str]:
    """What is wrong with the pump of a process: the operator alone may try a pump without a way."""
    if Output.PUMPE in on and not (on & INLETS and on & OUTLETS):
        return [f"the pump works against closed valves: {on}"]
    return []


def longest_secs(key: str, values: ProcessSettings, recipe: Recipe, pressure: float) -> float:
    """After this many seconds a step that began at this pressure in bar has ended or failed."""
    rinse = float(values.secs_pump + values.secs_blow_after_pump)
    blow = values.secs_blow_min + BLOW_SECS
    rise = max(0.0, values.leakage_p_fill - pressure) / values.leakage_p_inc_rate + 1.0
    return (
        ROUNDED_SECS
        + {
            "leak_test": rise + values.leakage_p_hold_secs + VENT_SECS,
            "empty": blow + values.blow_after_empty_secs,
            "rinse_hot": 3 * rinse,
            "lye": values.lauge_kreis_secs * recipe.lengthening,
            "lye_back": blow,
            "rinse_lye": rinse,
            "circuit_hot": float(values.hot_kreis_fill_secs_legacy + values.hot_kreis_clean_secs_legacy),
            "rinse_hot_again": rinse,
            "acid": values.saure_kreis_secs * recipe.lengthening,
            "acid_back": blow,
            "rinse_cold": 3 * rinse,
            "circuit_cold": float(values.cold_kreis_fill_secs_legacy + values.cold_kreis_clean_secs_legacy),
            "rinse_cold_again": rinse,
            "steam": float(values.steam_sterilization_secs + values.steam_co2_blow_secs),
            "air_out": blow + values.co2_blow_after_empty_secs,
            "prestress": PRESTRESS_SECS,
        }[key]
    )


def trials(steps: int) -> settings:
    """So many steps, the same ones each time; as many as KUBELOR_PROPERTY_STEPS says, if it does."""
    by_hand = os.environ.get("KUBELOR_PROPERTY_STEPS")
    wanted = int(by_hand or steps)
    # To find the shortest way to a failure takes minutes, which only somebody who waits for it has got.
    phases = (Phase.generate, Phase.shrink) if by_hand else (Phase.generate,)
    return settings(
        max_examples=max(1, wanted // STEPS_OF_A_TRIAL),
        stateful_step_count=STEPS_OF_A_TRIAL,
        derandomize=True,
        database=None,
        deadline=None,
        phases=phases,
        report_multiple_bugs=False,
        suppress_health_check=list(HealthCheck),
    )
