"""A backend that prints every call and runs the code that a test sends over a local socket.

With KUBELOR_TEST_RAISING in the environment, every call fails as well and says so as it should.
"""

import os
import socketserver
import threading
import traceback
from typing import Any, Protocol

import brovik
from brovik.gui import Gui

RAISING = "KUBELOR_TEST_RAISING" in os.environ


class Entry(Protocol):  # pylint: disable=too-few-public-methods
    """An entry function of a backend."""

    def __call__(self, enum: object, value: object = None) -> None:
        ...


# What a test lets an entry function do besides.
answers: dict[str, Entry] = {}


def _fail(text: str) -> None:
    try:
        raise ValueError(text)
    except ValueError:
        brovik.forward_exception()


def _entry(name: str) -> Entry:
    def entry(enum: object, value: object = None) -> None:
        print(f"CALL {name} {enum} {value}\n", end="")
        if name in answers:
            answers[name](enum, value)
        if RAISING:
            _fail(f"{name}({enum}, {value})")

    return entry


actuator_toggle_from_cpp = _entry("actuator_toggle_from_cpp")
auto_value_from_cpp = _entry("auto_value_from_cpp")
chart_action_from_cpp = _entry("chart_action_from_cpp")
gui_value_from_cpp = _entry("gui_value_from_cpp")
sensor_value_from_cpp = _entry("sensor_value_from_cpp")
settings_from_cpp = _entry("settings_from_cpp")
shell_action_from_cpp = _entry("shell_action_from_cpp")
simulator_value_from_cpp = _entry("simulator_value_from_cpp")
wifi_action_from_cpp = _entry("wifi_action_from_cpp")


class _Handler(socketserver.StreamRequestHandler):
    """Runs one piece of code and answers with what it leaves in `result`."""

    def handle(self) -> None:
        names: dict[str, Any] = {"result": ""}
        try:
            exec(self.rfile.read(), names)  # pylint: disable=exec-used
            answer = f"ok {names['result']}"
        except Exception:  # pylint: disable=broad-except
            answer = traceback.format_exc()
        self.wfile.write(answer.encode())


class _Server(socketserver.ThreadingMixIn, socketserver.UnixStreamServer):
    daemon_threads = True


def init(_debug: bool) -> None:
    """Opens the socket."""
    server = _Server(os.environ["KUBELOR_TEST_SOCKET"], _Handler)
    threading.Thread(target=server.serve_forever, daemon=True).start()
    Gui.status = "Testbackend bereit"
