"""Floods the whole program with each kind of notification: whether it still answers, and what is left.

flood.py PROGRAM. Runs under a display; prints one JSON object.
"""

import json
import os
import subprocess
import sys
import tempfile
from pathlib import Path

BACKEND = Path(__file__).parent / "flood"
KINDS = (
    "statuses points toasts questions interfaces scans packages updates changelogs charts outputs lines sizes"
)
MARK = "FLOOD "
LIMIT_SECONDS = 300.0


def flooded(program: str, kind: str) -> dict[str, float]:
    """What the backend has measured; empty if the window did not answer."""
    with tempfile.TemporaryDirectory() as config:
        environment = os.environ | {
            "KUBELOR_BENCH_FLOOD": kind,
            "KUBELOR_DEMO_BACKEND": str(BACKEND),
            "KUBELOR_DEMO_SOCKET": f"{config}/raise.sock",
            "XDG_CONFIG_HOME": config,
        }
        run = subprocess.run(
            [program],
            env=environment,
            stdout=subprocess.PIPE,
            stderr=subprocess.DEVNULL,
            text=True,
            timeout=LIMIT_SECONDS,
            check=False,
        )
    lines = [line for line in run.stdout.splitlines() if line.startswith(MARK)]
    result: dict[str, float] = json.loads(lines[-1].removeprefix(MARK)) if lines else {}
    return result


def main() -> None:
    """Measures the program that is named on the command line."""
    print(json.dumps({kind: flooded(sys.argv[1], kind) for kind in KINDS.split()}))


if __name__ == "__main__":
    main()
