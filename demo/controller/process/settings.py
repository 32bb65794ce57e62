"""The parameters of the process."""

from typing import Protocol


# Values are all that it has.
class ProcessSettings(Protocol):  # pylint: disable=too-few-public-methods
    """What the steps read. The operator may change a value while a step runs, and most steps then follow."""

    #: Conductivities from which, or below which, a medium is what it is, mS/cm.
    threshold_lw_empty: float
    threshold_lw_water: float
    threshold_lw_electrolyte: float
    #: Pressure below which nothing stands against a gas any more, bar.
    threshold_p_blow: float

    #: Leak test: pressure to reach, bar; least rise, bar/s; seconds to hold; greatest loss meanwhile, bar.
    test_leakage_p: bool
    leakage_p_fill: float
    leakage_p_inc_rate: float
    leakage_p_hold_secs: int
    leakage_p_max_loss: float

    #: Blowing out: seconds before the conductivity counts, and seconds after the barrel is empty.
    secs_blow_min: int
    blow_after_empty_secs: int
    co2_blow_after_empty_secs: int

    #: Rinsing: seconds of water, and of gas after it, in each pass.
    secs_pump: int
    secs_blow_after_pump: int
    test_lw_water_hot: bool
    test_lw_water_cold: bool

    #: Circuits with lye and acid: seconds, unless the run cleans intensively.
    lauge_kreis_secs: int
    saure_kreis_secs: int
    test_lw_kreis_lauge: bool
    test_lw_kreis_saure: bool
    test_lauge_level: bool
    use_co2_after_saure: bool

    #: Circuits with water, on the older machine: seconds to fill them and to pump the water round.
    hot_kreis_fill_secs_legacy: int
    hot_kreis_clean_secs_legacy: int
    cold_kreis_fill_secs_legacy: int
    cold_kreis_clean_secs_legacy: int

    #: Steam: seconds of steam and of the gas after it.
    steam_sterilization_secs: int
    steam_co2_blow_secs: int

    #: Pressure that the barrel is left under, bar.
    vorspannen_p: float

    #: Test of a bath: seconds for which the set point has to be held.
    lw_test_hold_secs: int
