"""The samples as a picture."""

from collections.abc import Sequence
from pathlib import Path

import matplotlib

matplotlib.use("svg")

# pylint: disable=wrong-import-position  # the kind of picture comes first
from matplotlib import pyplot

from samples import KIB, Sample


def draw(samples: Sequence[Sample], file: Path) -> None:
    """One plot below the other over the simulated hours, as SVG."""
    hours = [sample.hours for sample in samples]
    plots = {
        "Memory, MB": [sample.memory / KIB for sample in samples],
        "Threads": [sample.threads for sample in samples],
        "Descriptors": [sample.descriptors for sample in samples],
        "Longest stall, ms": [sample.stall for sample in samples],
        "Database, MB": [sample.database / KIB for sample in samples],
        "Its log, MB": [sample.database_log / KIB for sample in samples],
    }
    figure, axes = pyplot.subplots(len(plots), sharex=True, figsize=(9, 12))
    for axis, (title, values) in zip(axes, plots.items(), strict=True):
        axis.plot(hours, values)
        axis.set_title(title, loc="left")
        axis.grid(True)
    axes[-1].set_xlabel("simulated hours")
    figure.tight_layout()
    figure.savefig(file)
