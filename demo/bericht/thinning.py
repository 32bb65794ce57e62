"""Fewer points that look the same: of each column of the picture its first, lowest, highest and last one."""

import math
from collections.abc import Sequence

from logbook.curves import Point


def pieces(points: Sequence[Point], columns: int) -> list[list[Point]]:
    """The line, parted where a point is no number. Together the pieces have four points a column at most."""
    found: list[list[Point]] = [[]]
    for point in _in_order(points):
        if math.isfinite(point[0]) and math.isfinite(point[1]):
            found[-1].append(point)
        elif found[-1]:
            found.append([])
    whole = [piece for piece in found if piece]
    if sum(map(len, whole)) <= 4 * columns:
        return whole
    start, end = whole[0][0][0], whole[-1][-1][0]
    width = (end - start) / columns or 1.0
    thinned = [_thinned(piece, start, width) for piece in whole]
    # Thousands of pieces that are shorter than a column show nothing that one line would not.
    if len(thinned) > columns:
        return [_thinned([point for piece in thinned for point in piece], start, width)]
    return thinned


def _in_order(points: Sequence[Point]) -> Sequence[Point]:
    """Time runs forward, whatever the points say."""
    if all(a[0] <= b[0] for a, b in zip(points, points[1:])):
        return points
    return sorted((p for p in points if math.isfinite(p[0])), key=lambda p: p[0])


def _thinned(points: Sequence[Point], start: float, width: float) -> list[Point]:
    result: list[Point] = []
    begin = 0
    while begin < len(points):
        column = int((points[begin][0] - start) / width)
        end = begin + 1
        border = start + (column + 1) * width
        while end < len(points) and points[end][0] < border:
            end += 1
        result.extend(_extremes(points, begin, end))
        begin = end
    return result


def _extremes(points: Sequence[Point], begin: int, end: int) -> list[Point]:
    if end - begin <= 4:
        return list(points[begin:end])
    heights = [point[1] for point in points[begin:end]]
    chosen = {0, heights.index(min(heights)), heights.index(max(heights)), len(heights) - 1}
    return [points[begin + index] for index in sorted(chosen)]
