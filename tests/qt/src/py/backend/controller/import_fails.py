"""Cannot be imported."""

raise RuntimeError("kein Import")
