"""The start of the conductivity's measurement, which the backend does once and which never ends."""

import unittest

import _probe
from brovik import sensor
from waiting import eventually

SENSOR = sensor.Sensor


class LwTimerTest(unittest.TestCase):
    """brovik.sensor.Sensor.init_lw_timer() on a thread of Python."""

    def test_the_period_runs_on_the_gui_thread(self) -> None:
        """The call comes back while the GUI thread is busy; there the timer starts once that has time."""
        SENSOR.lw_sensor_defective = False
        log = _probe.LogCapture()
        signals = _probe.SignalLog("Sensor")
        with _probe.BusyGuiThread():
            SENSOR.init_lw_timer()
            self.assertEqual(signals.threads, [("_initLwTimerSignal", False)])
        self.assertTrue(eventually(lambda: bool(SENSOR.lw_sensor_defective)))
        self.assertEqual(signals.threads[1:], [("lwSensorDefectiveChanged", True)])
        self.assertEqual(log.messages, [])


if __name__ == "__main__":
    unittest.main()
