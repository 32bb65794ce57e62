"""A backend that fails, as it is put on the board; it drives an output of the board's GPIO chip."""

#: Line of the GPIO chip that the backend drives.
LINE = 5
FOLDER = "/opt/brovik/kb/py"

_BEGIN = f'''
"""A backend of the tests: switches an output off when it starts, and on with the automatic run."""
import time
import gpiod
from brovik.auto import Auto, AutoEnum
from brovik.gui import Gui

print("the backend switches its output off", flush=True)
_chip = gpiod.Chip("/dev/gpiochip0")
_line = _chip.get_line({LINE})
_line.request(consumer="controller", type=gpiod.LINE_REQ_DIR_OUT, default_vals=[0])


def init(_debug):
    Gui.status = "Bereit"


def _ignore(*_arguments):
    pass


actuator_toggle_from_cpp = chart_action_from_cpp = gui_value_from_cpp = _ignore
sensor_value_from_cpp = shell_action_from_cpp = simulator_value_from_cpp = _ignore
settings_from_cpp = wifi_action_from_cpp = _ignore
'''

#: Holds the interpreter in the function that the operator's press has called.
HANGS = (
    _BEGIN
    + """

def wait_for_a_valve_that_never_answers():
    while True:
        time.sleep(1000)


def auto_value_from_cpp(_action, _value):
    Auto.active = True
    _line.set_value(1)
    wait_for_a_valve_that_never_answers()
"""
)
