"""Has an entry function that is none."""

chart_action_from_cpp = 5  # pylint: disable=invalid-name
