"""The backend as a whole: made in `init`, ended with the interpreter."""

import os
import sys
from collections.abc import Set
from contextlib import ExitStack
from functools import partial
from pathlib import Path
from typing import Final, Self

from brovik import Logger
from brovik.gui import Gui
from brovik.sensor import Sensor
from brovik.simulator import Simulator

from . import configuration, settings
from .board import Board
from .charts import Charts
from .program_errors import PRESS_QUIET_SECS, ErrorReporter
from .interrupted import RunNote
from .jobs import READY_STATUS
from .machine_thread import MachineThread
from .maintenance import Maintenance, read_stored
from .operation import Operation
from .process.plant import Fault, Plant
from .recording import Recorder
from .service_thread import ServiceThread
from .storage import MACHINE, RUN, SETTINGS, Change, StorageWriter, open_storage

CONFIG_DIR: Final = "BROVIK_CONFIG_DIR"
TIME_FACTOR: Final = "BROVIK_DEMO_TIME_FACTOR"
FAULT: Final = "BROVIK_DEMO_FAULT"
SIMULATOR: Final = "BROVIK_DEMO_SIMULATOR"


class Backend:  # pylint: disable=too-many-instance-attributes
    """Holds what the entry functions need.

    They run on the interpreter thread; `operation` belongs to the machine thread, and `machine`
    carries calls there. `maintenance` takes its actions to a thread of its own. The storage belongs
    to the thread of its writer.
    """

    def __init__(self, directory: Path | None, time_factor: float, faults: Set[Fault]) -> None:
        storage = open_storage(directory, lambda text: Gui.message("Einstellungen", text, "error"))
        stored = storage.read(MACHINE)
        saved_charts = storage.charts.infos()
        equipment = configuration.apply(stored)
        settings.load(storage.read(SETTINGS), equipment)
        self._note = RunNote.read(storage.read(RUN))
        maintained = read_stored(storage)

        self._writer = StorageWriter(storage, ErrorReporter(PRESS_QUIET_SECS).report)
        self._writer.submit(Change(MACHINE, configuration.missing(stored)))
        self.settings = settings.SettingsKeeper(self._writer, equipment)

        Sensor.lw_sensor_defective = Fault.SENSOR in faults
        self._board = Board(equipment.steam_valve)
        recorder = Recorder(self._board)
        self.operation = Operation(self._board, Plant(faults), equipment, self._writer, recorder)
        self.machine = MachineThread(self.operation, time_factor)
        self.charts = Charts(recorder, self._writer, saved_charts, self.machine.post)
        services = ServiceThread(time_factor)
        self.maintenance = Maintenance(
            maintained,
            self._writer,
            services,
            lambda: services.done_by(self.machine.post, self.operation.reserve_for_upgrade),
        )
        Gui.status = READY_STATUS

    @classmethod
    def from_environment(cls) -> Self:
        """The backend that the environment asks for."""
        # A press must not wait long for a machine thread that has much to do, as at a high time factor.
        sys.setswitchinterval(0.001)
        directory = os.environ.get(CONFIG_DIR)
        backend = cls(Path(directory) if directory else None, _time_factor(), _faults())
        Simulator.enabled = os.environ.get(SIMULATOR) == "1" or Simulator.enabled
        return backend

    def start(self) -> None:
        """Starts the threads."""
        self.machine.start()
        self.maintenance.start()

    def screens_ready(self) -> None:
        """The screens can take questions now."""
        if self._note is not None:
            self.machine.post(partial(self.operation.offer_to_continue, self._note))
            self._note = None

    def stop(self) -> None:
        """Leaves the machine with all outputs off. A run in progress stays noted as interrupted.

        What cannot be ended keeps nothing else from its end.
        """
        self._board.all_off()
        with ExitStack() as stack:  # The last one comes first.
            stack.callback(self._writer.stop)
            stack.callback(self.maintenance.stop)
            stack.callback(self._board.all_off)
            stack.callback(self.operation.stop)
            stack.callback(self.machine.stop)


def _time_factor() -> float:
    text = os.environ.get(TIME_FACTOR, "1")
    try:
        factor = float(text)
        if 0 < factor <= 1e4:
            return factor
    except ValueError:
        pass
    Logger.warning(f"{TIME_FACTOR}={text} ist kein Zeitfaktor")
    return 1.0


def _faults() -> Set[Fault]:
    known = {fault.value: fault for fault in Fault}
    names = [name.strip() for name in os.environ.get(FAULT, "").split(",") if name.strip()]
    for name in names:
        if name not in known:
            Logger.warning(f"{FAULT}: {name!r} ist keines von {', '.join(known)}")
    return {known[name] for name in names if name in known}
