"""Tests of the backend: `python3 -m unittest` in the folder above."""
