"""What the operator does with charts: record by hand, save, load, delete, rename."""

from collections.abc import Callable, Iterable
from dataclasses import dataclass, replace
from datetime import datetime
from html import escape
from typing import Final, TypeVar

from brovik import Logger
from brovik.auto import Auto
from brovik.chart import Chart, ChartEnum, ChartMetaData, ChartMetaDataList
from brovik.gui import Gui, IconEnum

from . import notices
from .chart_limits import ChartLimits
from .machine_thread import Command
from .recording import NEUTRAL, Recorder, all_lines
from .saved_charts import ChartInfo, SavedChart
from .storage import CHARTS, Change, Storage, StorageWriter

HAND_TITLE: Final = "Handbetrieb"
TOLD: Final = "told_of_removal"

T = TypeVar("T")


@dataclass(frozen=True)
class StoredCharts:
    """What the file has of charts at the start."""

    infos: Iterable[ChartInfo]
    #: Whether the operator has been told that charts go.
    told: bool


@dataclass(frozen=True)
class ChartLibrary:
    """The saved charts at the start, and how many of them may stay."""

    stored: StoredCharts
    limits: ChartLimits


def read_charts(storage: Storage) -> StoredCharts:
    """Reads what the file has."""
    return StoredCharts(storage.charts.infos(), bool(storage.read(CHARTS).get(TOLD)))


class Charts:  # pylint: disable=too-few-public-methods
    """The charts, as the operator sees them. Belongs to the machine thread.

    The file is read and written by the storage's thread, which posts the outcome back.
    """

    def __init__(
        self,
        recorder: Recorder,
        writer: StorageWriter,
        library: ChartLibrary,
        post: Callable[[Command], None],
    ) -> None:
        """`post` has a command run on the machine thread."""
        #: Also driven by `Operation`.
        self.recorder = recorder
        self._writer = writer
        self._post = post
        self._saved = {info.name: info for info in library.stored.infos}
        self._limits = library.limits
        self._told = library.stored.told
        self._show_list()

    def act(self, enum: ChartEnum, value: object) -> None:
        """Does what the operator has asked for."""
        match enum, value:
            case ChartEnum.Save, str(name):
                self._save(name)
            case ChartEnum.Load, str(name):
                self._load(name)
            case ChartEnum.Delete, str(name):
                self._delete(name)
            case ChartEnum.Rename, [str(old), str(new)]:
                self._rename(old, new)
            case ChartEnum.Hand, None:
                self._toggle_hand()
            case _:
                Logger.warning(f"Chart-Aktion {enum.name} mit {value!r} wird ignoriert")

    def _toggle_hand(self) -> None:
        if Auto.active:
            notices.warn("Der Automatikbetrieb wird bereits aufgezeichnet")
        elif Chart.active:
            self.recorder.end(NEUTRAL, HAND_TITLE)
        else:
            self.recorder.start(HAND_TITLE)

    def _save(self, name: str) -> None:
        info = self.recorder.info
        if info is None or not Chart.savable:
            notices.warn("Es gibt nichts zu speichern")
        elif self._may_use(name):
            chart = SavedChart(
                replace(info, name=name),
                Chart.step_names,
                Chart.actuator_names,
                {key: line.data for key, line in all_lines().items()},
            )
            recorded_as = info.name
            self._in_file(
                lambda storage: storage.charts.save(chart),
                lambda _: self._was_saved(chart.info, recorded_as),
            )

    def _was_saved(self, info: ChartInfo, recorded_as: str) -> None:
        self._saved[info.name] = info
        self._show_list()
        if self.recorder.info is not None and self.recorder.info.name == recorded_as:
            # Unless another recording has begun in the meantime.
            Chart.current_name = info.name
            Chart.savable = False
        Gui.toast_notify("Chart gespeichert", IconEnum.Saved)
        self._remove_surplus()

    def _load(self, name: str) -> None:
        if Chart.active:
            notices.warn("Zuerst die Aufzeichnung beenden")
        elif self._exists(name):
            self._in_file(lambda storage: storage.charts.load(name), self._was_loaded)

    def _was_loaded(self, chart: SavedChart) -> None:
        if Chart.active:
            # A recording has begun in the meantime.
            return
        Chart.savable = False
        Chart.step_names = list(chart.step_names)
        Chart.actuator_names = list(chart.actuator_names)
        for key, line in all_lines().items():
            line.data = list(chart.lines.get(key, ()))
        Chart.current_name = chart.info.name

    def _delete(self, name: str) -> None:
        if self._exists(name):
            self._in_file(lambda storage: storage.charts.delete(name), lambda _: self._was_deleted(name))

    def _was_deleted(self, name: str) -> None:
        self._saved.pop(name, None)
        self._show_list()

    def _rename(self, old: str, new: str) -> None:
        if old != new and self._exists(old) and self._may_use(new):
            self._in_file(
                lambda storage: storage.charts.rename(old, new),
                lambda _: self._was_renamed(old, new),
            )

    def _was_renamed(self, old: str, new: str) -> None:
        info = self._saved.pop(old, None)
        if info is None:
            # Deleted in the meantime.
            return
        self._saved[new] = replace(info, name=new)
        if Chart.current_name == old and not (Chart.active or Chart.savable):
            Chart.current_name = new
        self._show_list()

    def _remove_surplus(self) -> None:
        for name in self._limits.surplus(self._saved.values(), datetime.now()):
            self._tell_of_removal(name)
            self._delete(name)

    def _tell_of_removal(self, name: str) -> None:
        """Says so once and for all. What goes later is in the log."""
        Logger.info(f"Chart {name!r} wird gelöscht: Es sind zu viele, oder es ist zu alt")
        if self._told:
            return
        self._told = True
        self._writer.submit(Change(CHARTS, {TOLD: True}))
        limits = self._limits
        parts = [f"höchstens {limits.number}"] if limits.number else []
        parts += [f"keine älteren als {limits.days} Tage"] if limits.days else []
        notices.message(
            "Charts",
            f"Gespeicherte Charts bleiben nicht für immer: {' und '.join(parts)}. Zuerst geht, was keinen "
            f"eigenen Namen hat, das Älteste zuerst. Jetzt wird „{escape(name)}“ gelöscht. "
            "Diese Meldung kommt nur einmal.",
            "info",
        )

    def _exists(self, name: str) -> bool:
        if name not in self._saved:
            notices.warn(f"Es gibt kein Chart „{name}“")
        return name in self._saved

    def _may_use(self, name: str) -> bool:
        """Whether a chart may get this name. The operator hears why not."""
        if not name.strip():
            notices.message("Chart Name", "Es ist eine Eingabe erforderlich", "error")
            return False
        if name in self._saved:
            notices.message("Chart Name", f"Der Name {escape(name)} ist bereits vergeben", "error")
            return False
        return True

    def _in_file(self, task: Callable[[Storage], T], done: Callable[[T], None]) -> None:
        """Has the storage's thread do something, and this thread what follows if it went well."""

        def perform(storage: Storage) -> None:
            result = task(storage)
            self._post(lambda: done(result))

        self._writer.perform(perform)

    def _show_list(self) -> None:
        """Replaces the host's list as a whole, for the screens read it at any time."""
        records = ChartMetaDataList()
        for info in sorted(self._saved.values(), key=lambda info: info.name.casefold()):
            records.append(
                ChartMetaData(
                    filename=info.name,
                    result=info.result,
                    status=info.status,
                    datetime_str=info.recorded,
                    duration=info.duration,
                )
            )
        Chart.meta_data_list = records
        Chart.assigned_names = list(self._saved)
