"""Reports of runs on the operator's USB stick."""

import os
from collections.abc import Callable, Iterable
from datetime import datetime
from functools import partial
from html import escape
from pathlib import Path
from typing import Final

from brovik import Logger
from brovik.gui import Gui, IconEnum

from logbook.records import RunRecord

from . import notices
from .dialogs import DialogId, Questions
from .jobs import job_running
from .machine_thread import Command
from .service_thread import ProcessFailed, ServiceThread

STICK: Final = "BROVIK_DEMO_STICK"
MEDIA: Final = Path("/media")

#: The tool that makes a report, beside this package: the file is on the stick as a whole, or not at all.
#: `sys.executable` is the host here, and no interpreter.
PYTHON: Final = "/usr/bin/python3"
TOOL: Final = Path(__file__).resolve().parents[1] / "bericht" / "kubelor-bericht"
LIMIT_SECS: Final = 120.0  # of real time

TITLE: Final = "Bericht"
QUESTION: Final = "Bericht auf USB-Stick speichern?"


def find_stick(media: Path = MEDIA) -> Path | None:
    """The folder of the stick: that of the environment, or the first one that can be written to."""
    named = os.environ.get(STICK)
    if named is not None:
        return Path(named) if named and _writable(Path(named)) else None
    try:
        folders = sorted([*media.glob("*"), *media.glob("*/*")])
    except OSError:
        return None
    return next((folder for folder in folders if folder.is_mount() and _writable(folder)), None)


def _writable(folder: Path) -> bool:
    try:
        return folder.is_dir() and os.access(folder, os.W_OK)
    except OSError:
        return False


def file_name(record: RunRecord) -> str:
    """The name of a report: it says which run, also to who has a stick with those of several machines."""
    begun = datetime.fromisoformat(record.begun)
    return f"Reinigung {record.number} vom {begun:%Y-%m-%d %H.%M}.pdf"


class ReportOffer:  # pylint: disable=too-few-public-methods  # its face is one call
    """Asks after a run whether to save its report, and does it. Asks on the machine's thread, does it on that
    of the services.
    """

    def __init__(
        self,
        questions: Questions,
        services: ServiceThread,
        post: Callable[[Command], None],
        database: Path | None,
    ) -> None:
        """`post` has a command run on the machine thread. Without a file there are no reports."""
        self._questions = questions
        self._services = services
        self._post = post
        self._database = database

    def recorded(self, record: RunRecord) -> None:
        """The record of a run that has just ended is in the file. For any thread."""
        if self._database is not None:
            self._services.post(lambda: self._look(record))

    def _look(self, record: RunRecord) -> None:
        stick = find_stick()
        if stick is not None:
            self._post(partial(self._ask, record, stick))

    def _ask(self, record: RunRecord, stick: Path) -> None:
        if not job_running():
            self._questions.ask(
                DialogId.SAVE_REPORT,
                TITLE,
                QUESTION,
                "Speichern",
                "Nein",
                lambda yes: self._begin(record, stick) if yes else None,
                "info",
            )

    def _begin(self, record: RunRecord, stick: Path) -> None:
        self._services.post(lambda: self._spawn(record, stick))

    def _spawn(self, record: RunRecord, stick: Path) -> None:
        self._services.spawn(self._save(record, stick))

    async def _save(self, record: RunRecord, stick: Path) -> None:
        target = stick / file_name(record)
        try:
            await self._services.run(self._command(record.number, target), LIMIT_SECS)
        except (OSError, ProcessFailed) as error:
            reason = str(error).removeprefix(f"{TOOL.name}: ")
            Logger.warning(f"{target}: {reason}")
            notices.message(
                TITLE,
                f"Der Bericht Nr. {record.number} ließ sich nicht auf den USB-Stick speichern: "
                f"{escape(reason)}<br>Er bleibt in der Maschine und geht nicht verloren.",
                "error",
            )
        else:
            Gui.toast_notify("Bericht gespeichert", IconEnum.Saved)

    def _command(self, number: int, target: Path) -> Iterable[str]:
        options = ("export", str(number), "--format", "pdf", "-o", str(target), "--file", str(self._database))
        return PYTHON, "-B", str(TOOL), *options
