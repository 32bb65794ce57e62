"""Has no init."""

LACKING = ("init",)
