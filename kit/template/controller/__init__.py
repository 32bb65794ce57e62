"""The backend.

The program imports this package, calls `init`, and then one of the functions below for each action of the
operator, all on its interpreter thread. They return at once: what the machine does, its thread does.
"""

import atexit
import os
import threading
from functools import cache
from pathlib import Path

from brovik import Logger, forward_exception
from brovik.actuator import Actuator, ActuatorEnum
from brovik.auto import AutoEnum
from brovik.chart import ChartEnum
from brovik.gui import Gui, GuiEnum
from brovik.sensor import SensorEnum
from brovik.settings import SettingsEnum
from brovik.shell import ShellActionEnum
from brovik.simulator import SimuEnum
from brovik.wifi import Wifi, WifiActionEnum

from .entry import entry
from .machine import MachineThread
from .process import Process
from .settings import Settings
from .store import Store


class Backend:
    """Everything that the backend consists of."""

    def __init__(self, folder: Path) -> None:
        """`folder` is where things are kept."""
        self.store = Store(folder / "controller.json")
        self.settings = Settings(self.store)
        self.process = Process()
        self.machine = MachineThread(self.process)

    def start(self) -> None:
        """Loads what is kept and starts the threads."""
        self.settings.load()
        self.store.start()
        self.machine.start()
        Gui.status = "Bereit"

    def stop(self) -> None:
        """The end of the program: the outputs go off before anybody is waited for, and again afterwards."""
        self.process.outputs_off()
        for ends in (self.machine.stop, self.process.outputs_off, self.store.stop):
            try:
                ends()
            except Exception:  # pylint: disable=broad-exception-caught # the others have to end as well
                forward_exception()
        Logger.info("Alle Ausgänge sind aus")


@cache
def backend() -> Backend:
    """The one backend, made at the first call."""
    return Backend(Path(os.environ["BROVIK_CONFIG_DIR"]))


def _report_dead_thread(death: threading.ExceptHookArgs) -> None:
    Logger.critical(f"Der Thread {death.thread.name if death.thread else '?'} ist gestorben")
    forward_exception()


def init(_debug: bool) -> None:
    """Starts the machine. The program shows an exception and leaves the controls disabled."""
    threading.excepthook = _report_dead_thread
    # Before the first thread starts, so that it also serves a start that fails half-way.
    atexit.register(backend().stop)
    Actuator.set_dout_model(Actuator.all_douts)
    backend().start()


@entry
def actuator_toggle_from_cpp(enum: ActuatorEnum) -> None:
    """An output is to be switched over, or manual heating."""
    backend().machine.post(lambda: backend().process.toggle_output(enum))


@entry
def auto_value_from_cpp(enum: AutoEnum, _value: None) -> None:
    """The automatic run is to start or to end."""
    if enum == AutoEnum.Toggle:
        backend().machine.post(backend().process.toggle_run)


@entry
def chart_action_from_cpp(enum: ChartEnum, value: object) -> None:
    """An action on a chart. This machine keeps none."""
    Logger.debug(f"{enum.name}: {value!r}")


@entry
def gui_value_from_cpp(enum: GuiEnum, value: object) -> None:
    """The screens are there, or a dialog has opened, closed or been answered."""
    Logger.debug(f"{enum.name}: {value!r}")


@entry
def sensor_value_from_cpp(enum: SensorEnum, state: bool) -> None:
    """A digital input is played from the simulator's window. This machine has no simulator."""
    Logger.debug(f"{enum.name}: {state}")


@entry
def shell_action_from_cpp(enum: ShellActionEnum, value: object) -> None:
    """An action of the update facility. This machine has none."""
    # The value of ToggleTesting is a password.
    Logger.debug(f"{enum.name}: {type(value).__name__}")


@entry
def simulator_value_from_cpp(enum: SimuEnum, value: object) -> None:
    """A slider of the simulator's window. This machine has no simulator."""
    Logger.debug(f"{enum.name}: {value!r}")


@entry
def settings_from_cpp(enum: SettingsEnum, value: object) -> None:
    """A parameter of the process is to change; without a value, an action of the calibration."""
    backend().settings.wish(enum, value)


@entry
def wifi_action_from_cpp(enum: WifiActionEnum, _value: object) -> None:
    """An action on the network. This machine has no radio."""
    if enum == WifiActionEnum.Scan:
        Wifi.abort_wifi_scan()
