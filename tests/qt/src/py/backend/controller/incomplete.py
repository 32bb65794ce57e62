"""Lacks an entry function."""

LACKING = ("wifi_action_from_cpp",)
