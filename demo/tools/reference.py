"""Writes the reference of the host's module `brovik`: what a backend finds there, and its values at start."""

import inspect
from collections.abc import Iterator
from types import ModuleType
from typing import Final

from . import records
from .signatures import function_text, is_told, property_type

_HEAD: Final = """\
# The module `brovik`

Written by the program's option `--make-stubs`. Attributes can be read and written unless they are marked as read-only;
bounds and defaults are those of the start.
"""
_TABLE: Final = "| Attribute | Type | Meaning |\n|---|---|---|\n"
#: Where a backend imports the types of records from.
RECORDS: Final = "brovik.records"
_SUFFIXES: Final = ("_min", "_max", "_default")


def reference_text(package: ModuleType) -> str:
    """The text for the package and all of its modules."""
    modules = [module for _, module in inspect.getmembers(package, inspect.ismodule)]
    return "".join((_HEAD, *map(_module_text, (package, *modules)), _records_text()))


def _records_text() -> str:
    """What is handed over as a `dict`."""
    doc = inspect.getdoc(records) or ""
    body = inspect.getsource(records).partition("\n\n\n")[2]
    return f"\n## `{RECORDS}`\n\n{doc}\n\n```python\n{body}```\n"


def _module_text(module: ModuleType) -> str:
    body = "".join(_definitions(module))
    own = f"{module.__name__}."
    return f"\n## `{module.__name__}`\n" + (body.replace(own, "") if "." in module.__name__ else body)


def _definitions(module: ModuleType) -> Iterator[str]:
    told = [value for name, value in vars(module).items() if not name.startswith("__")]
    functions = [value for value in told if inspect.isroutine(value)]
    if functions:
        yield _code(function_text(function.__name__, function.__doc__, "") for function in functions)
    for cls in filter(inspect.isclass, told):
        objects = [name for name, value in vars(module).items() if isinstance(value, cls)]
        yield _class_text(cls, objects[0] if objects else "", vars(module))


def _class_text(cls: type, instance_name: str, module: dict[str, object]) -> str:
    doc = (cls.__doc__ or "").split("\n\nMembers:")[0].strip()
    title = f"`{instance_name}`, of class `{cls.__name__}`" if instance_name else f"`{cls.__name__}`"
    head = f"\n### {title}\n" + (f"\n{doc}\n" if doc else "")
    if hasattr(cls, "__members__"):
        members = getattr(cls, "__members__").items()
        return head + "\n" + ", ".join(f"`{name}`\u00a0{int(value)}" for name, value in members) + "\n"
    return head + _constants(cls) + _attributes(cls, module.get(instance_name)) + _methods(cls)


def _is_constant(value: object) -> bool:
    return type(value).__name__ == "pybind11_static_property"


def _constants(cls: type) -> str:
    names = [name for name, value in vars(cls).items() if _is_constant(value)]
    return "\n" + ", ".join(f"`{name}` {getattr(cls, name)!r}" for name in names) + "\n" if names else ""


def _attributes(cls: type, instance: object) -> str:
    properties = {
        name: value
        for name, value in vars(cls).items()
        if isinstance(value, property) and not _is_constant(value)
    }
    rows = (
        _row(name, value, _bounds(name, properties, instance))
        for name, value in properties.items()
        if not _is_bound(name, properties)
    )
    table = "".join(rows)
    return f"\n{_TABLE}{table}" if table else ""


def _is_bound(name: str, properties: dict[str, property]) -> bool:
    """Told in the row of the attribute that it belongs to."""
    return any(name.endswith(suffix) and name.removesuffix(suffix) in properties for suffix in _SUFFIXES)


def _bounds(name: str, properties: dict[str, property], instance: object) -> str:
    found = [name + suffix for suffix in _SUFFIXES if name + suffix in properties]
    # What belongs to a part of the machine differs from part to part.
    values = [f" {_literal(getattr(instance, bound))}" if instance else "" for bound in found]
    return "".join(f" `{bound}`{value}." for bound, value in zip(found, values))


def _literal(value: object) -> str:
    return str(value) if hasattr(type(value), "__members__") else repr(value)


def _row(name: str, value: property, more: str) -> str:
    doc = " ".join((value.__doc__ or "").split()).replace("|", "\\|")
    access = "" if value.fset else " Read-only."
    return f"| `{name}` | `{property_type(name, value)}` | {doc}{access}{more} |\n"


def _methods(cls: type) -> str:
    methods = {name: value for name, value in vars(cls).items() if is_told(name, value)}
    return _code(
        function_text(name, _unbound(value).__doc__, "")
        for name, value in methods.items()
        if inspect.isroutine(_unbound(value))
    )


def _unbound(value: object) -> object:
    return value.__func__ if isinstance(value, staticmethod) else value


def _code(texts: Iterator[str]) -> str:
    text = "".join(texts)
    return f"\n```python\n{text}```\n" if text else ""
