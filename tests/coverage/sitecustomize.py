"""Begins the measurement in each Python that finds it, if COVERAGE_PROCESS_START is in the environment.

The tests with the program's own interpreter cannot be run by the tool that measures. A Python that may not
write large files is not measured: it could not write down what it has come to either.
"""

import resource

import coverage

if resource.getrlimit(resource.RLIMIT_FSIZE)[0] == resource.RLIM_INFINITY:
    coverage.process_startup()
