"""Small changes of a C++ file, each of which a test should notice.

The file is taken as tokens, as clang-format leaves them: an operator with two sides has a blank on both.
"""

import re
from collections.abc import Iterator, Sequence
from dataclasses import dataclass
from functools import cached_property
from typing import Final

from mutation_changes import Change

TOKEN: Final = re.compile(
    r"""
    (?P<silent> \#if[ ]defined\(__SANITIZE.*?\#endif | //[^\n]* | /\*.*?\*/
        | \#[ ]*define[ ]+\w+(\([^)]*\))? | \#(\\\n|[^\n])* )
    | (?P<blank> (\s|\\\n)+ )
    | (?P<raw> R"(?P<mark>[^(]*)\(.*?\)(?P=mark)" )
    | (?P<text> "(\\.|[^"\\])*" )
    | (?P<char> '(\\.|[^'\\])*' )
    | (?P<number> \d[\w']*(\.\d*)?([eE][+-]?\d+)?\w* )
    | (?P<word> \w+ )
    | (?P<sign> \+\+ | -- | -> | :: | && | \|\| | <<=? | >>=? | [-+*/%&|^<>=!]= | . )
    """,
    re.VERBOSE | re.DOTALL,
)
SIDED: Final = {
    "<": ("<=", ">="),
    "<=": ("<", ">"),
    ">": (">=", "<="),
    ">=": (">", "<"),
    "==": ("!=",),
    "!=": ("==",),
    "+": ("-",),
    "-": ("+",),
    "*": ("/",),
    "/": ("*",),
    "%": ("*",),
    "&&": ("||",),
    "||": ("&&",),
    "+=": ("-=",),
    "-=": ("+=",),
    "*=": ("/=",),
    "&": ("|",),
    "|": ("&",),
}
WORDS: Final = {"true": "false", "false": "true"}
STEPS: Final = {"++": "--", "--": "++"}
#: What is checked by the compiler, or in other builds than the one that is tested.
CHECKS: Final = ("static_assert", "Q_ASSERT", "Q_ASSERT_X", "Q_UNUSED", "Q_DISABLE_COPY_MOVE")
#: No statement that can be left out begins with one.
KEYWORDS: Final = frozenset(
    """alignas auto break case catch class const constexpr continue default delete do else enum explicit
    extern for friend goto if inline mutable namespace new operator private protected public return sizeof
    static struct switch template throw try typedef typename union using virtual volatile while""".split()
)
ASSIGNMENTS: Final = ("=", "+=", "-=", "*=", "/=", "|=", "&=")
PAIRS: Final = {"(": ")", "[": "]", "{": "}"}
#: A result that stands for nothing anyway.
NOTHING: Final = ("{}", "0", "false", "nullptr", "0.0", "std::nullopt", "QVariant()")


@dataclass(frozen=True)
class Token:
    """A word, a number, a text or a sign of the language."""

    kind: str
    text: str
    start: int

    @property
    def end(self) -> int:
        """Where the next one may begin."""
        return self.start + len(self.text)


class Source:
    """A file as a list of tokens."""

    def __init__(self, text: str) -> None:
        self.text = text
        found = (Token(match.lastgroup or "", match[0], match.start()) for match in TOKEN.finditer(text))
        self.tokens = [token for token in found if token.kind not in ("silent", "blank")]

    def changed(self, start: int, end: int, new: str) -> Change:
        """The file with something else in place of a part."""
        line = self.text.count("\n", 0, start) + 1
        return Change(line, self.text[start:end], new or "nothing", self.text[:start] + new + self.text[end:])

    def has_blanks_around(self, token: Token) -> bool:
        """Whether this is an operator with two sides, and neither the end of a type nor a sign."""
        return self.text[token.start - 1].isspace() and self.text[token.end : token.end + 1].isspace()

    def closing(self, index: int) -> int:
        """The place of the bracket that ends what begins here; the end of the file if there is none."""
        opening = self.tokens[index].text
        depth = 0
        for place in range(index, len(self.tokens)):
            text = self.tokens[place].text
            depth += (text == opening) - (text == PAIRS[opening])
            if depth == 0:
                return place
        return len(self.tokens) - 1

    @cached_property
    def skipped(self) -> frozenset[int]:
        """The places of tokens that nothing is to be changed of."""
        places: set[int] = set()
        for index, token in enumerate(self.tokens[:-1]):
            if token.text in CHECKS and self.tokens[index + 1].text == "(":
                places.update(range(index, self.closing(index + 1) + 1))
        return frozenset(places)

    @cached_property
    def in_block(self) -> list[bool]:
        """Of each token, whether it stands in the body of a function."""
        inside: list[bool] = []
        blocks = [False]
        for index, token in enumerate(self.tokens):
            if token.text == "{":
                before = self.tokens[index - 1].text if index else ""
                blocks.append(
                    before in (")", "]", "else", "do", "try", "const", "override", "noexcept", "mutable")
                )
            elif token.text == "}" and len(blocks) > 1:
                blocks.pop()
            inside.append(blocks[-1])
        return inside


