"""Small backends for the board, which drive its GPIO chip."""

#: Lines of the GPIO chip: one that a backend drives, one that it listens to.
OUTPUT, INPUT = 5, 2
FOLDER = "/opt/brovik/kb/py"

_IGNORES = """

def _ignore(*_arguments):
    pass


actuator_toggle_from_cpp = auto_value_from_cpp = chart_action_from_cpp = gui_value_from_cpp = _ignore
sensor_value_from_cpp = shell_action_from_cpp = simulator_value_from_cpp = _ignore
settings_from_cpp = wifi_action_from_cpp = _ignore
"""

#: Switches an output off when it starts, and on with the automatic run; the function that the press has
#: called never comes back.
HANGS = f"""
import threading
import gpiod
from brovik.auto import Auto
from brovik.gui import Gui

_chip = gpiod.Chip("/dev/gpiochip0")
_line = _chip.get_line({OUTPUT})
_line.request(consumer="controller", type=gpiod.LINE_REQ_DIR_OUT, default_vals=[0])


def init(_debug):
    Gui.status = "Bereit"

{_IGNORES}

def wait_for_a_valve_that_never_answers():
    threading.Event().wait()


def auto_value_from_cpp(_action, _value):
    Auto.active = True
    _line.set_value(1)
    wait_for_a_valve_that_never_answers()
"""

#: Shows how many falling edges the host has counted, and where Python comes from.
COUNTS = f"""
import sys
import threading
from brovik.gpio import GPIO
from brovik.gui import Gui
from brovik.sensor import Sensor


def _show():
    end = threading.Event()
    while not end.wait(0.2):
        Gui.status = f"{{Sensor.lw_ticks}} Flanken, {{sys.prefix}}"


def init(_debug):
    GPIO.open_chip("/dev/gpiochip0")
    Sensor.setup_lw_edge_detect({INPUT})
    threading.Thread(target=_show, daemon=True).start()

{_IGNORES}
"""
