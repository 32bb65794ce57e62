# Written by the program's option --make-stubs.
"""What a backend hands to `brovik`, or gets from it, as a `dict`.

Types alone: at run time there is no module `brovik.records`. Import it below `if TYPE_CHECKING:`.
"""

from typing import Any, Literal, NotRequired, TypeAlias, TypedDict


#: Of a message or a question: it tells the colour of the title.
Category: TypeAlias = Literal["info", "warning", "error", "success"]


class InstalledPackage(TypedDict):
    """One of `Shell.installed`."""

    name: str
    version: str
    #: Architecture.
    arch: str
    description: str
    #: What `LocalChangelog` is sent with; empty without a changelog.
    name2: str


class AvailablePackage(TypedDict):
    """One of `Shell.upgradables`."""

    name: str
    #: On offer.
    versionNew: str
    #: Installed.
    versionOld: str
    #: "low", "medium", "high" or another word.
    urgency: str
    #: The latest changes.
    lastChange: list[str]
    #: What `Changelog` is sent with; empty without a changelog.
    changelogAvailable: str


class NetworkInterface(TypedDict):
    """One of `Wifi.ip_map_list`."""

    name: str
    #: IPv4 address.
    ip4: str
    #: Without one, `is_wg` is not looked at, and a name that begins with "wg" is one of WireGuard.
    type_: NotRequired[str]
    #: Whether it is a WireGuard interface, which gets a button.
    is_wg: bool


class FoundNetwork(TypedDict):
    """One of `Wifi.scan_results`, under its name."""

    #: Percent.
    quality: NotRequired[float]
    #: It uses the 5 GHz band.
    is5GHz: bool


class QuestionOptions(TypedDict, total=False):
    """Options of `Gui.question`. What a dialog takes besides goes into a class derived from this one."""

    #: Positive; the answer and `Gui.close_dialog` name the dialog by it. Without one it gets a negative one.
    id: int
    #: Label of the button that accepts; "OK" if empty, no button if None.
    yes: str | None
    #: Label of the button that rejects; no button if empty.
    no: str
    category: Category
    #: Colour of the title in place of that of the category: a name or "#rrggbb".
    color: str
    #: What `current` of a `DialogReport` tells of the dialog.
    description: Any
    #: False keeps it closed.
    open: bool
    #: Name of another dialog that the screens have registered.
    component: str


class SimulatorDefaults(TypedDict):
    """What `Simulator.get_default_values` gives."""

    enabled: bool
    scale_factor: float


class DialogAnswer(TypedDict):
    """How a dialog was left."""

    #: Accepted.
    a: bool
    #: The value that it gave.
    v: NotRequired[Any]


#: The value of `GuiEnum.DialogData`. "current" is the uppermost dialog, `[id, description]`, or None if none
#: is open; every other key is the id of a dialog that was left.
DialogReport: TypeAlias = dict[str, DialogAnswer | list[Any] | None]
