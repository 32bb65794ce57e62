"""A backend that floods the window, for two seconds and from four threads, with what the environment names.

Prints one JSON object: the seconds after which the window answered what was asked behind the flood, and the
memory that the flood has left behind. The kind `points` also compares an entry function with a thread.
"""

import itertools
import json
import os
import signal
import statistics
import threading
import time
from collections.abc import Callable, Iterator
from pathlib import Path
from typing import Any

from brovik.actuator import Actuator
from brovik.chart import Chart
from brovik.gui import Gui, GuiEnum
from brovik.shell import ChangelogEntry, ChangelogEntryVector, Shell
from brovik.wifi import Wifi

THREADS = 4
FLOOD_SECONDS = 2.0
SETTLE_SECONDS = 1.0
ANSWER_LIMIT_SECONDS = 40.0
CLOSE_LIMIT_SECONDS = 2.0
FIRST_QUESTION = 2_000_000_000
POINTS = 12_000
ROUNDS = 5
ROWS = 20
PAGE_BYTES = os.sysconf("SC_PAGE_SIZE")

answered = threading.Event()
closed = threading.Event()
# What the next report of the window lets the entry function do.
inside: list[Callable[[], None]] = []
questions: list[int] = []
question_ids = itertools.count(FIRST_QUESTION)


def _resident_mib() -> float:
    pages = int(Path("/proc/self/statm").read_text(encoding="ascii").split()[1])
    return pages * PAGE_BYTES / 2**20


def _records(number: int) -> list[dict[str, Any]]:
    return [
        {
            "ip4": f"10.0.{number % 256}.{row}",
            "name": f"eth{row}",
            "type_": "",
            "is_wg": False,
            "version": str(number),
        }
        for row in range(ROWS)
    ]


def _status(number: int) -> None:
    Gui.status = f"Flut {number}"


def _point(number: int) -> None:
    Chart.p.add_point((number / 1000, number % 7))


def _toast(number: int) -> None:
    Gui.toast_warn(f"Flut {number}")


def _question(number: int) -> None:
    questions.append(number + 1)
    Gui.question("Flut", str(number), {"id": number + 1})


def _interfaces(number: int) -> None:
    Wifi.ip_map_list = _records(number)


def _scan(number: int) -> None:
    Wifi.set_scan_results({f"Netz {row}": {"quality": number % 100, "is5GHz": False} for row in range(ROWS)})


def _packages(number: int) -> None:
    Shell.installed = _records(number)


def _updates(number: int) -> None:
    Shell.upgradables = _records(number)


def _changelog(number: int) -> None:
    entry = ChangelogEntry(Shell)
    entry.name = entry.date = entry.version = entry.distribution = str(number)
    entry.urgency_str = f"u{number}"
    changelog = ChangelogEntryVector()
    changelog.append(entry)
    Shell.changelogs = changelog


def _charts(_number: int) -> None:
    Chart.emit_meta_data_list_changed()


def _outputs(number: int) -> None:
    Actuator.set_dout_model(Actuator.all_douts[number % 2 :])


def _line(number: int) -> None:
    Shell.append_stdout(f"Hole:{number} http://archiv.example/debian bookworm/main arm64 paket-{number}")


def _size(number: int) -> None:
    Gui.fsize_m = 16.0 + number % 97 / 100


KINDS = {
    "statuses": _status,
    "points": _point,
    "toasts": _toast,
    "questions": _question,
    "interfaces": _interfaces,
    "scans": _scan,
    "packages": _packages,
    "updates": _updates,
    "changelogs": _changelog,
    "charts": _charts,
    "outputs": _outputs,
    "lines": _line,
    "sizes": _size,
}


def _flood(tell: Callable[[int], None]) -> int:
    """Tells as much as it can; how often that was."""
    counts = [0] * THREADS
    end = time.monotonic() + FLOOD_SECONDS

    def write(thread: int) -> None:
        while time.monotonic() < end:
            tell(counts[thread] * THREADS + thread)
            counts[thread] += 1

    threads = [threading.Thread(target=write, args=(thread,)) for thread in range(THREADS)]
    for thread in threads:
        thread.start()
    for thread in threads:
        thread.join()
    return sum(counts)


def _ask() -> float:
    """The seconds until the window has opened a question and told of it."""
    answered.clear()
    begin = time.monotonic()
    question = next(question_ids)
    Gui.question("Frage", "Antwortet das Fenster?", {"id": question})
    if not answered.wait(ANSWER_LIMIT_SECONDS):
        raise TimeoutError("the window does not answer")
    seconds = time.monotonic() - begin
    Gui.close_dialog(question)
    return seconds


def _close_all() -> None:
    """Closes the questions from the top, as an operator does: all at once they would all fade out."""
    for number in reversed(questions):
        closed.clear()
        Gui.close_dialog(number)
        closed.wait(CLOSE_LIMIT_SECONDS)


def _add_points() -> float:
    """The seconds that so many points take."""
    Chart.p.clear()
    begin = time.monotonic()
    for number in range(POINTS):
        Chart.p.add_point((number / 1000, number % 7))
    return time.monotonic() - begin


def _points_from_both() -> Iterator[tuple[float, float]]:
    """The seconds of the same points from a thread and inside an entry function."""
    for _ in range(ROUNDS):
        thread = _add_points()
        seconds: list[float] = []
        inside.append(lambda: seconds.append(_add_points()))
        _ask()
        yield thread, seconds[0]


def _measure(kind: str) -> dict[str, float]:
    time.sleep(SETTLE_SECONDS)
    _ask()
    time.sleep(SETTLE_SECONDS)
    before = _resident_mib()
    begin = time.monotonic()
    told = _flood(KINDS[kind])
    flood = time.monotonic() - begin
    result = {"told": told, "flood_s": flood, "answer_s": _ask()}
    _close_all()
    Chart.p.clear()
    _ask()
    time.sleep(SETTLE_SECONDS)
    result["growth_mib"] = _resident_mib() - before
    if kind == "points":
        threads, entries = zip(*_points_from_both())
        result |= {"thread_s": statistics.median(threads), "entry_s": statistics.median(entries)}
    return result


def _run() -> None:
    try:
        print("FLOOD " + json.dumps(_measure(os.environ["KUBELOR_BENCH_FLOOD"])))
    finally:
        signal.raise_signal(signal.SIGKILL)


def init(_debug: bool) -> None:
    """Nothing to do."""


def gui_value_from_cpp(enum: GuiEnum, value: Any = None) -> None:
    """Starts with the first report, and takes the answers of the window."""
    if enum == GuiEnum.Ready:
        threading.Thread(target=_run, daemon=True).start()
    elif enum == GuiEnum.DialogData and value.get("current") and value["current"][0] >= FIRST_QUESTION:
        while inside:
            inside.pop()()
        answered.set()
    elif enum == GuiEnum.DialogData and len(value) > 1:
        closed.set()


def _ignore(*_arguments: object) -> None:
    """All other actions."""


actuator_toggle_from_cpp = auto_value_from_cpp = chart_action_from_cpp = _ignore
sensor_value_from_cpp = settings_from_cpp = shell_action_from_cpp = _ignore
simulator_value_from_cpp = wifi_action_from_cpp = _ignore
