"""The cleaning process, and the port to the machine that it runs on.

Nothing here knows the host: all of it runs, step by step, in a plain Python interpreter.
"""
