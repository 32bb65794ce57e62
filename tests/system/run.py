#!/usr/bin/python3
"""Runs whole-program tests on a desktop of their own: run.py <module> [unittest options].

KUBELOR_DEMO in the environment is the program's path, KUBELOR_SCREEN_READER that of the library that tells of
its screens.
"""

import sys
import unittest

from support.desktop import Desktop

if __name__ == "__main__":
    with Desktop():
        unittest.main(module=None, argv=["run.py", "-v", *sys.argv[1:]])
