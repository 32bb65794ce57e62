"""The process parameters of the host by their names, which are also their keys in the file."""

from collections.abc import Mapping
from dataclasses import dataclass
from typing import Any, Final

from brovik.settings import SettingsClass as Host
from brovik.settings import SettingsValues

from .values import Value


@dataclass(frozen=True)
class Setting:
    """One parameter: the properties of the host's class that hold it and its bounds, if it has any.

    A type checker takes the property of a class for a function, hence `Any`.
    """

    holder: Any
    lowest: Any = None
    highest: Any = None

    def read(self) -> Value:
        """The present value."""
        value: Value = self.holder.fget(SettingsValues)
        return value

    def write(self, value: Value) -> None:
        """Changes the value. The host clamps it to the bounds."""
        self.holder.fset(SettingsValues, value)

    def check(self, value: Value) -> None:
        """Raises ValueError outside the bounds; names and switches have none."""
        if self.lowest is None or self.highest is None:
            return
        lowest, highest = self.lowest.fget(SettingsValues), self.highest.fget(SettingsValues)
        if not lowest <= value <= highest:
            raise ValueError(f"{value!r} liegt nicht zwischen {lowest!r} und {highest!r}")


HOST_SETTINGS: Final[Mapping[str, Setting]] = {
    "intense_factor": Setting(Host.intense_factor, Host.intense_factor_min, Host.intense_factor_max),
    "intense_cleaning": Setting(Host.intense_cleaning),
    "threshold_p_blow": Setting(Host.threshold_p_blow, Host.threshold_p_blow_min, Host.threshold_p_blow_max),
    "threshold_lw_empty": Setting(
        Host.threshold_lw_empty, Host.threshold_lw_empty_min, Host.threshold_lw_empty_max
    ),
    "threshold_lw_water": Setting(
        Host.threshold_lw_water, Host.threshold_lw_water_min, Host.threshold_lw_water_max
    ),
    "threshold_lw_electrolyte": Setting(
        Host.threshold_lw_electrolyte, Host.threshold_lw_electrolyte_min, Host.threshold_lw_electrolyte_max
    ),
    "secs_blow_min": Setting(Host.secs_blow_min, Host.secs_blow_min_min, Host.secs_blow_min_max),
    "secs_pump": Setting(Host.secs_pump, Host.secs_pump_min, Host.secs_pump_max),
    "secs_blow_after_pump": Setting(
        Host.secs_blow_after_pump, Host.secs_blow_after_pump_min, Host.secs_blow_after_pump_max
    ),
    "leakage_p_fill": Setting(Host.leakage_p_fill, Host.leakage_p_fill_min, Host.leakage_p_fill_max),
    "leakage_p_inc_rate": Setting(
        Host.leakage_p_inc_rate, Host.leakage_p_inc_rate_min, Host.leakage_p_inc_rate_max
    ),
    "leakage_p_hold_secs": Setting(
        Host.leakage_p_hold_secs, Host.leakage_p_hold_secs_min, Host.leakage_p_hold_secs_max
    ),
    "leakage_p_max_loss": Setting(
        Host.leakage_p_max_loss, Host.leakage_p_max_loss_min, Host.leakage_p_max_loss_max
    ),
    "blow_after_empty_secs": Setting(
        Host.blow_after_empty_secs, Host.blow_after_empty_secs_min, Host.blow_after_empty_secs_max
    ),
    "lauge_kreis_secs": Setting(Host.lauge_kreis_secs, Host.lauge_kreis_secs_min, Host.lauge_kreis_secs_max),
    "saure_kreis_secs": Setting(Host.saure_kreis_secs, Host.saure_kreis_secs_min, Host.saure_kreis_secs_max),
    "do_steam_step": Setting(Host.do_steam_step),
    "steam_sterilization_secs": Setting(
        Host.steam_sterilization_secs, Host.steam_sterilization_secs_min, Host.steam_sterilization_secs_max
    ),
    "steam_co2_blow_secs": Setting(
        Host.steam_co2_blow_secs, Host.steam_co2_blow_secs_min, Host.steam_co2_blow_secs_max
    ),
    "co2_blow_after_empty_secs": Setting(
        Host.co2_blow_after_empty_secs, Host.co2_blow_after_empty_secs_min, Host.co2_blow_after_empty_secs_max
    ),
    "vorspannen_p": Setting(Host.vorspannen_p, Host.vorspannen_p_min, Host.vorspannen_p_max),
    "hot_kreis_fill_secs_legacy": Setting(
        Host.hot_kreis_fill_secs_legacy,
        Host.hot_kreis_fill_secs_legacy_min,
        Host.hot_kreis_fill_secs_legacy_max,
    ),
    "hot_kreis_clean_secs_legacy": Setting(
        Host.hot_kreis_clean_secs_legacy,
        Host.hot_kreis_clean_secs_legacy_min,
        Host.hot_kreis_clean_secs_legacy_max,
    ),
    "cold_kreis_fill_secs_legacy": Setting(
        Host.cold_kreis_fill_secs_legacy,
        Host.cold_kreis_fill_secs_legacy_min,
        Host.cold_kreis_fill_secs_legacy_max,
    ),
    "cold_kreis_clean_secs_legacy": Setting(
        Host.cold_kreis_clean_secs_legacy,
        Host.cold_kreis_clean_secs_legacy_min,
        Host.cold_kreis_clean_secs_legacy_max,
    ),
    "lw_test_hold_secs": Setting(
        Host.lw_test_hold_secs, Host.lw_test_hold_secs_min, Host.lw_test_hold_secs_max
    ),
    "lw_saure_min": Setting(Host.lw_saure_min, Host.lw_saure_min_min, Host.lw_saure_min_max),
    "lw_saure_sp": Setting(Host.lw_saure_sp, Host.lw_saure_sp_min, Host.lw_saure_sp_max),
    "lw_saure_name": Setting(Host.lw_saure_name),
    "lw_lauge_min": Setting(Host.lw_lauge_min, Host.lw_lauge_min_min, Host.lw_lauge_min_max),
    "lw_lauge_sp": Setting(Host.lw_lauge_sp, Host.lw_lauge_sp_min, Host.lw_lauge_sp_max),
    "lw_lauge_name": Setting(Host.lw_lauge_name),
    "test_leakage_p": Setting(Host.test_leakage_p),
    "test_lw_water_cold": Setting(Host.test_lw_water_cold),
    "test_lw_water_hot": Setting(Host.test_lw_water_hot),
    "test_lw_kreis_saure": Setting(Host.test_lw_kreis_saure),
    "test_lw_kreis_lauge": Setting(Host.test_lw_kreis_lauge),
    "test_lauge_level": Setting(Host.test_lauge_level),
    "p_offset": Setting(Host.p_offset),
    "lw_offset": Setting(Host.lw_offset),
    "use_co2_after_saure": Setting(Host.use_co2_after_saure),
}
