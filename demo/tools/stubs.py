"""Writes stub files of the host's module `brovik` for editors and type checkers.

The host's functions carry their signatures in their docstrings; the files repeat them as Python.
"""

import inspect
import re
import textwrap
from collections.abc import Iterator
from pathlib import Path
from types import ModuleType
from typing import Final

from . import records
from .reference import reference_text
from .signatures import doc_text, function_text, is_told, property_type

_ORIGIN: Final = "# Written by the program's option --make-stubs.\n"
_HEADER: Final = f"""\
{_ORIGIN}import typing
from collections.abc import Iterable
from typing import Any, ClassVar, Dict, List, Optional, Set, Tuple
"""
_ENUM_BODY: Final = """\
    __members__: ClassVar[dict[str, {name}]]
{members}
    def __init__(self, value: int) -> None: ...
    def __int__(self) -> int: ...
    def __index__(self) -> int: ...
    def __eq__(self, other: object) -> bool: ...
    def __hash__(self) -> int: ...
    @property
    def name(self) -> str: ...
    @property
    def value(self) -> int: ...
"""


def write_stubs(package: ModuleType, folder: Path) -> Iterator[Path]:
    """Writes one file for the package and one for each of its modules, and the reference of all.

    Gives the name of each file once it is written. OSError if one cannot be.
    """
    (folder / package.__name__).mkdir(parents=True, exist_ok=True)
    for name, text in stub_texts(package).items():
        file = folder / name
        file.write_text(text, encoding="utf-8")
        yield file


def stub_texts(package: ModuleType) -> dict[str, str]:
    """All files by their names."""
    name = package.__name__
    texts = {f"{name}/__init__.pyi": _module_text(package)}
    for submodule, module in inspect.getmembers(package, inspect.ismodule):
        texts[f"{name}/{submodule}.pyi"] = _module_text(module)
    texts[f"{name}/records.pyi"] = _ORIGIN + inspect.getsource(records)
    texts[f"{name}.md"] = reference_text(package)
    return texts


def _module_text(module: ModuleType) -> str:
    body = "\n".join(_definitions(module))
    own = f"{module.__name__}."
    body = body.replace(own, "") if "." in module.__name__ else body
    imports = sorted({f"import {found}\n" for found in re.findall(r"brovik\.[a-z]\w*", body)})
    return f"{_HEADER}{''.join(imports)}\n{body}"


def _definitions(module: ModuleType) -> Iterator[str]:
    for name, value in vars(module).items():
        if name.startswith("__") or inspect.ismodule(value):
            continue
        if inspect.isclass(value):
            yield _class_text(value)
        elif inspect.isroutine(value):
            yield function_text(name, value.__doc__, "")
        else:
            yield f"{name}: {type(value).__name__}\n"


def _class_text(cls: type) -> str:
    doc = (cls.__doc__ or "").split("\n\nMembers:")[0]
    head = f"class {cls.__name__}:\n{doc_text(doc, '    ')}"
    if "__members__" in vars(cls):
        members = (f"    {name}: ClassVar[{cls.__name__}]" for name in getattr(cls, "__members__"))
        return head + _ENUM_BODY.format(name=cls.__name__, members="\n".join(members))
    body = "".join(_member_text(cls, name, value) for name, value in vars(cls).items())
    return head + (body if body or doc else "    ...\n")


def _nested_class_text(cls: type) -> str:
    return textwrap.indent(_class_text(cls), "    ")


def _member_text(cls: type, name: str, value: object) -> str:
    if not is_told(name, value):
        return ""
    if type(value).__name__ == "pybind11_static_property":
        return f"    {name}: ClassVar[{type(getattr(cls, name)).__name__}]\n"
    if inspect.isclass(value):
        return _nested_class_text(value)
    if isinstance(value, property):
        return _property_text(name, value)
    if isinstance(value, staticmethod):
        return "    @staticmethod\n" + function_text(name, value.__func__.__doc__, "    ")
    return function_text(name, value.__doc__, "    ")


def _property_text(name: str, value: property) -> str:
    type_ = property_type(name, value)
    text = f"    @property\n    def {name}(self) -> {type_}:"
    text += f"\n{doc_text(value.__doc__, '        ')}" if value.__doc__ else " ...\n"
    if value.fset is not None:
        text += f"    @{name}.setter\n    def {name}(self, value: {type_}) -> None: ...\n"
    return text
