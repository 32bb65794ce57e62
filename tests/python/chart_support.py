"""What the tests of the chart have in common."""

import unittest

import _probe
from brovik import chart
from brovik.chart import ChartMetaDataList
from shared_properties import Attribute

CHART = chart.Chart

ATTRIBUTES = [
    Attribute("active", "active", False, True),
    Attribute("savable", "savable", False, True),
    Attribute("current_name", "currentName", "Kein Chart geladen", "Lauf <b>1</b>"),
    Attribute("assigned_names", "assignedNames", [], ["a", "ä"]),
    Attribute("step_names", "stepNames", [], ["Spülen", "Prüfen"]),
    Attribute("actuator_names", "actuatorNames", [], ["Lauge IN"]),
]


class ChartCase(unittest.TestCase):
    """Leaves the chart as it was made."""

    def setUp(self) -> None:
        self.addCleanup(self.restore)

    def restore(self) -> None:
        """The state at start."""
        CHART.clear()
        CHART.meta_data_list = ChartMetaDataList()
        for attribute in ATTRIBUTES:
            setattr(CHART, attribute.name, attribute.initial)
        _probe.settle()
