"""Tells at its import from where the interpreter takes its packages."""

import importlib
import sys

print("argv", sys.argv[0])
print("executable", sys.executable)
print("prefix", sys.prefix)
print("base prefix", sys.base_prefix)
print("package", importlib.import_module("package_of_the_environment").__file__)
