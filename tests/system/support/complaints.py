"""What the program's log complains of."""

from support.panel import Panel

# Because a machine for tests is not the real one: it has no session directory and no dictionaries for the
# on-screen keyboard; beside all the other tests, the start of a backend may take long.
_HARMLESS = ("XDG_RUNTIME_DIR", "Hunspell dictionary is missing", "init läuft seit 2 s")


def complaints(program: Panel, *expected: str) -> list[str]:
    """The warnings and errors so far, but for those that hold one of these texts."""
    lines = (line for line in program.log if line.startswith(("[WARN", "[CRIT", "[FATAL")))
    return [line for line in lines if not any(known in line for known in (*_HARMLESS, *expected))]
