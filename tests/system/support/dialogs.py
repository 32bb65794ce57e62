"""What the dialogs tell the backend."""

import ast
from typing import Any

from support.panel import Panel

IMPORT = "from brovik import gui; "


def dialog_data(program: Panel) -> list[Any]:
    """What the dialogs have told the backend so far."""
    start = "GuiEnum.DialogData "
    calls = program.calls("gui_value_from_cpp")
    return [ast.literal_eval(call.removeprefix(start)) for call in calls if call.startswith(start)]
