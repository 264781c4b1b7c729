"""What the classes of the module have beyond what their tables give them: the methods of Python's
own containers, and the names in small letters."""

from __future__ import annotations

from collections import abc
from typing import Any, Callable, Iterable, Iterator

from . import _qenzor as _module

_qenzor: Any = _module


def _insert(self: Any, index: int, value: Any) -> None:
    """Puts an element in front of the one at the index."""
    index = max(index + len(self), 0) if index < 0 else index
    self[index:index] = (value,)


def _append(self: Any, value: Any) -> None:
    """Puts an element at the end."""
    size = len(self)
    self[size:size] = (value,)


def _extend(self: Any, values: Iterable[Any]) -> None:
    """Puts elements at the end: all, or none if one of them does not fit."""
    size = len(self)
    self[size:size] = values


def _clear(self: Any) -> None:
    """Takes all elements out."""
    del self[:]


def _add_all(self: Any, values: Iterable[Any]) -> Any:
    self.extend(values)
    return self


def _remove(self: Any, value: Any) -> None:
    """Takes the first equal element out."""
    del self[self.index(value)]


def _reverse(self: Any) -> None:
    """Turns the order round."""
    self.extend([self.pop() for _ in range(len(self))])


def _sort(self: Any, *, key: Callable[[Any], Any], reverse: bool = False) -> None:
    """Puts the elements in the order of a key; equal ones stay as they are."""
    keys = [key(element) for element in self]
    order = sorted(range(len(keys)), key=keys.__getitem__, reverse=reverse)
    elements = [self.pop() for _ in range(len(self))]
    elements.reverse()
    self.extend([elements[place] for place in order])


_SEQUENCE = {
    "insert": _insert,
    "append": _append,
    "extend": _extend,
    "clear": _clear,
    "remove": _remove,
    "reverse": _reverse,
    "sort": _sort,
    "__iadd__": _add_all,
    "index": abc.Sequence.index,
    "count": abc.Sequence.count,
    "__contains__": abc.Sequence.__contains__,
    "__reversed__": abc.Sequence.__reversed__,
}


def _set_under(self: Any, values: Iterable[Any]) -> None:
    """Files elements under their own keys."""
    for value in list(values):
        self.add(value)


def _clear_keys(self: Any) -> None:
    """Takes all elements out."""
    for key in list(self):
        del self[key]


_MISSING = object()


def _pop(self: Any, key: int, default: Any = _MISSING) -> Any:
    """Takes the element under a key out and gives it back."""
    if default is not _MISSING and key not in self:
        return default
    return self.take(key)


_MAPPING = {
    "extend": _set_under,
    "clear": _clear_keys,
    "pop": _pop,
    "keys": abc.Mapping.keys,
    "values": abc.Mapping.values,
    "items": abc.Mapping.items,
    "get": abc.Mapping.get,
}


def _slot(tag: str) -> property:
    """What is in a slot; a slot that is empty counts as an empty set until something is added."""

    def get(self: Any) -> Any:
        return self._slot(tag)

    def put(self: Any, values: Iterable[Any]) -> None:
        self._slot(tag)[:] = values

    return property(get, put, doc=f"The elements of {tag}.")


def _keyed_slot(tag: str) -> property:
    def get(self: Any) -> Any:
        return self._slot(tag)

    return property(get, doc=f"The elements of {tag}.")


def _root_slot(tag: str) -> property:
    def get(self: Any) -> Any:
        return self._root._slot(tag)

    def put(self: Any, values: Iterable[Any]) -> None:
        self._root._slot(tag)[:] = values

    return property(get, put, doc=f"The elements of {tag}.")


def _indices() -> property:
    def get(self: Any) -> Any:
        return self._slot("DrawInfoIdxSet").DrawInfoIdx

    def put(self: Any, values: Iterable[int]) -> None:
        self._slot("DrawInfoIdxSet").DrawInfoIdx = values

    return property(get, put, doc="The positions of the draw infos that draw its objects.")


def _root_chunk(self: Any) -> Any:
    """The root chunk."""
    return self._root


def _all_classes() -> Iterator[type]:
    for value in vars(_qenzor).values():
        if isinstance(value, type) and issubclass(value, _qenzor.Data):
            yield value


def install() -> None:
    """Completes the classes; called once."""
    sequences: list[type] = [_qenzor.FieldList]
    for cls in _all_classes():
        if hasattr(cls, "take"):
            for name, function in _MAPPING.items():
                setattr(cls, name, function)
            abc.Mapping.register(cls)
        elif hasattr(cls, "pop"):
            sequences.append(cls)
    for cls in sequences:
        for name, function in _SEQUENCE.items():
            setattr(cls, name, function)
        abc.MutableSequence.register(cls)

    _qenzor.MeshSegment.layers = _slot("LayerSet")
    _qenzor.LayerData.z_ids = _slot("ZIdObjSet")
    _qenzor.ZIdObj.objects = _slot("ObjSet")
    _qenzor.AbstractObj.links = _slot("AddedObjInfoSet")
    _qenzor.DrawAtter.indices = _indices()
    for document in (_qenzor.Qen, _qenzor.QenEdit):
        document.MapData = property(_root_chunk)
        document.segments = _root_slot("MeshSegmentSet")
    for document in (_qenzor.Zor, _qenzor.ZorEdit):
        document.DrawData = property(_root_chunk)
        document.attributes = property(lambda self: self._root._slot("DrawAtterSet"))
        document.infos = _root_slot("DrawInfoSet")
        document.marks = _root_slot("MarkDataSet")
