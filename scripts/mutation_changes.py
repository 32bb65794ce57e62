"""Small changes of a Python file, each of which a test should notice."""

import ast
import copy
from collections.abc import Iterator, Mapping, Sequence
from dataclasses import dataclass
from typing import Final, TypeAlias, TypeGuard, TypeVar

#: What takes the place of a comparison: the bound moved, then the sense turned round.
COMPARISONS: Final[dict[type[ast.cmpop], tuple[type[ast.cmpop], ...]]] = {
    ast.Lt: (ast.LtE, ast.GtE),
    ast.LtE: (ast.Lt, ast.Gt),
    ast.Gt: (ast.GtE, ast.LtE),
    ast.GtE: (ast.Gt, ast.Lt),
    ast.Eq: (ast.NotEq,),
    ast.NotEq: (ast.Eq,),
    ast.Is: (ast.IsNot,),
    ast.IsNot: (ast.Is,),
    ast.In: (ast.NotIn,),
    ast.NotIn: (ast.In,),
}
OPERATORS: Final[dict[type[ast.operator], type[ast.operator]]] = {
    ast.Add: ast.Sub,
    ast.Sub: ast.Add,
    ast.Mult: ast.Div,
    ast.Div: ast.Mult,
    ast.FloorDiv: ast.Mult,
    ast.Mod: ast.Mult,
    ast.Pow: ast.Mult,
    ast.BitAnd: ast.BitOr,
    ast.BitOr: ast.BitAnd,
    ast.LShift: ast.RShift,
    ast.RShift: ast.LShift,
}
#: Says nothing that a program does: types, what a class is made by, how a number is written out.
SILENT: Final = ("annotation", "returns", "decorator_list", "bases", "format_spec")

_Item = TypeVar("_Item")

Replacement: TypeAlias = ast.expr | ast.stmt | list[ast.stmt]


class _Member(ast.Attribute):  # pylint: disable=too-few-public-methods  # a type for the checker alone
    """A member of an enumeration, as far as its name tells."""

    value: ast.Name


@dataclass(frozen=True)
class Change:
    """One change of one file: where it is, what was there and what is there instead."""

    line: int
    before: str
    after: str
    #: The whole file with the change in it.
    text: str

    @property
    def words(self) -> str:
        """Both sides in one line."""
        return f"{_short(self.before)}  ->  {_short(self.after)}"


@dataclass(frozen=True)
class _Place:
    """A node, and where it hangs: in a field of its parent, in a list there if it has an index."""

    node: ast.AST
    parent: ast.AST
    field: str
    index: int | None
    in_function: bool

    def put(self, new: Replacement) -> None:
        """Hangs something else there."""
        if self.index is None:
            setattr(self.parent, self.field, new)
            return
        siblings: list[ast.AST] = getattr(self.parent, self.field)
        siblings[self.index : self.index + 1] = _parts(new)


def changes(text: str) -> list[Change]:
    """All changes of this file, from its beginning to its end."""
    tree = ast.parse(text)
    members = _members(tree)
    found = []
    for place in list(_places(tree, in_function=False)):
        for new in _replacements(place, members):
            found.append(_change(tree, place, new))
    return found


def _members(tree: ast.Module) -> dict[str, list[str]]:
    """The members of enumerations that the file names, by the name of the enumeration."""
    found: dict[str, set[str]] = {}
    for node in ast.walk(tree):
        if _is_member(node):
            found.setdefault(node.value.id, set()).add(node.attr)
    return {name: sorted(members) for name, members in found.items()}


def _is_member(node: ast.AST) -> TypeGuard["_Member"]:
    return (
        isinstance(node, ast.Attribute)
        and isinstance(node.value, ast.Name)
        and node.value.id[0].isupper()
        and node.attr.isupper()
    )


def _change(tree: ast.Module, place: _Place, new: Replacement) -> Change:
    siblings = getattr(place.parent, place.field)
    kept = list(siblings) if isinstance(siblings, list) else siblings
    place.put(new)
    text = ast.unparse(ast.fix_missing_locations(tree))
    setattr(place.parent, place.field, kept)
    return Change(_line(place), *_sides(place.node, new), text)


def _parts(new: Replacement) -> Sequence[ast.AST]:
    if isinstance(new, list):
        return new
    return [new]


def _sides(node: ast.AST, new: Replacement) -> tuple[str, str]:
    """What was there and what is there instead; of a set or a table, what has gone."""
    after = [ast.unparse(part) for part in _parts(new)]
    if isinstance(node, ast.Set) and isinstance(new, ast.Set):
        return _missing(node.elts, new.elts), "nothing"
    if isinstance(node, ast.Dict) and isinstance(new, ast.Dict):
        return _missing(node.keys, new.keys), "nothing"
    return ast.unparse(node), "\n".join(after)


def _missing(before: Sequence[ast.expr | None], after: Sequence[ast.expr | None]) -> str:
    gone = next((item for item in before if item not in after), None)
    return ast.unparse(gone) if gone is not None else "**"


