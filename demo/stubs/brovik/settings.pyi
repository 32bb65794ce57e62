# Written by the program's option --make-stubs.
import typing
from collections.abc import Iterable
from typing import Any, ClassVar, Dict, List, Optional, Set, Tuple

class SettingsEnum:
    """What a screen asks to be changed."""
    __members__: ClassVar[dict[str, SettingsEnum]]
    Invalid: ClassVar[SettingsEnum]
    intense_factor: ClassVar[SettingsEnum]
    intense_cleaning: ClassVar[SettingsEnum]
    threshold_p_blow: ClassVar[SettingsEnum]
    threshold_lw_empty: ClassVar[SettingsEnum]
    threshold_lw_water: ClassVar[SettingsEnum]
    threshold_lw_electrolyte: ClassVar[SettingsEnum]
    secs_blow_min: ClassVar[SettingsEnum]
    secs_pump: ClassVar[SettingsEnum]
    secs_blow_after_pump: ClassVar[SettingsEnum]
    leakage_p_fill: ClassVar[SettingsEnum]
    leakage_p_inc_rate: ClassVar[SettingsEnum]
    leakage_p_hold_secs: ClassVar[SettingsEnum]
    leakage_p_max_loss: ClassVar[SettingsEnum]
    blow_after_empty_secs: ClassVar[SettingsEnum]
    lauge_kreis_secs: ClassVar[SettingsEnum]
    hot_kreis_fill_secs_legacy: ClassVar[SettingsEnum]
    hot_kreis_clean_secs_legacy: ClassVar[SettingsEnum]
    saure_kreis_secs: ClassVar[SettingsEnum]
    cold_kreis_fill_secs_legacy: ClassVar[SettingsEnum]
    cold_kreis_clean_secs_legacy: ClassVar[SettingsEnum]
    co2_blow_after_empty_secs: ClassVar[SettingsEnum]
    vorspannen_p: ClassVar[SettingsEnum]
    do_steam_step: ClassVar[SettingsEnum]
    steam_sterilization_secs: ClassVar[SettingsEnum]
    steam_co2_blow_secs: ClassVar[SettingsEnum]
    lw_test_hold_secs: ClassVar[SettingsEnum]
    lw_saure_min: ClassVar[SettingsEnum]
    lw_saure_sp: ClassVar[SettingsEnum]
    lw_saure_name: ClassVar[SettingsEnum]
    lw_lauge_min: ClassVar[SettingsEnum]
    lw_lauge_sp: ClassVar[SettingsEnum]
    lw_lauge_name: ClassVar[SettingsEnum]
    test_leakage_p: ClassVar[SettingsEnum]
    test_lw_water_cold: ClassVar[SettingsEnum]
    test_lw_water_hot: ClassVar[SettingsEnum]
    test_lw_kreis_lauge: ClassVar[SettingsEnum]
    test_lw_kreis_saure: ClassVar[SettingsEnum]
    test_lauge_level: ClassVar[SettingsEnum]
    POffsetSet: ClassVar[SettingsEnum]
    POffsetReset: ClassVar[SettingsEnum]
    LwOffsetSet: ClassVar[SettingsEnum]
    LwOffsetReset: ClassVar[SettingsEnum]
    use_co2_after_saure: ClassVar[SettingsEnum]
    def __init__(self, value: int) -> None: ...
    def __int__(self) -> int: ...
    def __index__(self) -> int: ...
    def __eq__(self, other: object) -> bool: ...
    def __hash__(self) -> int: ...
    @property
    def name(self) -> str: ...
    @property
    def value(self) -> int: ...

class SettingsKeys:
    """Names of keys that have no enumerator of their own."""
    def __init__(self) -> None: ...
    p_offset: ClassVar[str]
    lw_offset: ClassVar[str]
    use_co2_after_saure: ClassVar[str]

