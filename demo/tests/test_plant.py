"""The model of the machine."""

import unittest

from controller.process.outputs import Output
from controller.simulation.faults import PlantFault
from controller.simulation.plant import Liquid, Plant


def advance(plant: Plant, secs: float, *on: Output) -> None:
    """Lets seconds pass with these outputs on."""
    for _ in range(round(secs * 10)):
        plant.advance(0.1, frozenset(on))


class LiquidTest(unittest.TestCase):
    """Amounts and mixtures."""

    def test_takes_no_more_than_there_is(self) -> None:
        """What is taken is missing afterwards."""
        bath = Liquid(2.0, 50.0)
        self.assertEqual(bath.take(3.0), Liquid(2.0, 50.0))
        self.assertEqual(bath.volume, 0.0)

    def test_mixes_by_volume(self) -> None:
        """Conductivities mix by the volumes."""
        liquid = Liquid(1.0, 10.0)
        liquid.add(Liquid(3.0, 2.0))
        self.assertEqual(liquid, Liquid(4.0, 4.0))

    def test_nothing_added_to_nothing(self) -> None:
        """An empty mixture has no division by zero."""
        liquid = Liquid(0.0, 7.0)
        liquid.add(Liquid(0.0, 3.0))
        self.assertEqual(liquid, Liquid(0.0, 7.0))


class PressureTest(unittest.TestCase):
    """Gas in the barrel."""

    def test_rises_in_the_closed_barrel(self) -> None:
        """At the rate of the plant."""
        plant = Plant()
        advance(plant, 4.0, Output.MV_LUFT)
        self.assertAlmostEqual(plant.pressure, 0.2)

    def test_stays_when_closed(self) -> None:
        """A sound barrel keeps its pressure."""
        plant = Plant(pressure=0.5)
        advance(plant, 60.0)
        self.assertEqual(plant.pressure, 0.5)

    def test_leak(self) -> None:
        """A leaking one loses it, and never more than it has."""
        plant = Plant(frozenset({PlantFault.LEAK}), pressure=0.5)
        advance(plant, 2.0)
        self.assertAlmostEqual(plant.pressure, 0.3)
        advance(plant, 60.0)
        self.assertEqual(plant.pressure, 0.0)

    def test_ends_at_the_supply(self) -> None:
        """No gas gets above its own pressure."""
        plant = Plant()
        advance(plant, 600.0, Output.MV_CO2)
        self.assertAlmostEqual(plant.pressure, 2.5)

    def test_no_gas(self) -> None:
        """Without a supply nothing rises."""
        plant = Plant(frozenset({PlantFault.NO_GAS}))
        advance(plant, 10.0, Output.MV_LUFT, Output.MV_CO2, Output.MV_STEAM)
        self.assertEqual(plant.pressure, 0.0)

    def test_falls_once_the_barrel_is_empty(self) -> None:
        """Liquid stands against the gas, an empty barrel does not."""
        plant = Plant(barrel=Liquid(10.0, 60.0))
        advance(plant, 2.0, Output.MV_LUFT, Output.MV_LAUGE_OUT)
        self.assertGreater(plant.pressure, 0.2)
        advance(plant, 20.0, Output.MV_LUFT, Output.MV_LAUGE_OUT)
        self.assertLess(plant.pressure, 0.01)


class LiquidsTest(unittest.TestCase):
    """Liquid in barrel and pipes."""

    def test_lye_goes_round(self) -> None:
        """From the bath through the barrel and back, past the sensor; blown out, none is lost."""
        plant = Plant()
        circuit = (Output.MV_LAUGE_IN, Output.PUMPE, Output.MV_LAUGE_OUT)
        advance(plant, 20.0, *circuit)
        self.assertAlmostEqual(plant.conductivity, 58.0, places=2)
        self.assertLess(plant.lye.volume, 80.0)
        advance(plant, 20.0, Output.MV_LUFT, Output.MV_LAUGE_OUT)
        self.assertAlmostEqual(plant.lye.volume, 80.0)
        self.assertEqual(plant.barrel.volume, 0.0)

    def test_acid_comes_back_to_its_own_bath(self) -> None:
        """The outlet decides on the bath."""
        plant = Plant(barrel=Liquid(5.0, 19.0))
        advance(plant, 20.0, Output.MV_CO2, Output.MV_SAURE_OUT)
        self.assertAlmostEqual(plant.acid.volume, 85.0)
        self.assertEqual(plant.lye.volume, 80.0)

    def test_without_the_pump_nothing_comes_in(self) -> None:
        """An open valve alone moves nothing."""
        plant = Plant()
        advance(plant, 5.0, Output.MV_KALT, Output.MV_LAUGE_IN)
        self.assertEqual(plant.barrel.volume, 0.0)

    def test_a_barrel_does_not_overflow(self) -> None:
        """Filling ends when it is full."""
        plant = Plant()
        advance(plant, 100.0, Output.MV_KALT, Output.PUMPE)
        self.assertAlmostEqual(plant.barrel.volume, 50.0)

    def test_circulation_shows_what_is_in_the_barrel(self) -> None:
        """The short circuit passes the sensor and keeps the liquid."""
        plant = Plant(barrel=Liquid(6.0, 0.6))
        advance(plant, 10.0, Output.PUMPE, Output.MV_KREIS)
        self.assertAlmostEqual(plant.conductivity, 0.6, places=4)
        self.assertEqual(plant.barrel.volume, 6.0)

    def test_no_water(self) -> None:
        """Without the mains the pump brings nothing."""
        plant = Plant(frozenset({PlantFault.NO_WATER}))
        advance(plant, 5.0, Output.MV_HEISS, Output.PUMPE)
        self.assertEqual(plant.barrel.volume, 0.0)

    def test_gas_dries_the_sensor(self) -> None:
        """Only a gas that flows does."""
        plant = Plant(conductivity=60.0)
        advance(plant, 10.0)
        self.assertEqual(plant.conductivity, 60.0)
        advance(plant, 10.0, Output.MV_LUFT, Output.MV_KANAL)
        self.assertLess(plant.conductivity, 0.01)


class BathsTest(unittest.TestCase):
    """Level, temperature and faults of the baths."""

    def test_level_switch(self) -> None:
        """Follows the volume, unless someone holds it."""
        plant = Plant()
        self.assertTrue(plant.level)
        plant.lye.volume = 10.0
        self.assertFalse(plant.level)
        plant.level_override = True
        self.assertTrue(plant.level)

    def test_heater(self) -> None:
        """Warms the lye; without it the lye cools."""
        plant = Plant(lye_temperature=50.0)
        advance(plant, 60.0, Output.HEAT_1)
        warm = plant.lye_temperature
        self.assertGreater(warm, 54.0)
        advance(plant, 60.0)
        self.assertLess(plant.lye_temperature, warm)

    def test_faults_of_the_baths(self) -> None:
        """Wrong medium, weak baths, low level."""
        self.assertLess(Plant(frozenset({PlantFault.WRONG_MEDIUM})).lye.conductivity, 1.0)
        self.assertEqual(Plant(frozenset({PlantFault.WEAK_BATH})).acid.conductivity, 5.0)
        self.assertFalse(Plant(frozenset({PlantFault.LEVEL})).level)


if __name__ == "__main__":
    unittest.main()
