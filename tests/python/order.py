"""In which order the tests of a module run."""

import unittest
from collections.abc import Iterator

from shared_properties import check_initial_values


def load(module: str) -> unittest.TestSuite:
    """All tests of this module. Those of initial values come first, before any other has written."""
    tests = list(_tests(unittest.defaultTestLoader.loadTestsFromName(module)))
    first = [test for test in tests if _looks_at_initial_values(test)]
    return unittest.TestSuite(first + [test for test in tests if test not in first])


def _tests(suite: unittest.TestSuite) -> Iterator[unittest.TestCase]:
    for part in suite:
        if isinstance(part, unittest.TestSuite):
            yield from _tests(part)
        else:
            yield part


def _looks_at_initial_values(test: unittest.TestCase) -> bool:
    method = getattr(type(test), test.id().rpartition(".")[2], None)
    return method is not None and check_initial_values.__name__ in method.__code__.co_names