def _line(place: _Place) -> int:
    node = place.node if isinstance(place.node, (ast.expr, ast.stmt)) else place.parent
    return getattr(node, "lineno", 0)


def _short(text: str) -> str:
    line = " ".join(text.split())
    return line if len(line) <= 90 else line[:87] + "..."


def _places(parent: ast.AST, in_function: bool) -> Iterator[_Place]:
    for field, value in ast.iter_fields(parent):
        if field in SILENT or _is_type_alias(parent):
            continue
        inside = in_function or (
            field == "body" and isinstance(parent, (ast.FunctionDef, ast.AsyncFunctionDef))
        )
        for index, node in enumerate(value) if isinstance(value, list) else [(None, value)]:
            if not isinstance(node, ast.AST) or _is_docstring(node):
                continue
            yield _Place(node, parent, field, index, inside)
            if not isinstance(node, ast.JoinedStr):  # Its texts count as one.
                yield from _places(node, inside)
            else:
                for part in node.values:
                    yield from _places(part, inside)


def _is_type_alias(node: ast.AST) -> bool:
    return isinstance(node, ast.AnnAssign) and "TypeAlias" in ast.unparse(node.annotation)


def _is_docstring(node: ast.AST) -> bool:
    return (
        isinstance(node, ast.Expr)
        and isinstance(node.value, ast.Constant)
        and (isinstance(node.value.value, str) or node.value.value is Ellipsis)
    )


def _replacements(place: _Place, members: Mapping[str, Sequence[str]]) -> Iterator[Replacement]:
    node = place.node
    if _is_member(node):
        names = members[node.value.id]
        if len(names) > 1:
            yield ast.Attribute(node.value, names[(names.index(node.attr) + 1) % len(names)])
    elif isinstance(node, ast.expr):
        yield from _expressions(node)
        if place.field == "test" and not isinstance(node, (ast.Compare, ast.Constant)):
            yield ast.UnaryOp(ast.Not(), node)
        if place.field in ("test", "ifs") and not isinstance(place.parent, ast.Assert):
            yield from (ast.Constant(value) for value in _fixed(place.parent))
    elif isinstance(node, ast.stmt) and place.in_function:
        yield from _statements(node)


def _fixed(parent: ast.AST) -> tuple[bool, ...]:
    """What a condition may always be: a loop is not to go on for ever."""
    return (False,) if isinstance(parent, ast.While) else (True, False)


def _expressions(node: ast.expr) -> Iterator[ast.expr]:
    if isinstance(node, ast.Compare):
        for index, operator in enumerate(node.ops):
            for other in COMPARISONS[type(operator)]:
                new = copy.deepcopy(node)
                new.ops[index] = other()
                yield new
    elif isinstance(node, ast.BinOp) and type(node.op) in OPERATORS:
        yield ast.BinOp(node.left, OPERATORS[type(node.op)](), node.right)
    elif isinstance(node, ast.BoolOp):
        yield ast.BoolOp(ast.Or() if isinstance(node.op, ast.And) else ast.And(), node.values)
    elif isinstance(node, ast.UnaryOp) and isinstance(node.op, (ast.Not, ast.USub)):
        yield node.operand
    elif isinstance(node, ast.IfExp):
        yield ast.IfExp(node.test, node.orelse, node.body)
    elif isinstance(node, ast.JoinedStr):
        yield ast.Constant("?")
    elif isinstance(node, ast.Set) and len(node.elts) > 1:
        yield from (ast.Set(_without(node.elts, index)) for index in range(len(node.elts)))
    elif isinstance(node, ast.Dict):
        for index in range(len(node.keys)):
            yield ast.Dict(_without(node.keys, index), _without(node.values, index))
    elif isinstance(node, ast.Constant):
        yield from _constants(node.value)


def _without(items: Sequence[_Item], index: int) -> list[_Item]:
    return [*items[:index], *items[index + 1 :]]


def _constants(value: object) -> Iterator[ast.expr]:
    if isinstance(value, bool):
        yield ast.Constant(not value)
    elif isinstance(value, (int, float)):
        yield ast.Constant(value + 1)
    elif isinstance(value, str):
        yield ast.Constant(value + "?" if value else "?")


def _statements(node: ast.stmt) -> Iterator[Replacement]:
    """Left out; a return without its value; a block without what it stands in."""
    if isinstance(node, ast.Return):
        if node.value is not None and not (isinstance(node.value, ast.Constant) and node.value.value is None):
            yield ast.Return(ast.Constant(None))
    elif isinstance(node, ast.With):
        yield list(node.body)
    elif isinstance(node, ast.AugAssign) and type(node.op) in OPERATORS:
        yield ast.AugAssign(node.target, OPERATORS[type(node.op)](), node.value)
        yield ast.Pass()
    elif isinstance(node, (ast.Expr, ast.Assign, ast.AnnAssign, ast.AugAssign, ast.Raise, ast.Delete)):
        yield ast.Pass()
