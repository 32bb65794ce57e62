"""Begins the measurement in each Python that finds it, if COVERAGE_PROCESS_START is in the environment.

The tests with the program's own interpreter cannot be run by the tool that measures.
"""

import coverage

coverage.process_startup()
