"""Runs tests of the board, several at once: run_tests.py <how many at once> <test>...

A test is a module, or a part of one, as unittest names it. Each is run in a process of its own; what it says
is shown when it has ended, and kept in the results beside its folder.
"""

import subprocess
import sys
import time
import unittest
from collections.abc import Iterator
from concurrent.futures import Future, ThreadPoolExecutor, as_completed

from board_case import RESULTS


def tests(suite: unittest.TestSuite) -> Iterator[str]:
    """The names of all tests in a suite."""
    for part in suite:
        if isinstance(part, unittest.TestSuite):
            yield from tests(part)
        else:
            yield part.id()


def run(test: str) -> tuple[bool, str]:
    """Runs one test: whether it has passed, and a line about it."""
    path = RESULTS / f"{test}.log"
    begin = time.monotonic()
    with path.open("w", encoding="utf-8") as log:
        command = [sys.executable, "-B", "-m", "unittest", "--verbose", test]
        passed = subprocess.run(command, stdout=log, stderr=log, check=False).returncode == 0
    seconds = round(time.monotonic() - begin)
    print(f"{path.read_text('utf-8').strip()}\n", flush=True)
    return passed, f"{'passed' if passed else 'FAILED'} after {seconds:4} s: {test}"


def run_all(names: list[str], at_once: int) -> list[tuple[bool, str]]:
    """Runs tests, and tells of each as soon as it has ended."""
    results = []
    executor = ThreadPoolExecutor(at_once)
    try:
        futures: list[Future[tuple[bool, str]]] = [executor.submit(run, name) for name in names]
        for future in as_completed(futures):
            results.append(future.result())
            print(results[-1][1], flush=True)
    finally:
        executor.shutdown(cancel_futures=True)
    return results


def main(at_once: str, *names: str) -> int:
    """Runs what is named, and gives the exit code."""
    loader = unittest.TestLoader()
    suite = loader.loadTestsFromNames(names)
    if loader.errors:
        print("\n".join(map(str, loader.errors)), file=sys.stderr)
        return 2
    RESULTS.mkdir(parents=True, exist_ok=True)
    results = run_all(list(tests(suite)), int(at_once))
    print("\n" + "\n".join(line for _, line in results))
    return 0 if all(passed for passed, _ in results) else 1


if __name__ == "__main__":
    sys.exit(main(*sys.argv[1:]))
