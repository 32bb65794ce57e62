"""The backend as a whole: made in `init`, ended with the interpreter."""

import os
from collections.abc import Callable, Mapping
from contextlib import ExitStack
from dataclasses import dataclass
from functools import partial
from pathlib import Path
from typing import Final, Self

from brovik import Logger
from brovik.gui import Gui
from brovik.simulator import SimuEnum

from . import configuration, notices, settings
from .after_run import AfterRun
from .board import Board
from .bookkeeping import Bookkeeper, SavedBooks, read_books
from .charts import ChartLibrary, Charts, StoredCharts, read_charts
from .dialog_watch import DIALOGS
from .dialogs import Questions
from .program_errors import PRESS_QUIET_SECS, ErrorReporter
from .hardware_choice import HardwareChoice, choose_hardware
from .interrupted import RunNote
from .job_control import JobControl
from .jobs import READY_STATUS
from .journal import JOURNAL, Event, Kind
from .machine_thread import Command, MachineThread
from .maintenance import Maintenance, read_stored
from .operation import Operation
from .process.hardware import Hardware
from .recording import Recorder
from .reports import ReportOffer
from .run_archive import RunArchive
from .run_log import MachineFacts
from .service_thread import ServiceThread
from .storage import MACHINE, RUN, SETTINGS, Change, Storage, StorageWriter, open_and_read
from .upkeep import Upkeep

CONFIG_DIR: Final = "BROVIK_CONFIG_DIR"
TIME_FACTOR: Final = "BROVIK_DEMO_TIME_FACTOR"

#: The packages that the program and this backend come in.
PROGRAM_PACKAGE: Final = "brovik-bedienung"
BACKEND_PACKAGE: Final = "brovik-steuerung"


@dataclass(frozen=True)
class _Stored:
    """What the start needs of the file, and the file."""

    storage: Storage
    machine: Mapping[str, object]
    settings: Mapping[str, object]
    charts: StoredCharts
    #: None if no run was interrupted.
    note: RunNote | None
    maintenance: Mapping[str, Mapping[str, object]]
    books: SavedBooks


def _read_stored(storage: Storage) -> _Stored:
    return _Stored(
        storage,
        storage.read(MACHINE),
        storage.read(SETTINGS),
        read_charts(storage),
        RunNote.read(storage.read(RUN)),
        read_stored(storage),
        read_books(storage),
    )


class Backend:  # pylint: disable=too-many-instance-attributes
    """Holds what the entry functions need.

    They run on the interpreter thread; `operation` belongs to the machine thread, and `machine`
    carries calls there. `maintenance` takes its actions to a thread of its own. The storage belongs
    to the thread of its writer.
    """

    def __init__(
        self, directory: Path | None, time_factor: float, choose: Callable[[], HardwareChoice]
    ) -> None:
        """`directory` is that of the file; `choose` makes the hardware, once the host knows the equipment."""
        stored = open_and_read(
            directory, lambda text: notices.message("Einstellungen", text, "error"), _read_stored
        )
        machine = configuration.apply(stored.machine)
        equipment = machine.equipment
        # Nothing is running yet: a machine that cannot be reached leaves nothing behind.
        choice = choose()
        self._window = choice.window
        self._board = Board(choice.hardware, equipment.steam_valve)
        settings.load(stored.settings, equipment)
        self._note = stored.note

        self._writer = StorageWriter(stored.storage, ErrorReporter(PRESS_QUIET_SECS).report)
        self._writer.submit(Change(MACHINE, configuration.missing(stored.machine)))
        write_journal(self._writer)
        self.settings = settings.SettingsKeeper(self._writer, equipment)

        services = ServiceThread(time_factor)
        self.maintenance = Maintenance(
            stored.maintenance,
            self._writer,
            services,
            lambda: services.done_by(self.machine.post, self.operation.reserve_for_upgrade),
        )
        recorder = Recorder(self._board)
        jobs = self._make_jobs(machine, choice.hardware, recorder, services, stored.books)
        self.operation = Operation(self._board, jobs, equipment, choice.window)
        self.machine = MachineThread(self.operation, time_factor)
        library = ChartLibrary(stored.charts, machine.kept_charts)
        self.charts = Charts(recorder, self._writer, library, self.machine.post)
        if self._note is None:
            self._books.close_interrupted()
        JOURNAL.add(Kind.PROGRAM, Event.BEGUN, "Kubelor", details=dict(self.maintenance.installed))
        Gui.status = READY_STATUS

    def _make_jobs(  # pylint: disable=too-many-arguments  # each is named by its caller
        self,
        machine: configuration.Configuration,
        hardware: Hardware,
        recorder: Recorder,
        services: ServiceThread,
        saved: SavedBooks,
    ) -> JobControl:
        """Jobs with their books, and with what is asked after a run."""
        questions = Questions(notices.question, notices.withdraw)
        reports = ReportOffer(questions, services, self._post, saved.file)
        self._books = Bookkeeper(
            self._board,
            recorder,
            _facts(machine, self.maintenance.installed),
            saved,
            RunArchive(self._writer, machine.kept_curves, reports.recorded),
        )
        upkeep = Upkeep(saved.upkeep, lambda: self._books.counters, self._writer)
        after_run = AfterRun(questions, upkeep)
        return JobControl(self._board, hardware, machine.equipment, self._writer, self._books, after_run)

    @classmethod
    def from_environment(cls) -> Self:
        """The backend that the environment asks for."""
        directory = os.environ.get(CONFIG_DIR)
        return cls(Path(directory) if directory else None, _time_factor(), choose_hardware)

    def start(self) -> None:
        """Starts the threads."""
        self.machine.start()
        self.maintenance.start()

    def _post(self, command: Command) -> None:
        self.machine.post(command)

    def set_simulated(self, enum: SimuEnum, value: object) -> None:
        """A slider of the simulator's window has been moved."""
        self._window.set_value(enum, value)

    def screens_ready(self) -> None:
        """The screens can take questions now."""
        self.machine.post(DIALOGS.screens_ready)
        if self._note is not None:
            self.machine.post(partial(self.operation.offer_to_continue, self._note))
            self._note = None

    def stop(self) -> None:
        """Leaves the machine with all outputs off. A run in progress stays noted as interrupted.

        What cannot be ended keeps nothing else from its end.
        """
        with ExitStack() as stack:  # The last one comes first.
            stack.callback(JOURNAL.close)
            stack.callback(DIALOGS.reset)
            stack.callback(self._writer.stop)
            stack.callback(JOURNAL.add, Kind.PROGRAM, Event.ENDED, "Kubelor")
            stack.callback(self._books.stop)
            stack.callback(self.maintenance.stop)
            stack.callback(self._board.shut_down)
            stack.callback(self.operation.stop)
            stack.callback(self.machine.stop)
            self._board.shut_down()


def _facts(machine: configuration.Configuration, installed: Mapping[str, str]) -> MachineFacts:
    """What records have of the machine and of the programs."""
    return MachineFacts(
        machine.machine_name,
        machine.version,
        installed.get(PROGRAM_PACKAGE, ""),
        installed.get(BACKEND_PACKAGE, ""),
        machine.records,
    )


def write_journal(writer: StorageWriter) -> None:
    """Has the journal written into the file."""
    JOURNAL.open(lambda entry: writer.submit(lambda storage: storage.logbook.add(entry)))


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
