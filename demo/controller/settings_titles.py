"""What the process parameters are called in records and in the journal, and their units."""

from collections.abc import Mapping
from typing import Final, NamedTuple

BAR: Final = "bar"
CONDUCTIVITY: Final = "mS/cm"
SECS: Final = "s"


class Title(NamedTuple):
    """The title of a parameter; one without a unit is a switch, a name or a factor."""

    text: str
    unit: str = ""


#: By the keys of `settings_table`.
TITLES: Final[Mapping[str, Title]] = {
    "intense_factor": Title("Faktor der Intensivreinigung"),
    "intense_cleaning": Title("Intensivreinigung"),
    "threshold_p_blow": Title("Druck, unter dem das Fass ausgeblasen ist", BAR),
    "threshold_lw_empty": Title("Leitwert, unter dem die Leitung leer ist", CONDUCTIVITY),
    "threshold_lw_water": Title("Leitwert, ab dem Wasser erkannt wird", CONDUCTIVITY),
    "threshold_lw_electrolyte": Title("Leitwert, ab dem Lauge/Säure erkannt wird", CONDUCTIVITY),
    "secs_blow_min": Title("Ausblasen, bevor der Leitwert zählt", SECS),
    "secs_pump": Title("Spülen je Durchgang", SECS),
    "secs_blow_after_pump": Title("Ausblasen je Durchgang", SECS),
    "leakage_p_fill": Title("Dichtheitsprobe: Druck", BAR),
    "leakage_p_inc_rate": Title("Dichtheitsprobe: Drucksteigerung mindestens", "bar/s"),
    "leakage_p_hold_secs": Title("Dichtheitsprobe: Haltezeit", SECS),
    "leakage_p_max_loss": Title("Dichtheitsprobe: Druckverlust höchstens", BAR),
    "blow_after_empty_secs": Title("Entleeren: Ausblasen danach", SECS),
    "lauge_kreis_secs": Title("Lauge-Kreislauf", SECS),
    "saure_kreis_secs": Title("Säure-Kreislauf", SECS),
    "do_steam_step": Title("Dampfsterilisation"),
    "steam_sterilization_secs": Title("Dampfsterilisation: Dauer", SECS),
    "steam_co2_blow_secs": Title("Dampfsterilisation: Ausblasen mit CO2 danach", SECS),
    "co2_blow_after_empty_secs": Title("Getaktetes Ausblasen mit CO2", SECS),
    "vorspannen_p": Title("Vorspanndruck", BAR),
    "hot_kreis_fill_secs_legacy": Title("Heißwasser-Kreislauf: Füllen", SECS),
    "hot_kreis_clean_secs_legacy": Title("Heißwasser-Kreislauf: Spülen", SECS),
    "cold_kreis_fill_secs_legacy": Title("Kaltwasser-Kreislauf: Füllen", SECS),
    "cold_kreis_clean_secs_legacy": Title("Kaltwasser-Kreislauf: Spülen", SECS),
    "lw_test_hold_secs": Title("Leitwertprüfung: Haltezeit des Sollwerts", SECS),
    "lw_saure_min": Title("Säure: Leitwert mindestens", CONDUCTIVITY),
    "lw_saure_sp": Title("Säure: Sollwert", CONDUCTIVITY),
    "lw_saure_name": Title("Säure: Produktname"),
    "lw_lauge_min": Title("Lauge: Leitwert mindestens", CONDUCTIVITY),
    "lw_lauge_sp": Title("Lauge: Sollwert", CONDUCTIVITY),
    "lw_lauge_name": Title("Lauge: Produktname"),
    "test_leakage_p": Title("Prüfung der Dichtheit"),
    "test_lw_water_cold": Title("Prüfung des Leitwerts von Kaltwasser"),
    "test_lw_water_hot": Title("Prüfung des Leitwerts von Heißwasser"),
    "test_lw_kreis_saure": Title("Prüfung des Leitwerts im Säure-Kreislauf"),
    "test_lw_kreis_lauge": Title("Prüfung des Leitwerts im Lauge-Kreislauf"),
    "test_lauge_level": Title("Prüfung des Füllstands im Laugebecken"),
    "p_offset": Title("Offset des Drucksensors", BAR),
    "lw_offset": Title("Offset des Leitwertsensors", CONDUCTIVITY),
    "use_co2_after_saure": Title("CO2 nach der Säure"),
}
