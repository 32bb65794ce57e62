"""Begins the measurement in each Python that finds it, if COVERAGE_PROCESS_START is in the environment.

The tests with the program's own interpreter cannot be run by the tool that measures. A Python that may not
write large files is not measured: it could not write down what it has come to either. Nor is one that ends
under daemon threads (TEST_DAEMONS): the measurement damages the heap when its threads are cut off like that.
"""

import os
import resource

import coverage

MAY_WRITE = resource.getrlimit(resource.RLIMIT_FSIZE)[0] == resource.RLIM_INFINITY
if MAY_WRITE and "TEST_DAEMONS" not in os.environ:
    coverage.process_startup()
