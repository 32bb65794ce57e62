"""The console of the update page."""

from html import escape

from brovik.shell import Shell


class Console:
    """Lines on the operator's console, which takes rich text: what is printed is shown as it is."""

    def out(self, text: str) -> None:
        """A line of the standard output."""
        Shell.append_stdout(escape(text))

    def err(self, text: str) -> None:
        """A line of the error output."""
        Shell.append_stderr(escape(text))
