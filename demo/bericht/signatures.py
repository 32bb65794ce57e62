"""Who signs a report."""

from typing import Final

SIGNATURES: Final = ("Datum", "Bedienung, Unterschrift", "Geprüft, Unterschrift")
