"""Is imported only when the test asks for a page."""

from brovik.gui import PageEnum

from controller.telling import tell_call, wait_for_page

tell_call("import begins")
wait_for_page(PageEnum.Chart)
tell_call("import ends")


def init(_debug: bool) -> None:
    """Tells that the start goes on."""
    tell_call("init")


def gui_value_from_cpp(what: object, value: object) -> None:
    """A report of the screens."""
    tell_call("gui_value_from_cpp", what, value)
