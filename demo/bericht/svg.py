"""A scene as SVG."""

from collections.abc import Sequence
from html import escape

from logbook.curves import Point

from .scene import Box, Label, Line, Part, Scene


def svg(scene: Scene) -> str:
    """An element that can stand in a page as well as in a file of its own."""
    parts = "\n".join(map(_element, scene.parts))
    title = escape(scene.title)
    return (
        '<svg xmlns="http://www.w3.org/2000/svg" '
        f'viewBox="0 0 {_length(scene.width)} {_length(scene.height)}" '
        f'role="img" aria-label="{title}" font-family="DejaVu Sans, sans-serif">\n'
        f"<title>{title}</title>\n{parts}\n</svg>"
    )


def _length(value: float) -> str:
    return f"{value:.2f}".rstrip("0").rstrip(".")


def _element(part: Part) -> str:
    match part:
        case Box():
            return (
                f'<rect x="{_length(part.x)}" y="{_length(part.y)}" width="{_length(part.width)}" '
                f'height="{_length(part.height)}" fill="{part.color}"/>'
            )
        case Line():
            return (
                f'<polyline points="{_points(part.points)}" fill="none" stroke="{part.color}" '
                f'stroke-width="{_length(part.width)}" stroke-linejoin="round"/>'
            )
        case Label():
            return _text(part)


def _points(points: Sequence[Point]) -> str:
    return " ".join(f"{_length(x)},{_length(y)}" for x, y in points)


def _text(label: Label) -> str:
    place = f'x="{_length(label.x)}" y="{_length(label.y)}"'
    turned = f' transform="rotate(-90 {_length(label.x)} {_length(label.y)})"' if label.upward else ""
    return (
        f'<text {place}{turned} font-size="{_length(label.size)}" fill="{label.color}" '
        f'text-anchor="{label.anchor.value}">{escape(label.text)}</text>'
    )
