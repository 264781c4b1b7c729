"""The named tuples."""

from __future__ import annotations

from typing import Any, NamedTuple


class Point(NamedTuple):
    """A point of an object's own coordinates."""

    x: int
    y: int


class Rect(NamedTuple):
    """A rectangle: west, south, east and north edge."""

    W: int
    S: int
    E: int
    N: int


class Finding(NamedTuple):
    """Something that check() found. What does not apply is None."""

    severity: str
    code: str
    name: str
    offset: int | None
    line: int | None
    column: int | None
    chunk_path: str
    segment: int | None
    layer: int | None
    z_id: int | None
    index: int | None  # type: ignore[assignment]
    reason: str


class Arrays(NamedTuple):
    """Objects as numpy arrays: the points of object i are points[offsets[i]:offsets[i + 1]]."""

    points: Any
    offsets: Any
    z_ids: Any
    segments: Any


class Style(NamedTuple):
    """A draw info that holds at a scale: its position, the objects it draws, sizes in 1/96 inch."""

    index: int  # type: ignore[assignment]
    kind: str
    sizes: dict[str, float]
