"""Signatures of the host's functions and attributes, as Python.

The host's functions carry them in their docstrings.
"""

import re
from typing import Final

_ENUM_DEFAULT: Final = re.compile(r"<(\w+\.\w+): -?\d+>")
_ANY_RECORD: Final = "dict[str, typing.Any]"
#: What the host's functions look at only when they are called: parts of their signatures.
_SHARPER: Final = {
    "outputs: Iterable": "outputs: Iterable[ActuatorEnum]",
    "category: str": "category: brovik.records.Category",
    f"options: {_ANY_RECORD}": "options: brovik.records.QuestionOptions",
    f"results: {_ANY_RECORD}": "results: dict[str, brovik.records.FoundNetwork]",
    "self: brovik.settings.SettingsClass) -> dict": "self) -> dict[str, bool | int | float | str]",
    "self: brovik.simulator.SimulatorClass) -> dict": "self) -> brovik.records.SimulatorDefaults",
    "-> set": "-> set[str]",
}
#: The same for attributes.
_SHARPER_ATTRIBUTES: Final = {
    "installed": "list[brovik.records.InstalledPackage]",
    "upgradables": "list[brovik.records.AvailablePackage]",
    "ip_map_list": "list[brovik.records.NetworkInterface]",
    "scan_results": "dict[str, brovik.records.FoundNetwork]",
}
_OPERATORS: Final = frozenset(
    ("__init__", "__getitem__", "__setitem__", "__iter__", "__next__", "__len__", "__bool__", "__repr__")
)
_OVERLOADED: Final = "(*args, **kwargs)\nOverloaded function.\n"
_OVERLOAD: Final = re.compile(r"^\d+\. ", re.MULTILINE)


def is_told(name: str, value: object) -> bool:
    """Whether a member is meant for backends."""
    if name == "__init__":
        # Else it is what stands in for a constructor that is not there.
        return (value.__doc__ or "").startswith(name)
    return name in _OPERATORS or not name.startswith("__")


def property_type(name: str, value: property) -> str:
    """The type of an attribute."""
    told = str(getattr(value.fget, "__doc__", "")).rpartition("-> ")[2].strip()
    return _SHARPER_ATTRIBUTES[name] if _ANY_RECORD in told else told


def function_text(name: str, doc: str | None, indent: str) -> str:
    """A function whose docstring begins with its signature, or lists the signatures that it has."""
    if _OVERLOADED in (doc or ""):
        overloads = _OVERLOAD.split(str(doc).partition(_OVERLOADED)[2])[1:]
        return "".join(
            f"{indent}@typing.overload\n{function_text(name, overload, indent)}" for overload in overloads
        )
    signature, _, doc = (doc or "").partition("\n")
    for told, sharper in _SHARPER.items():
        signature = re.sub(rf"(?<!\w){re.escape(told)}(?![\[\w])", sharper, signature)
    signature = _ENUM_DEFAULT.sub(r"\1", signature)
    _, opening, arguments = signature.partition("(")
    arguments = re.sub(r"^self: [\w.]+", "self", arguments)
    if not opening:
        return f"{indent}def {name}(*args: Any) -> Any: ...\n"
    head = f"{indent}def {name}({arguments}:"
    return f"{head}\n{doc_text(doc, indent + '    ')}" if doc.strip() else f"{head} ...\n"


def doc_text(doc: str | None, indent: str) -> str:
    """A docstring, or nothing."""
    return f'{indent}"""{doc.strip()}"""\n' if doc and doc.strip() else ""