def changes(text: str) -> list[Change]:
    """All changes of this file, from its beginning to its end."""
    source = Source(text)
    found: list[Change] = []
    for index in range(len(source.tokens)):
        if index not in source.skipped:
            found += _of_token(source, index)
            found += _of_statement(source, index)
    return found


def _of_token(source: Source, index: int) -> Iterator[Change]:
    token = source.tokens[index]
    for new in _replacements(source, index):
        yield source.changed(token.start, token.end, new)


def _replacements(source: Source, index: int) -> Iterator[str]:
    token = source.tokens[index]
    if token.kind == "sign":
        if token.text in SIDED and source.has_blanks_around(token):
            yield from SIDED[token.text]
        elif token.text in STEPS:
            yield STEPS[token.text]
        elif token.text == "!":
            yield ""
    elif token.text in WORDS:
        yield WORDS[token.text]
    elif token.kind == "number":
        yield from _numbers(token.text)
    elif token.kind == "text" and not _is_documentation(token.text):
        yield token.text[:-1] + '?"'


def _is_documentation(text: str) -> bool:
    return text.endswith('."') and " " in text


def _numbers(text: str) -> Iterator[str]:
    """One more."""
    match = re.fullmatch(r"(\d[\d']*)(\.\d*)?(\w*)", text)
    if match is not None:
        yield f"{int(match[1].replace(chr(39), '')) + 1}{match[2] or ''}{match[3]}"


def _of_statement(source: Source, index: int) -> Iterator[Change]:
    tokens = source.tokens
    text = tokens[index].text
    following = tokens[index + 1].text if index + 1 < len(tokens) else ""
    if text in ("if", "while") and following == "(":
        yield from _conditions(source, index)
    elif text == "return":
        yield from _returns(source, index)
    elif _begins_statement(source, index):
        end = _end_of_statement(source, index)
        if end is not None and _does_something(tokens[index:end]):
            yield source.changed(tokens[index].start, tokens[end].start, "")


def _conditions(source: Source, index: int) -> Iterator[Change]:
    """Always so. A loop is not to go on for ever, and what a condition declares is used."""
    closing = source.closing(index + 1)
    inside = source.tokens[index + 2 : closing]
    if any(token.text in ("=", ";") for token in inside):
        return
    start, end = inside[0].start, inside[-1].end
    for value in ("false",) if source.tokens[index].text == "while" else ("true", "false"):
        yield source.changed(start, end, value)


def _returns(source: Source, index: int) -> Iterator[Change]:
    end = _end_of_statement(source, index)
    if end is None or end == index + 1:
        return
    start, stop = source.tokens[index + 1].start, source.tokens[end].start
    if source.text[start:stop] not in NOTHING:
        yield source.changed(start, stop, "{}")


def _begins_statement(source: Source, index: int) -> bool:
    before, token = source.tokens[index - 1].text, source.tokens[index]
    begins = index > 0 and before in (";", "{", "}", ":")
    return begins and source.in_block[index] and (token.kind == "word" or token.text in STEPS)


def _end_of_statement(source: Source, index: int) -> int | None:
    """The place of its semicolon."""
    place = index
    while place < len(source.tokens):
        text = source.tokens[place].text
        if text == ";":
            return place
        if text in ("}", ")", "]"):
            return None
        place = source.closing(place) + 1 if text in PAIRS else place + 1
    return None


def _does_something(statement: Sequence[Token]) -> bool:
    """A call or an assignment, and no declaration: before it, no two names stand side by side."""
    if statement[0].text in KEYWORDS:
        return False
    if statement[0].text in STEPS or statement[-1].text in STEPS:
        return True
    for place, token in enumerate(statement):
        if token.text == "(" or token.text in ASSIGNMENTS:
            return place > 0
        if place > 0 and token.kind == "word" and statement[place - 1].kind == "word":
            return False
        if token.text in ("*", "&", "{", "<"):
            return False
    return False
