"""The two baths, as the screens show them.

`Auto` has the same attributes for each, and the settings two of them. Conductivities are in mS/cm.
"""

from abc import ABC, abstractmethod
from collections.abc import Mapping
from typing import Final

from brovik.auto import Auto
from brovik.settings import SettingsValues

from .process.recipe import Electrolyte, Limits


class BathView(ABC):
    """One bath. For any thread."""

    @property
    @abstractmethod
    def active(self) -> bool:
        """Whether the test of this bath is running."""

    @property
    @abstractmethod
    def peak(self) -> float:
        """Highest conductivity that has been shown, mS/cm."""

    @property
    @abstractmethod
    def too_low(self) -> bool:
        """Whether the bath is shown to stay below its minimum."""

    @property
    @abstractmethod
    def wished_limits(self) -> Limits:
        """The limits in the settings, mS/cm."""

    @abstractmethod
    def show_active(self, active: bool) -> None:
        """Shows whether the test of this bath is running."""

    @abstractmethod
    def show_limits(self, limits: Limits) -> None:
        """Shows the limits that are in force for a job, mS/cm."""

    @abstractmethod
    def show_peak(self, conductivity: float) -> None:
        """Shows the highest conductivity so far, mS/cm."""

    @abstractmethod
    def show_too_low(self, too_low: bool) -> None:
        """Shows whether the bath stays below its minimum."""


class AcidView(BathView):
    """The acid bath."""

    @property
    def active(self) -> bool:
        return Auto.lw_saure_active

    @property
    def peak(self) -> float:
        return Auto.lw_saure_max

    @property
    def too_low(self) -> bool:
        return Auto.lw_saure_too_low

    @property
    def wished_limits(self) -> Limits:
        return Limits(SettingsValues.lw_saure_min, SettingsValues.lw_saure_sp)

    def show_active(self, active: bool) -> None:
        Auto.lw_saure_active = active

    def show_limits(self, limits: Limits) -> None:
        Auto.lw_saure_min = limits.minimum
        Auto.lw_saure_sp = limits.set_point

    def show_peak(self, conductivity: float) -> None:
        Auto.lw_saure_max = conductivity

    def show_too_low(self, too_low: bool) -> None:
        Auto.lw_saure_too_low = too_low


class LyeView(BathView):
    """The lye bath."""

    @property
    def active(self) -> bool:
        return Auto.lw_lauge_active

    @property
    def peak(self) -> float:
        return Auto.lw_lauge_max

    @property
    def too_low(self) -> bool:
        return Auto.lw_lauge_too_low

    @property
    def wished_limits(self) -> Limits:
        return Limits(SettingsValues.lw_lauge_min, SettingsValues.lw_lauge_sp)

    def show_active(self, active: bool) -> None:
        Auto.lw_lauge_active = active

    def show_limits(self, limits: Limits) -> None:
        Auto.lw_lauge_min = limits.minimum
        Auto.lw_lauge_sp = limits.set_point

    def show_peak(self, conductivity: float) -> None:
        Auto.lw_lauge_max = conductivity

    def show_too_low(self, too_low: bool) -> None:
        Auto.lw_lauge_too_low = too_low


BATH_VIEWS: Final[Mapping[Electrolyte, BathView]] = {
    Electrolyte.ACID: AcidView(),
    Electrolyte.LYE: LyeView(),
}
