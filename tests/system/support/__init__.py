"""What the whole-program tests and the tour are made of."""
