"""A machine that is not there. A backend of a real one goes without this folder.

`plant`, `faults` and `dosing` know nothing of the host.
"""
