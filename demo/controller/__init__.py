"""The backend of the demo machine.

The host imports this package, calls `init`, and then one of the functions below for each action
of the operator, all on the interpreter thread. They do no work themselves: what concerns the
machine is handed to its thread (`machine_thread`), what concerns updates and the network to theirs
(`service_thread`), what is to be kept to the thread that writes (`storage`).
"""

import atexit
from functools import cache

from brovik import Logger
from brovik.actuator import ActuatorEnum
from brovik.auto import AutoEnum
from brovik.chart import ChartEnum
from brovik.gui import GuiEnum
from brovik.sensor import SensorEnum
from brovik.settings import SettingsEnum
from brovik.shell import ShellActionEnum
from brovik.simulator import SimuEnum
from brovik.wifi import WifiActionEnum

from .backend import Backend
from .entry import entry
from .program_errors import report_dead_threads, write_stacks_on_request


@cache
def backend() -> Backend:
    """The one backend, made at the first call."""
    return Backend.from_environment()


def init(_debug: bool) -> None:
    """Starts the demo machine. The host shows an exception and leaves the controls disabled."""
    report_dead_threads()
    write_stacks_on_request()
    # Also for a start that fails half-way. There is no other farewell, whatever ends the program.
    atexit.register(backend().stop)
    backend().start()


@entry
def actuator_toggle_from_cpp(enum: ActuatorEnum) -> None:
    """An output is to be switched over, or manual heating."""
    backend().machine.post(lambda: backend().operation.toggle_output(enum))


@entry
def auto_value_from_cpp(enum: AutoEnum, _value: None) -> None:
    """The automatic run or the test of a bath is to start or to end."""
    backend().machine.post(lambda: backend().operation.toggle(enum))


@entry
def chart_action_from_cpp(enum: ChartEnum, value: object) -> None:
    """An action on a chart."""
    backend().machine.post(lambda: backend().charts.act(enum, value))


@entry
def gui_value_from_cpp(enum: GuiEnum, value: object) -> None:
    """Something has happened on the screens that belongs to no function of the machine."""
    if enum == GuiEnum.Ready:
        backend().screens_ready()
    elif enum == GuiEnum.DialogData:
        backend().machine.post(lambda: backend().operation.take_report(value))
    else:
        Logger.debug(f"{enum.name}: {value!r}")


@entry
def sensor_value_from_cpp(enum: SensorEnum, state: bool) -> None:
    """A digital input is played from the simulator window."""
    backend().machine.post(lambda: backend().operation.change_input(enum, state))


@entry
def shell_action_from_cpp(enum: ShellActionEnum, value: object) -> None:
    """An action of the update facility."""
    backend().maintenance.update_action(enum, value)


@entry
def simulator_value_from_cpp(enum: SimuEnum, value: object) -> None:
    """A value of the simulated hardware is to change."""
    backend().set_simulated(enum, value)


@entry
def settings_from_cpp(enum: SettingsEnum, value: object) -> None:
    """A parameter of the process is to change. By the return of this function it has."""
    backend().settings.wish(enum, value)


@entry
def wifi_action_from_cpp(enum: WifiActionEnum, value: object) -> None:
    """An action on the network."""
    backend().maintenance.network_action(enum, value)
