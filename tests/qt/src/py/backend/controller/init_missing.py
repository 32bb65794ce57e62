"""Has no init."""
