"""Turns the results of one run of all benchmarks into a table, ratios to the bare baseline included."""

import json
import os
import platform
import re
import sys
from collections.abc import Collection, Iterator
from datetime import date
from pathlib import Path
from typing import Any

NS_PER = {"ns": 1.0, "us": 1e3, "ms": 1e6}


# What the screens' benchmarks count, in their order.
SCREEN_COLUMNS = {
    "median_ms": "median, ms",
    "longest_ms": "longest, ms",
    "frame_ms": "to the frame, ms",
    "growth_mib": "growth, MiB",
    "memory_mib": "memory, MiB",
}

Run = dict[str, Any]


def median_runs(folder: Path) -> Iterator[Run]:
    """The medians of every benchmark."""
    for file in sorted(folder.glob("bench_*.json")):
        for run in json.loads(file.read_text(encoding="utf-8"))["benchmarks"]:
            if run.get("aggregate_name") == "median":
                yield run


def is_screen(run: Run) -> bool:
    """Screens are counted by other measures than time per item."""
    return any(column in run for column in SCREEN_COLUMNS)


def per_item_ns(runs: list[Run]) -> dict[str, float]:
    """Median nanoseconds per item of every benchmark but those of the screens."""
    result = {}
    for run in runs:
        if not is_screen(run):
            items = run.get("items_per_second")
            seconds = 1e9 / items if items else run["real_time"] * NS_PER[run["time_unit"]]
            result[run["run_name"]] = seconds
    return result


def bare_name(name: str, names: Collection[str]) -> str:
    """The baseline that a benchmark is compared with: the same name with `bare_` before its second part,
    or if there is none like that, with `bare` in its place."""
    first, second, *rest = name.split("/")
    closer = "/".join([first, f"bare_{second}", *rest])
    return closer if closer in names else "/".join([first, "bare", *rest])


def print_benchmarks(times: dict[str, float]) -> None:
    """One row for each benchmark."""
    print("| Benchmark | per item, ns | ratio to bare |")
    print("|---|---|---|")
    for name, nanoseconds in sorted(times.items()):
        baseline = bare_name(name, times)
        bare = times.get(baseline)
        ratio = f"{nanoseconds / bare:.2f}" if bare and baseline != name else ""
        print(f"| {name} | {nanoseconds:.1f} | {ratio} |")


def print_delays(runs: list[Run]) -> None:
    """One line for each benchmark that measures how long a screen takes to see the last write."""
    for run in runs:
        if "delay_us" in run:
            writes = run["items_per_second"]
            print(f"\n{run['run_name']}: {writes:.0f} writes per second, seen {run['delay_us']:.0f} µs later")


def print_screens(runs: list[Run]) -> None:
    """One row for each benchmark of a screen."""
    print(f"\n| Screen | {' | '.join(SCREEN_COLUMNS.values())} |")
    print("|---" * (len(SCREEN_COLUMNS) + 1) + "|")
    for run in sorted(filter(is_screen, runs), key=lambda run: str(run["run_name"])):
        name = re.sub(r"/(iterations:\d+|manual_time)", "", run["run_name"])
        cells = (f"{run[column]:.2f}" if column in run else "" for column in SCREEN_COLUMNS)
        print(f"| {name} | {' | '.join(cells)} |")


def print_processes(processes: dict[str, dict[str, float]]) -> None:
    """One row for each program."""
    print("\n| Program | first frame, s | of the processor, s | resident, MiB | idle, % of a core |")
    print("|---|---|---|---|---|")
    for name, row in processes.items():
        print(
            f"| {name} | {row['first_frame_s']:.2f} | {row['first_frame_cpu_s']:.2f}"
            f" | {row['resident_mib']:.0f} | {row['idle_percent']:.2f} |"
        )


def print_floods(floods: dict[str, dict[str, float]]) -> None:
    """One row for each kind; without figures if the window did not answer."""
    print("\n| Flood | told of | answer, s | growth, MiB |")
    print("|---|---|---|---|")
    for kind, row in floods.items():
        figures = f"{row['told']} | {row['answer_s']:.2f} | {row['growth_mib']:.1f}" if row else "none | |"
        print(f"| {kind} | {figures} |")
    points = floods["points"]
    if points:
        ratio = points["entry_s"] / points["thread_s"]
        print(
            f"\n12,000 points: {points['thread_s']:.3f} s from a thread,"
            f" {points['entry_s']:.3f} s inside an entry function, ratio {ratio:.2f}"
        )


def main() -> None:
    """Reads the folder of results that is named on the command line."""
    folder = Path(sys.argv[1])
    print(f"{date.today()}, {platform.machine()}, {os.cpu_count()} cores\n")
    runs = list(median_runs(folder))
    print_benchmarks(per_item_ns(runs))
    print_delays(runs)
    print_screens(runs)
    print_processes(json.loads((folder / "process").read_text(encoding="utf-8")))
    print_floods(json.loads((folder / "flood").read_text(encoding="utf-8")))


if __name__ == "__main__":
    main()
