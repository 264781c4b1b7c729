"""Reads, writes, edits and analyses map projects and their draw data."""

from __future__ import annotations

from typing import Any, Iterator

from . import _containers, _geo, _qenzor
from ._errors import ReadError, WriteError
from ._types import Arrays, Finding, Point, Rect, Style
from .flags import (
    FontFlags,
    FrameKind,
    LabelDrawFlags,
    LabelFlags,
    LabelOrigin,
    LineCode,
)

_containers.install()
_geo.install()


def _public(name: str) -> bool:
    return not name.startswith("_") and isinstance(getattr(_qenzor, name), type)


for _name in filter(_public, dir(_qenzor)):
    globals()[_name] = getattr(_qenzor, _name)


__version__: str = _qenzor.__version__


def read(source: Any, kind: str | None = None, *, encoding: str = "shift_jis") -> Any:
    """The document in a file (by its path), in bytes or in an open binary file, binary or XML: a
    Qen or a Zor, as the content says where no kind (qen or zor) is given. The encoding is that of
    XML: shift_jis, utf-8 or auto. Raises ReadError."""
    return _qenzor.read(source, kind, encoding)


def check(
    source: Any,
    kind: str | None = None,
    *,
    max_details: int = 1000,
    skip: Any = (),
    first_error_only: bool = False,
    round_trip: bool = False,
) -> Iterator[Finding]:
    """Finds what reading a document would refuse or drop, and what its values say against each
    other. Raises ReadError where there is no document to look at."""
    found = _qenzor.check(source, kind, max_details, list(skip), first_error_only, round_trip)
    return map(Finding._make, found)


def _arrays(
    self: Any, layer: Any = None, kind: Any = None, degrees: bool = False, frame: str | None = None
) -> Arrays:
    """All objects of a kind in a layer as numpy arrays."""
    return Arrays._make(self._arrays(layer, kind, degrees, frame))


def _frame(self: Any, words: str | None = None) -> Any:
    """Where the objects of the map lie; the words are those of the option --frame."""
    return _qenzor.Frame(self.info, words)


def _features(self: Any, frame: str | None = None, **filters: Any) -> Iterator[dict[str, Any]]:
    """The objects that pass the filters of objects() as GeoJSON features."""
    place = _qenzor.Frame(self.info, frame)
    for obj in self.objects(frame=frame, **filters):
        yield _geo.feature(obj, place)


def _style_of(self: Any, z_id: int, scale: float) -> list[Style]:
    """The draw infos that hold at 1:scale for the z-id, in the order of its attribute."""
    return [Style._make(style) for style in self._style_of(z_id, scale)]


def _repr_map(self: Any) -> str:
    info = self.info
    return f"<qenzor.{type(self).__name__} of {info.SegmentNumX} x {info.SegmentNumY} segments>"


def _repr_draw(self: Any) -> str:
    return f"<qenzor.{type(self).__name__} of {len(self.infos)} draw infos>"


def _repr_closed(inner: Any) -> Any:
    def show(self: Any) -> str:
        return f"<qenzor.{type(self).__name__}, closed>" if self.closed else str(inner(self))

    return show


def _reduce(self: Any) -> tuple[Any, ...]:
    return (read, (bytes(self), type(self).__name__.lower()))


def _enter(self: Any) -> Any:
    self.info  # raises if it has been closed
    return self


def _exit(self: Any, *_exception: object) -> None:
    self.close()


_qenzor.Qen.arrays = _arrays
_qenzor.Qen.features = _features
_qenzor.Zor.style_of = _style_of
for _class in (_qenzor.Qen, _qenzor.QenEdit):
    _class.frame = _frame
_qenzor.Qen.__repr__ = _repr_map
_qenzor.Zor.__repr__ = _repr_draw
_qenzor.QenEdit.__repr__ = _repr_closed(_repr_map)
_qenzor.ZorEdit.__repr__ = _repr_closed(_repr_draw)
for _class in (_qenzor.Qen, _qenzor.Zor):
    _class.__reduce__ = _reduce
for _class in (_qenzor.QenEdit, _qenzor.ZorEdit):
    _class.__enter__ = _enter
    _class.__exit__ = _exit
del _class, _name
