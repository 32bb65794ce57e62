"""Operation by hand: the operator switches single outputs."""

from brovik.actuator import Actuator, ActuatorEnum, DOut
from brovik.gui import Gui


def toggle(enum: ActuatorEnum, running: bool) -> None:
    """Switches an output over, or manual heating, unless something stands against it."""
    dout = Actuator.dout_from_enum(enum)
    if dout is None:
        _toggle_manual_heating(running)
    elif refusal := _refusal(dout):
        Gui.toast_warn(refusal)
    else:
        dout.state = not dout.state


def _toggle_manual_heating(running: bool) -> None:
    if running:
        Gui.toast_warn("Die Heizung wird gerade automatisch geregelt")
        return
    Actuator.manual_heating_enabled = not Actuator.manual_heating_enabled
    Actuator.heat_1.state = False


def _refusal(dout: DOut) -> str:
    """Why the operator may not switch this output; empty if he may."""
    if dout.blocked:
        return f"{dout.name} ist gesperrt"
    if dout.enum == ActuatorEnum.Heat1 and not Actuator.manual_heating_enabled:
        return "Der Heizungs-Handbetrieb ist nicht eingeschaltet"
    return ""
