"""Begins the measurement in each Python that has this folder on its path and COVERAGE_PROCESS_START in its environment.

The tests with the program's own interpreter cannot be run by the tool that measures.
"""

import coverage

coverage.process_startup()
