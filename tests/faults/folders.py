"""Folders of tests."""

import tempfile
import unittest
from pathlib import Path


def new_folder(test: unittest.TestCase) -> Path:
    """A folder that goes with the test."""
    # The test takes it along: enterContext() ends it.
    folder = tempfile.TemporaryDirectory()  # pylint: disable=consider-using-with
    return Path(test.enterContext(folder))
