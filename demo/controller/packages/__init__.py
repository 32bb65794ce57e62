"""Updates of the machine's software. Only `updates`, `records` and `console` know the host."""
