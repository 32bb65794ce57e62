# Written by the program's option --make-stubs.
import typing
from collections.abc import Iterable
from typing import Any, ClassVar, Dict, List, Optional, Set, Tuple
import brovik.records

class PageEnum:
    """The pages of the program."""
    __members__: ClassVar[dict[str, PageEnum]]
    Auto: ClassVar[PageEnum]
    SettingsAuto: ClassVar[PageEnum]
    SettingsElectrolyte: ClassVar[PageEnum]
    SettingsMisc: ClassVar[PageEnum]
    SettingsNetwork: ClassVar[PageEnum]
    SettingsAppearance: ClassVar[PageEnum]
    WifiLogin: ClassVar[PageEnum]
    HandOp: ClassVar[PageEnum]
    Chart: ClassVar[PageEnum]
    ChartsList: ClassVar[PageEnum]
    UpdatesOverview: ClassVar[PageEnum]
    UpdatesAvailable: ClassVar[PageEnum]
    UpdatesInstalled: ClassVar[PageEnum]
    UpdatesConsole: ClassVar[PageEnum]
    UpdatesShell: ClassVar[PageEnum]
    def __init__(self, value: int) -> None: ...
    def __int__(self) -> int: ...
    def __index__(self) -> int: ...
    def __eq__(self, other: object) -> bool: ...
    def __hash__(self) -> int: ...
    @property
    def name(self) -> str: ...
    @property
    def value(self) -> int: ...

class IconEnum:
    """Icons of a toast."""
    __members__: ClassVar[dict[str, IconEnum]]
    Saved: ClassVar[IconEnum]
    Smiley: ClassVar[IconEnum]
    Info: ClassVar[IconEnum]
    def __init__(self, value: int) -> None: ...
    def __int__(self) -> int: ...
    def __index__(self) -> int: ...
    def __eq__(self, other: object) -> bool: ...
    def __hash__(self) -> int: ...
    @property
    def name(self) -> str: ...
    @property
    def value(self) -> int: ...

class ColorEnum:
    """Backgrounds of a toast."""
    __members__: ClassVar[dict[str, ColorEnum]]
    Transparent: ClassVar[ColorEnum]
    Green: ClassVar[ColorEnum]
    def __init__(self, value: int) -> None: ...
    def __int__(self) -> int: ...
    def __index__(self) -> int: ...
    def __eq__(self, other: object) -> bool: ...
    def __hash__(self) -> int: ...
    @property
    def name(self) -> str: ...
    @property
    def value(self) -> int: ...

class GuiEnum:
    """What the screens report."""
    __members__: ClassVar[dict[str, GuiEnum]]
    Ready: ClassVar[GuiEnum]
    DeleteWarnings: ClassVar[GuiEnum]
    FlashPico: ClassVar[GuiEnum]
    PopupOpened: ClassVar[GuiEnum]
    DialogData: ClassVar[GuiEnum]
    def __init__(self, value: int) -> None: ...
    def __int__(self) -> int: ...
    def __index__(self) -> int: ...
    def __eq__(self, other: object) -> bool: ...
    def __hash__(self) -> int: ...
    @property
    def name(self) -> str: ...
    @property
    def value(self) -> int: ...

class PopupEnum:
    """Popups that the backend may request."""
    __members__: ClassVar[dict[str, PopupEnum]]
    Fullen: ClassVar[PopupEnum]
    Recovery: ClassVar[PopupEnum]
    def __init__(self, value: int) -> None: ...
    def __int__(self) -> int: ...
    def __index__(self) -> int: ...
    def __eq__(self, other: object) -> bool: ...
    def __hash__(self) -> int: ...
    @property
    def name(self) -> str: ...
    @property
    def value(self) -> int: ...

class GuiClass:
    """Speaks to the operator."""
    @property
    def page(self) -> PageEnum:
        """The current page."""
    @page.setter
    def page(self, value: PageEnum) -> None: ...
    @property
    def indicate_scrollable(self) -> bool:
        """Shadows may show that an area can be scrolled."""
    @indicate_scrollable.setter
    def indicate_scrollable(self, value: bool) -> None: ...
    @property
    def status(self) -> str:
        """Status line under the header."""
    @status.setter
    def status(self, value: str) -> None: ...
    @property
    def status2(self) -> str:
        """Text in the header."""
    @status2.setter
    def status2(self, value: str) -> None: ...
    @property
    def status3(self) -> str:
        """Line of the automatic page; hidden while empty."""
    @status3.setter
    def status3(self, value: str) -> None: ...
    @property
    def fsize_xs(self) -> float:
        """Very small font, points."""
    @fsize_xs.setter
    def fsize_xs(self, value: float) -> None: ...
    @property
    def fsize_s(self) -> float:
        """Small font, points."""
    @fsize_s.setter
    def fsize_s(self, value: float) -> None: ...
    @property
    def fsize_m(self) -> float:
        """Medium font, points."""
    @fsize_m.setter
    def fsize_m(self, value: float) -> None: ...
    @property
    def fsize_l(self) -> float:
        """Large font, points."""
    @fsize_l.setter
    def fsize_l(self, value: float) -> None: ...
    @property
    def hsize(self) -> float:
        """Font of headings, points."""
    @hsize.setter
    def hsize(self, value: float) -> None: ...
    @property
    def control_height(self) -> int:
        """Height of controls, pixels."""
    @control_height.setter
    def control_height(self, value: int) -> None: ...
    @property
    def box_left_margin(self) -> int:
        """Left margin of boxes, pixels."""
    @box_left_margin.setter
    def box_left_margin(self, value: int) -> None: ...
    def close_dialog(self, id_: int, accept: bool = False) -> None:
        """Closes the open dialog of this id."""
    def close_current_dialog(self, accept: bool) -> None:
        """Closes the top dialog."""
    def toast_notify(self, text: str, icon_enum: IconEnum, color_enum: ColorEnum = ColorEnum.Transparent, duration: int = 1000) -> None:
        """Shows a short note with an icon, for `duration` milliseconds."""
    def toast_warn(self, text: str, duration: int = 1000) -> None:
        """Shows a short warning, for `duration` milliseconds."""
    def set_warnings_dialog_data(self, count: int, title: str, text: str, yes_txt: str) -> None: ...
    def set_pico_stdout(self, arg0: str) -> None:
        """Output of the microcontroller's update. No screen shows it."""
    def set_pico_stderr(self, arg0: str) -> None:
        """Errors of the microcontroller's update. No screen shows them."""
    def set_pico_return_value(self, arg0: int) -> None:
        """Result of the microcontroller's update. No screen shows it."""
    def show_poweroff_dialog(self) -> None:
        """Opens the power popup."""
    def request_popup(self, which: PopupEnum, id_: int) -> None:
        """Asks for a popup. No screen has one at present."""
    def message(self, title: str, text: str, category: brovik.records.Category) -> None:
        """Opens a message; categories: info, warning, error, success."""
    def question(self, title: str, text: str, options: brovik.records.QuestionOptions) -> None:
        """Opens a question; docs/backend.md tells its options."""
    def apply_items_scale(self, factor: float) -> None:
        """Multiplies the present sizes."""
    def apply_items_scale_to_default(self, factor: float) -> None:
        """Sets all sizes to their defaults times the factor."""

Gui: GuiClass
