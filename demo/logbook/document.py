"""Dataclasses as canonical JSON documents and back: the same content always makes the same bytes."""

import json
import math
from collections.abc import Mapping
from dataclasses import MISSING, fields, is_dataclass
from functools import cache
from types import NoneType, UnionType
from typing import Any, Final, TypeVar, Union, get_args, get_origin, get_type_hints

FORMAT: Final = 1
_FORMAT_KEY: Final = "format"

T = TypeVar("T")


class DocumentError(ValueError):
    """The document does not say what it should. The text is one for the reader."""


def clean(text: str) -> str:
    """The text as UTF-8 can hold it: half a surrogate pair becomes a question mark."""
    return text.encode("utf-8", "replace").decode("utf-8")


def canonical(value: object) -> str:
    """JSON with sorted keys and without blanks. Numbers that JSON does not have become null."""
    plain = _plain(value)
    return clean(
        json.dumps(plain, ensure_ascii=False, sort_keys=True, separators=(",", ":"), allow_nan=False)
    )


def to_document(record: object) -> str:
    """The document of a dataclass."""
    return canonical({**_plain(record), _FORMAT_KEY: FORMAT})


def from_document(kind: type[T], text: str) -> T:
    """The dataclass of a document. What is not known is ignored, what is missing has its default.

    Raises DocumentError if that is not possible.
    """
    try:
        plain = json.loads(text)
    except (ValueError, RecursionError) as error:
        raise DocumentError("Das Dokument ist kein JSON.") from error
    if not isinstance(plain, dict):
        raise DocumentError("Das Dokument hat keine Felder.")
    if plain.get(_FORMAT_KEY) != FORMAT:
        raise DocumentError(f"Das Dokument hat das unbekannte Format {plain.get(_FORMAT_KEY)!r}.")
    result: T = _read(kind, plain, "")
    return result


def _plain(value: object) -> Any:
    if is_dataclass(value) and not isinstance(value, type):
        return {field.name: _plain(getattr(value, field.name)) for field in fields(value)}
    if isinstance(value, Mapping):
        return {str(key): _plain(item) for key, item in value.items()}
    if isinstance(value, (list, tuple)):
        return [_plain(item) for item in value]
    if isinstance(value, float) and not math.isfinite(value):
        return None
    return value


@cache
def _hints(kind: type) -> dict[str, Any]:
    return get_type_hints(kind)


def _read(kind: Any, value: Any, place: str) -> Any:
    if is_dataclass(kind):
        return _read_fields(kind, value, place)
    if get_origin(kind) is tuple:
        if isinstance(value, list):
            item = get_args(kind)[0]
            return tuple(_read(item, each, f"{place}[{i}]") for i, each in enumerate(value))
    elif get_origin(kind) in (Union, UnionType):
        return _read_union(get_args(kind), value, place)
    elif kind is float:
        if value is None:
            return math.nan
        if isinstance(value, (int, float)) and not isinstance(value, bool):
            return _to_float(value)
    elif isinstance(value, kind) and not (kind is int and isinstance(value, bool)):
        return value
    raise DocumentError(f"Das Dokument hat an der Stelle {place} einen Wert falscher Art.")


def _to_float(value: int | float) -> float:
    try:
        return float(value)
    except OverflowError:
        return math.nan


def _read_union(kinds: tuple[Any, ...], value: Any, place: str) -> Any:
    if value is None and NoneType in kinds:
        return None
    for kind in sorted(kinds, key=lambda kind: kind is float):
        try:
            return _read(kind, value, place)
        except DocumentError:
            pass
    raise DocumentError(f"Das Dokument hat an der Stelle {place} einen Wert falscher Art.")


def _read_fields(kind: Any, value: Any, place: str) -> Any:
    if not isinstance(value, dict):
        raise DocumentError(f"Dem Dokument fehlen an der Stelle {place} die Felder.")
    found = {}
    for field in fields(kind):
        inner = f"{place}.{field.name}" if place else field.name
        if field.name in value:
            found[field.name] = _read(_hints(kind)[field.name], value[field.name], inner)
        elif field.default is MISSING:
            raise DocumentError(f"Dem Dokument fehlt das Feld {inner}.")
    return kind(**found)
