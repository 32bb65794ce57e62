"""What a backend shows but seldom, or for a moment only: the exception, long messages, toasts."""

from support import panel
from support.album import Album
from support.look import Look
from support.panel import Panel

_HOUR_MSECS = 3_600_000
_LONG = (
    "Die Leitwertprüfung der Lauge wurde nicht bestanden: Der Sollwert von 60 mS/cm wurde nicht erreicht. "
    "Bitte Lauge nachfüllen, umrühren und die Prüfung wiederholen."
)
_MESSAGE = f"gui.Gui.message('Leitwertprüfung', {_LONG!r}, 'warning')"
_EXCEPTION = """
import json, brovik
try:
    json.loads("{'kein': 'JSON'}")
except ValueError:
    brovik.forward_exception()
"""
_TOASTS = {
    "toast-gespeichert": (
        "Offset gespeichert",
        "notify('Offset gespeichert', gui.IconEnum.Saved, gui.ColorEnum.Green, {})",
    ),
    "toast-hinweis": ("Alles in Ordnung", "notify('Alles in Ordnung', gui.IconEnum.Smiley, duration={})"),
    "toast-warnung": (_LONG, f"warn({_LONG!r}, {{}})"),
}


def guest() -> Panel:
    """The program with a backend that does what it is told, and with a settings file that is none."""
    program = panel.remote()
    panel.store_window(program.directory, b"[window\n")
    return program


def take_damaged_window(program: Panel, look: Look, album: Album) -> None:
    """The message of that file. The window is dark then, for it has forgotten its theme."""
    program.wait_until_shown("Einstellungen")
    if look.dark:
        program.resize(look.width, look.height)
        album.take("fenster-beschaedigt", program.window)
    program.click("OK")
    program.wait_until_gone("Einstellungen")


def take_dialogs(program: Panel, look: Look, album: Album) -> None:
    """A message, an exception and toasts."""
    program.wait_until_shown(panel.READY)
    look.put_on(program)
    _take_message(program, album)
    _take_exception(program, album)
    _take_toasts(program, album)


def _take_message(program: Panel, album: Album) -> None:
    program.backend(f"from brovik import gui; {_MESSAGE}")
    _take_dialog(program, album, "Leitwertprüfung", "meldung")
    _close(program, "Leitwertprüfung")


def _take_exception(program: Panel, album: Album) -> None:
    program.backend(_EXCEPTION)
    _take_dialog(program, album, "JSONDecodeError", "ausnahme")
    program.click("Traceback")
    _take_dialog(program, album, "Traceback (letzter Aufruf zum Schluss):", "ausnahme-traceback")
    _close(program, "JSONDecodeError")


def _take_dialog(program: Panel, album: Album, text: str, name: str) -> None:
    program.wait_until_shown(text)
    album.take(name, program.window)


def _close(program: Panel, text: str) -> None:
    program.click("OK")
    program.wait_until_gone(text)


def _take_toasts(program: Panel, album: Album) -> None:
    for name, (text, call) in _TOASTS.items():
        _toast(program, call.format(_HOUR_MSECS))
        _take_dialog(program, album, text, name)
        _toast(program, call.format(1))
        program.wait_until_gone(text)


def _toast(program: Panel, call: str) -> None:
    program.backend(f"from brovik import gui; gui.Gui.toast_{call}")
