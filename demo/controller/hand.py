"""Operation by hand: the operator switches single outputs."""

from brovik.actuator import Actuator, ActuatorEnum

from . import notices
from .board import Board
from .process.outputs import Output


def toggle(board: Board, enum: ActuatorEnum, running: bool, dry: bool) -> None:
    """Switches an output over, or manual heating, unless something stands against it.

    `dry` says that the lye does not cover the heater.
    """
    if enum == ActuatorEnum.ToggleManualHeating:
        _toggle_manual_heating(board, running)
        return
    output = Output(int(enum))
    if refusal := _refusal(board, output, dry):
        notices.warn(refusal)
    else:
        board.switch(output, not board.is_on(output))


def _toggle_manual_heating(board: Board, running: bool) -> None:
    if running:
        notices.warn("Die Heizung wird gerade automatisch geregelt")
        return
    Actuator.manual_heating_enabled = not Actuator.manual_heating_enabled
    board.switch(Output.HEAT_1, False)


def _refusal(board: Board, output: Output, dry: bool) -> str:
    """Why the operator may not switch this output; empty if he may."""
    if board.is_blocked(output):
        return f"{board.name(output)} ist gesperrt"
    if output is Output.HEAT_1 and not Actuator.manual_heating_enabled:
        return "Der Heizungs-Handbetrieb ist nicht eingeschaltet"
    if output is Output.HEAT_1 and dry and not board.is_on(output):
        return "Der Füllstand im Laugebecken ist unterschritten"
    return ""