class SettingsClass:
    """The parameters of the process."""
    @property
    def intense_factor_min(self) -> float:
        """Lower bound: Factor by which intensive cleaning lengthens the lye and acid circuits."""
    @intense_factor_min.setter
    def intense_factor_min(self, value: float) -> None: ...
    @property
    def intense_factor_max(self) -> float:
        """Upper bound: Factor by which intensive cleaning lengthens the lye and acid circuits."""
    @intense_factor_max.setter
    def intense_factor_max(self, value: float) -> None: ...
    @property
    def intense_factor(self) -> float:
        """Factor by which intensive cleaning lengthens the lye and acid circuits."""
    @intense_factor.setter
    def intense_factor(self, value: float) -> None: ...
    @property
    def intense_factor_default(self) -> float:
        """Default: Factor by which intensive cleaning lengthens the lye and acid circuits."""
    @property
    def intense_cleaning(self) -> bool:
        """Clean intensively."""
    @intense_cleaning.setter
    def intense_cleaning(self, value: bool) -> None: ...
    @property
    def intense_cleaning_default(self) -> bool:
        """Default: Clean intensively."""
    @property
    def threshold_p_blow_min(self) -> float:
        """Lower bound: Pressure threshold of the blowing steps, bar."""
    @threshold_p_blow_min.setter
    def threshold_p_blow_min(self, value: float) -> None: ...
    @property
    def threshold_p_blow_max(self) -> float:
        """Upper bound: Pressure threshold of the blowing steps, bar."""
    @threshold_p_blow_max.setter
    def threshold_p_blow_max(self, value: float) -> None: ...
    @property
    def threshold_p_blow(self) -> float:
        """Pressure threshold of the blowing steps, bar."""
    @threshold_p_blow.setter
    def threshold_p_blow(self, value: float) -> None: ...
    @property
    def threshold_p_blow_default(self) -> float:
        """Default: Pressure threshold of the blowing steps, bar."""
    @property
    def threshold_lw_empty_min(self) -> float:
        """Lower bound: Conductivity under which the medium counts as air, mS/cm."""
    @threshold_lw_empty_min.setter
    def threshold_lw_empty_min(self, value: float) -> None: ...
    @property
    def threshold_lw_empty_max(self) -> float:
        """Upper bound: Conductivity under which the medium counts as air, mS/cm."""
    @threshold_lw_empty_max.setter
    def threshold_lw_empty_max(self, value: float) -> None: ...
    @property
    def threshold_lw_empty(self) -> float:
        """Conductivity under which the medium counts as air, mS/cm."""
    @threshold_lw_empty.setter
    def threshold_lw_empty(self, value: float) -> None: ...
    @property
    def threshold_lw_empty_default(self) -> float:
        """Default: Conductivity under which the medium counts as air, mS/cm."""
    @property
    def threshold_lw_water_min(self) -> float:
        """Lower bound: Conductivity from which the medium counts as water, mS/cm."""
    @threshold_lw_water_min.setter
    def threshold_lw_water_min(self, value: float) -> None: ...
    @property
    def threshold_lw_water_max(self) -> float:
        """Upper bound: Conductivity from which the medium counts as water, mS/cm."""
    @threshold_lw_water_max.setter
    def threshold_lw_water_max(self, value: float) -> None: ...
    @property
    def threshold_lw_water(self) -> float:
        """Conductivity from which the medium counts as water, mS/cm."""
    @threshold_lw_water.setter
    def threshold_lw_water(self, value: float) -> None: ...
    @property
    def threshold_lw_water_default(self) -> float:
        """Default: Conductivity from which the medium counts as water, mS/cm."""
    @property
    def threshold_lw_electrolyte_min(self) -> float:
        """Lower bound: Conductivity from which the medium counts as lye or acid, mS/cm."""
    @threshold_lw_electrolyte_min.setter
    def threshold_lw_electrolyte_min(self, value: float) -> None: ...
    @property
    def threshold_lw_electrolyte_max(self) -> float:
        """Upper bound: Conductivity from which the medium counts as lye or acid, mS/cm."""
    @threshold_lw_electrolyte_max.setter
    def threshold_lw_electrolyte_max(self, value: float) -> None: ...
    @property
    def threshold_lw_electrolyte(self) -> float:
        """Conductivity from which the medium counts as lye or acid, mS/cm."""
    @threshold_lw_electrolyte.setter
    def threshold_lw_electrolyte(self, value: float) -> None: ...
    @property
    def threshold_lw_electrolyte_default(self) -> float:
        """Default: Conductivity from which the medium counts as lye or acid, mS/cm."""
    @property
    def secs_blow_min_min(self) -> int:
        """Lower bound: Blowing out before the conductivity counts, seconds."""
    @secs_blow_min_min.setter
    def secs_blow_min_min(self, value: int) -> None: ...
    @property
    def secs_blow_min_max(self) -> int:
        """Upper bound: Blowing out before the conductivity counts, seconds."""
    @secs_blow_min_max.setter
    def secs_blow_min_max(self, value: int) -> None: ...
    @property
    def secs_blow_min(self) -> int:
        """Blowing out before the conductivity counts, seconds."""
    @secs_blow_min.setter
    def secs_blow_min(self, value: int) -> None: ...
    @property
    def secs_blow_min_default(self) -> int:
        """Default: Blowing out before the conductivity counts, seconds."""
    @property
    def secs_pump_min(self) -> int:
        """Lower bound: Rinsing per pass, seconds."""
    @secs_pump_min.setter
    def secs_pump_min(self, value: int) -> None: ...
    @property
    def secs_pump_max(self) -> int:
        """Upper bound: Rinsing per pass, seconds."""
    @secs_pump_max.setter
    def secs_pump_max(self, value: int) -> None: ...
    @property
    def secs_pump(self) -> int:
        """Rinsing per pass, seconds."""
    @secs_pump.setter
    def secs_pump(self, value: int) -> None: ...
    @property
    def secs_pump_default(self) -> int:
        """Default: Rinsing per pass, seconds."""
    @property
    def secs_blow_after_pump_min(self) -> int:
        """Lower bound: Blowing out per pass after rinsing, seconds."""
    @secs_blow_after_pump_min.setter
    def secs_blow_after_pump_min(self, value: int) -> None: ...
    @property
    def secs_blow_after_pump_max(self) -> int:
        """Upper bound: Blowing out per pass after rinsing, seconds."""
    @secs_blow_after_pump_max.setter
    def secs_blow_after_pump_max(self, value: int) -> None: ...
    @property
    def secs_blow_after_pump(self) -> int:
        """Blowing out per pass after rinsing, seconds."""
    @secs_blow_after_pump.setter
    def secs_blow_after_pump(self, value: int) -> None: ...
    @property
    def secs_blow_after_pump_default(self) -> int:
        """Default: Blowing out per pass after rinsing, seconds."""
    @property
    def leakage_p_fill_min(self) -> float:
        """Lower bound: Pressure that the leak test reaches, bar."""
    @leakage_p_fill_min.setter
    def leakage_p_fill_min(self, value: float) -> None: ...
    @property
    def leakage_p_fill_max(self) -> float:
        """Upper bound: Pressure that the leak test reaches, bar."""
    @leakage_p_fill_max.setter
    def leakage_p_fill_max(self, value: float) -> None: ...
    @property
    def leakage_p_fill(self) -> float:
        """Pressure that the leak test reaches, bar."""
    @leakage_p_fill.setter
    def leakage_p_fill(self, value: float) -> None: ...
    @property
    def leakage_p_fill_default(self) -> float:
        """Default: Pressure that the leak test reaches, bar."""
    @property
    def leakage_p_inc_rate_min(self) -> float:
        """Lower bound: Least rise of the pressure in the leak test, bar/s."""
    @leakage_p_inc_rate_min.setter
    def leakage_p_inc_rate_min(self, value: float) -> None: ...
    @property
    def leakage_p_inc_rate_max(self) -> float:
        """Upper bound: Least rise of the pressure in the leak test, bar/s."""
    @leakage_p_inc_rate_max.setter
    def leakage_p_inc_rate_max(self, value: float) -> None: ...
    @property
    def leakage_p_inc_rate(self) -> float:
        """Least rise of the pressure in the leak test, bar/s."""
    @leakage_p_inc_rate.setter
    def leakage_p_inc_rate(self, value: float) -> None: ...
    @property
    def leakage_p_inc_rate_default(self) -> float:
        """Default: Least rise of the pressure in the leak test, bar/s."""
    @property
    def leakage_p_hold_secs_min(self) -> int:
        """Lower bound: Holding the pressure in the leak test, seconds."""
    @leakage_p_hold_secs_min.setter
    def leakage_p_hold_secs_min(self, value: int) -> None: ...
    @property
    def leakage_p_hold_secs_max(self) -> int:
        """Upper bound: Holding the pressure in the leak test, seconds."""
    @leakage_p_hold_secs_max.setter
    def leakage_p_hold_secs_max(self, value: int) -> None: ...
    @property
    def leakage_p_hold_secs(self) -> int:
        """Holding the pressure in the leak test, seconds."""
    @leakage_p_hold_secs.setter
    def leakage_p_hold_secs(self, value: int) -> None: ...
    @property
    def leakage_p_hold_secs_default(self) -> int:
        """Default: Holding the pressure in the leak test, seconds."""
    @property
    def leakage_p_max_loss_min(self) -> float:
        """Lower bound: Greatest loss of pressure while it is held, bar."""
    @leakage_p_max_loss_min.setter
    def leakage_p_max_loss_min(self, value: float) -> None: ...
    @property
    def leakage_p_max_loss_max(self) -> float:
        """Upper bound: Greatest loss of pressure while it is held, bar."""
    @leakage_p_max_loss_max.setter
    def leakage_p_max_loss_max(self, value: float) -> None: ...
    @property
    def leakage_p_max_loss(self) -> float:
        """Greatest loss of pressure while it is held, bar."""
    @leakage_p_max_loss.setter
    def leakage_p_max_loss(self, value: float) -> None: ...
    @property
    def leakage_p_max_loss_default(self) -> float:
        """Default: Greatest loss of pressure while it is held, bar."""
    @property
    def blow_after_empty_secs_min(self) -> int:
        """Lower bound: Further blowing after the barrel is empty, to drive out CO2, seconds."""
    @blow_after_empty_secs_min.setter
    def blow_after_empty_secs_min(self, value: int) -> None: ...
    @property
    def blow_after_empty_secs_max(self) -> int:
        """Upper bound: Further blowing after the barrel is empty, to drive out CO2, seconds."""
    @blow_after_empty_secs_max.setter
    def blow_after_empty_secs_max(self, value: int) -> None: ...
    @property
    def blow_after_empty_secs(self) -> int:
        """Further blowing after the barrel is empty, to drive out CO2, seconds."""
    @blow_after_empty_secs.setter
    def blow_after_empty_secs(self, value: int) -> None: ...
    @property
    def blow_after_empty_secs_default(self) -> int:
        """Default: Further blowing after the barrel is empty, to drive out CO2, seconds."""
    @property
    def lauge_kreis_secs_min(self) -> int:
        """Lower bound: Lye circuit, seconds."""
    @lauge_kreis_secs_min.setter
    def lauge_kreis_secs_min(self, value: int) -> None: ...
    @property
    def lauge_kreis_secs_max(self) -> int:
        """Upper bound: Lye circuit, seconds."""
    @lauge_kreis_secs_max.setter
    def lauge_kreis_secs_max(self, value: int) -> None: ...
    @property
    def lauge_kreis_secs(self) -> int:
        """Lye circuit, seconds."""
    @lauge_kreis_secs.setter
    def lauge_kreis_secs(self, value: int) -> None: ...
    @property
    def lauge_kreis_secs_default(self) -> int:
        """Default: Lye circuit, seconds."""
    @property
    def saure_kreis_secs_min(self) -> int:
        """Lower bound: Acid circuit, seconds."""
    @saure_kreis_secs_min.setter
    def saure_kreis_secs_min(self, value: int) -> None: ...
    @property
    def saure_kreis_secs_max(self) -> int:
        """Upper bound: Acid circuit, seconds."""
    @saure_kreis_secs_max.setter
    def saure_kreis_secs_max(self, value: int) -> None: ...
    @property
    def saure_kreis_secs(self) -> int:
        """Acid circuit, seconds."""
    @saure_kreis_secs.setter
    def saure_kreis_secs(self, value: int) -> None: ...
    @property
    def saure_kreis_secs_default(self) -> int:
        """Default: Acid circuit, seconds."""
    @property
    def do_steam_step(self) -> bool:
        """Sterilise with steam."""
    @do_steam_step.setter
    def do_steam_step(self, value: bool) -> None: ...
    @property
    def do_steam_step_default(self) -> bool:
        """Default: Sterilise with steam."""
    @property
    def steam_sterilization_secs_min(self) -> int:
        """Lower bound: Sterilising with steam, seconds."""
    @steam_sterilization_secs_min.setter
    def steam_sterilization_secs_min(self, value: int) -> None: ...
    @property
    def steam_sterilization_secs_max(self) -> int:
        """Upper bound: Sterilising with steam, seconds."""
    @steam_sterilization_secs_max.setter
    def steam_sterilization_secs_max(self, value: int) -> None: ...
    @property
    def steam_sterilization_secs(self) -> int:
        """Sterilising with steam, seconds."""
    @steam_sterilization_secs.setter
    def steam_sterilization_secs(self, value: int) -> None: ...
    @property
    def steam_sterilization_secs_default(self) -> int:
        """Default: Sterilising with steam, seconds."""
    @property
    def steam_co2_blow_secs_min(self) -> int:
        """Lower bound: Blowing out with CO2 after sterilising, seconds."""
    @steam_co2_blow_secs_min.setter
    def steam_co2_blow_secs_min(self, value: int) -> None: ...
    @property
    def steam_co2_blow_secs_max(self) -> int:
        """Upper bound: Blowing out with CO2 after sterilising, seconds."""
    @steam_co2_blow_secs_max.setter
    def steam_co2_blow_secs_max(self, value: int) -> None: ...
    @property
    def steam_co2_blow_secs(self) -> int:
        """Blowing out with CO2 after sterilising, seconds."""
    @steam_co2_blow_secs.setter
    def steam_co2_blow_secs(self, value: int) -> None: ...
    @property
    def steam_co2_blow_secs_default(self) -> int:
        """Default: Blowing out with CO2 after sterilising, seconds."""
    @property
    def co2_blow_after_empty_secs_min(self) -> int:
        """Lower bound: Further clocked blowing with CO2 after the barrel is empty, seconds."""
    @co2_blow_after_empty_secs_min.setter
    def co2_blow_after_empty_secs_min(self, value: int) -> None: ...
    @property
    def co2_blow_after_empty_secs_max(self) -> int:
        """Upper bound: Further clocked blowing with CO2 after the barrel is empty, seconds."""
    @co2_blow_after_empty_secs_max.setter
    def co2_blow_after_empty_secs_max(self, value: int) -> None: ...
    @property
    def co2_blow_after_empty_secs(self) -> int:
        """Further clocked blowing with CO2 after the barrel is empty, seconds."""
    @co2_blow_after_empty_secs.setter
    def co2_blow_after_empty_secs(self, value: int) -> None: ...
    @property
    def co2_blow_after_empty_secs_default(self) -> int:
        """Default: Further clocked blowing with CO2 after the barrel is empty, seconds."""
    @property
    def vorspannen_p_min(self) -> float:
        """Lower bound: Pressure under which the barrel is left, bar."""
    @vorspannen_p_min.setter
    def vorspannen_p_min(self, value: float) -> None: ...
    @property
    def vorspannen_p_max(self) -> float:
        """Upper bound: Pressure under which the barrel is left, bar."""
    @vorspannen_p_max.setter
    def vorspannen_p_max(self, value: float) -> None: ...
    @property
    def vorspannen_p(self) -> float:
        """Pressure under which the barrel is left, bar."""
    @vorspannen_p.setter
    def vorspannen_p(self, value: float) -> None: ...
    @property
    def vorspannen_p_default(self) -> float:
        """Default: Pressure under which the barrel is left, bar."""
    @property
    def hot_kreis_fill_secs_legacy_min(self) -> int:
        """Lower bound: Filling the circuit with hot water, seconds. Legacy machine."""
    @hot_kreis_fill_secs_legacy_min.setter
    def hot_kreis_fill_secs_legacy_min(self, value: int) -> None: ...
    @property
    def hot_kreis_fill_secs_legacy_max(self) -> int:
        """Upper bound: Filling the circuit with hot water, seconds. Legacy machine."""
    @hot_kreis_fill_secs_legacy_max.setter
    def hot_kreis_fill_secs_legacy_max(self, value: int) -> None: ...
    @property
    def hot_kreis_fill_secs_legacy(self) -> int:
        """Filling the circuit with hot water, seconds. Legacy machine."""
    @hot_kreis_fill_secs_legacy.setter
    def hot_kreis_fill_secs_legacy(self, value: int) -> None: ...
    @property
    def hot_kreis_fill_secs_legacy_default(self) -> int:
        """Default: Filling the circuit with hot water, seconds. Legacy machine."""
    @property
    def hot_kreis_clean_secs_legacy_min(self) -> int:
        """Lower bound: Pumping the hot water round, seconds. Legacy machine."""
    @hot_kreis_clean_secs_legacy_min.setter
    def hot_kreis_clean_secs_legacy_min(self, value: int) -> None: ...
    @property
    def hot_kreis_clean_secs_legacy_max(self) -> int:
        """Upper bound: Pumping the hot water round, seconds. Legacy machine."""
    @hot_kreis_clean_secs_legacy_max.setter
    def hot_kreis_clean_secs_legacy_max(self, value: int) -> None: ...
    @property
    def hot_kreis_clean_secs_legacy(self) -> int:
        """Pumping the hot water round, seconds. Legacy machine."""
    @hot_kreis_clean_secs_legacy.setter
    def hot_kreis_clean_secs_legacy(self, value: int) -> None: ...
    @property
    def hot_kreis_clean_secs_legacy_default(self) -> int:
        """Default: Pumping the hot water round, seconds. Legacy machine."""
    @property
    def cold_kreis_fill_secs_legacy_min(self) -> int:
        """Lower bound: Filling the circuit with cold water, seconds. Legacy machine."""
    @cold_kreis_fill_secs_legacy_min.setter
    def cold_kreis_fill_secs_legacy_min(self, value: int) -> None: ...
    @property
    def cold_kreis_fill_secs_legacy_max(self) -> int:
        """Upper bound: Filling the circuit with cold water, seconds. Legacy machine."""
    @cold_kreis_fill_secs_legacy_max.setter
    def cold_kreis_fill_secs_legacy_max(self, value: int) -> None: ...
    @property
    def cold_kreis_fill_secs_legacy(self) -> int:
        """Filling the circuit with cold water, seconds. Legacy machine."""
    @cold_kreis_fill_secs_legacy.setter
    def cold_kreis_fill_secs_legacy(self, value: int) -> None: ...
    @property
    def cold_kreis_fill_secs_legacy_default(self) -> int:
        """Default: Filling the circuit with cold water, seconds. Legacy machine."""
    @property
    def cold_kreis_clean_secs_legacy_min(self) -> int:
        """Lower bound: Pumping the cold water round, seconds. Legacy machine."""
    @cold_kreis_clean_secs_legacy_min.setter
    def cold_kreis_clean_secs_legacy_min(self, value: int) -> None: ...
    @property
    def cold_kreis_clean_secs_legacy_max(self) -> int:
        """Upper bound: Pumping the cold water round, seconds. Legacy machine."""
    @cold_kreis_clean_secs_legacy_max.setter
    def cold_kreis_clean_secs_legacy_max(self, value: int) -> None: ...
    @property
    def cold_kreis_clean_secs_legacy(self) -> int:
        """Pumping the cold water round, seconds. Legacy machine."""
    @cold_kreis_clean_secs_legacy.setter
    def cold_kreis_clean_secs_legacy(self, value: int) -> None: ...
    @property
    def cold_kreis_clean_secs_legacy_default(self) -> int:
        """Default: Pumping the cold water round, seconds. Legacy machine."""
    @property
    def lw_test_hold_secs_min(self) -> int:
        """Lower bound: Holding the set point until a bath test is done, seconds."""
    @lw_test_hold_secs_min.setter
    def lw_test_hold_secs_min(self, value: int) -> None: ...
    @property
    def lw_test_hold_secs_max(self) -> int:
        """Upper bound: Holding the set point until a bath test is done, seconds."""
    @lw_test_hold_secs_max.setter
    def lw_test_hold_secs_max(self, value: int) -> None: ...
    @property
    def lw_test_hold_secs(self) -> int:
        """Holding the set point until a bath test is done, seconds."""
    @lw_test_hold_secs.setter
    def lw_test_hold_secs(self, value: int) -> None: ...
    @property
    def lw_test_hold_secs_default(self) -> int:
        """Default: Holding the set point until a bath test is done, seconds."""
    @property
    def lw_saure_min_min(self) -> int:
        """Lower bound: Least conductivity of the acid, mS/cm."""
    @lw_saure_min_min.setter
    def lw_saure_min_min(self, value: int) -> None: ...
    @property
    def lw_saure_min_max(self) -> int:
        """Upper bound: Least conductivity of the acid, mS/cm."""
    @lw_saure_min_max.setter
    def lw_saure_min_max(self, value: int) -> None: ...
    @property
    def lw_saure_min(self) -> int:
        """Least conductivity of the acid, mS/cm."""
    @lw_saure_min.setter
    def lw_saure_min(self, value: int) -> None: ...
    @property
    def lw_saure_min_default(self) -> int:
        """Default: Least conductivity of the acid, mS/cm."""
    @property
    def lw_saure_sp_min(self) -> int:
        """Lower bound: Set point of refreshing the acid, mS/cm."""
    @lw_saure_sp_min.setter
    def lw_saure_sp_min(self, value: int) -> None: ...
    @property
    def lw_saure_sp_max(self) -> int:
        """Upper bound: Set point of refreshing the acid, mS/cm."""
    @lw_saure_sp_max.setter
    def lw_saure_sp_max(self, value: int) -> None: ...
    @property
    def lw_saure_sp(self) -> int:
        """Set point of refreshing the acid, mS/cm."""
    @lw_saure_sp.setter
    def lw_saure_sp(self, value: int) -> None: ...
    @property
    def lw_saure_sp_default(self) -> int:
        """Default: Set point of refreshing the acid, mS/cm."""
    @property
    def lw_saure_name(self) -> str:
        """Product name of the acid."""
    @lw_saure_name.setter
    def lw_saure_name(self, value: str) -> None: ...
    @property
    def lw_lauge_min_min(self) -> int:
        """Lower bound: Least conductivity of the lye, mS/cm."""
    @lw_lauge_min_min.setter
    def lw_lauge_min_min(self, value: int) -> None: ...
    @property
    def lw_lauge_min_max(self) -> int:
        """Upper bound: Least conductivity of the lye, mS/cm."""
    @lw_lauge_min_max.setter
    def lw_lauge_min_max(self, value: int) -> None: ...
    @property
    def lw_lauge_min(self) -> int:
        """Least conductivity of the lye, mS/cm."""
    @lw_lauge_min.setter
    def lw_lauge_min(self, value: int) -> None: ...
    @property
    def lw_lauge_min_default(self) -> int:
        """Default: Least conductivity of the lye, mS/cm."""
    @property
    def lw_lauge_sp_min(self) -> int:
        """Lower bound: Set point of refreshing the lye, mS/cm."""
    @lw_lauge_sp_min.setter
    def lw_lauge_sp_min(self, value: int) -> None: ...
    @property
    def lw_lauge_sp_max(self) -> int:
        """Upper bound: Set point of refreshing the lye, mS/cm."""
    @lw_lauge_sp_max.setter
    def lw_lauge_sp_max(self, value: int) -> None: ...
    @property
    def lw_lauge_sp(self) -> int:
        """Set point of refreshing the lye, mS/cm."""
    @lw_lauge_sp.setter
    def lw_lauge_sp(self, value: int) -> None: ...
    @property
    def lw_lauge_sp_default(self) -> int:
        """Default: Set point of refreshing the lye, mS/cm."""
    @property
    def lw_lauge_name(self) -> str:
        """Product name of the lye."""
    @lw_lauge_name.setter
    def lw_lauge_name(self, value: str) -> None: ...
    @property
    def test_leakage_p(self) -> bool:
        """Start the automatic run with a leak test."""
    @test_leakage_p.setter
    def test_leakage_p(self, value: bool) -> None: ...
    @property
    def test_leakage_p_default(self) -> bool:
        """Default: Start the automatic run with a leak test."""
    @property
    def test_lw_water_cold(self) -> bool:
        """Check for cold water while rinsing."""
    @test_lw_water_cold.setter
    def test_lw_water_cold(self, value: bool) -> None: ...
    @property
    def test_lw_water_cold_default(self) -> bool:
        """Default: Check for cold water while rinsing."""
    @property
    def test_lw_water_hot(self) -> bool:
        """Check for hot water while rinsing."""
    @test_lw_water_hot.setter
    def test_lw_water_hot(self, value: bool) -> None: ...
    @property
    def test_lw_water_hot_default(self) -> bool:
        """Default: Check for hot water while rinsing."""
    @property
    def test_lw_kreis_saure(self) -> bool:
        """Check for acid in the acid circuit."""
    @test_lw_kreis_saure.setter
    def test_lw_kreis_saure(self, value: bool) -> None: ...
    @property
    def test_lw_kreis_saure_default(self) -> bool:
        """Default: Check for acid in the acid circuit."""
    @property
    def test_lw_kreis_lauge(self) -> bool:
        """Check for lye in the lye circuit."""
    @test_lw_kreis_lauge.setter
    def test_lw_kreis_lauge(self, value: bool) -> None: ...
    @property
    def test_lw_kreis_lauge_default(self) -> bool:
        """Default: Check for lye in the lye circuit."""
    @property
    def test_lauge_level(self) -> bool:
        """Check the level of the lye tank for the automatic heating."""
    @test_lauge_level.setter
    def test_lauge_level(self, value: bool) -> None: ...
    @property
    def test_lauge_level_default(self) -> bool:
        """Default: Check the level of the lye tank for the automatic heating."""
    @property
    def p_offset(self) -> float:
        """Offset that is subtracted from the raw pressure, bar."""
    @p_offset.setter
    def p_offset(self, value: float) -> None: ...
    @property
    def p_offset_default(self) -> float:
        """Default: Offset that is subtracted from the raw pressure, bar."""
    @property
    def lw_offset(self) -> float:
        """Offset that is subtracted from the raw conductivity, mS/cm."""
    @lw_offset.setter
    def lw_offset(self, value: float) -> None: ...
    @property
    def lw_offset_default(self) -> float:
        """Default: Offset that is subtracted from the raw conductivity, mS/cm."""
    @property
    def use_co2_after_saure(self) -> bool:
        """Use CO2 after the acid. Read by the backend alone."""
    @use_co2_after_saure.setter
    def use_co2_after_saure(self, value: bool) -> None: ...
    @property
    def use_co2_after_saure_default(self) -> bool:
        """Default: Use CO2 after the acid. Read by the backend alone."""
    def get_default_values(self) -> dict[str, bool | int | float | str]:
        """The default of each key by its name. Always the same dictionary: do not change it."""
    def get_min_max_keys(self) -> set[str]:
        """The names of the bounds. Always the same set: do not change it."""

SettingsValues: SettingsClass
