"""Objects as GeoJSON has them."""

from __future__ import annotations

from typing import Any, Iterable, Iterator, Optional

from . import _qenzor as _module

_qenzor: Any = _module


def _ring(points: list[tuple[float, float]]) -> list[tuple[float, float]]:
    """Closed, and counter-clockwise as GeoJSON wants its outer rings."""
    if points[0] != points[-1]:
        points = [*points, points[0]]
    area = sum(a[0] * b[1] - b[0] * a[1] for a, b in zip(points, points[1:]))
    return points[::-1] if area < 0 else points


def geometry(obj: Any, frame: Any) -> Optional[dict[str, Any]]:
    """The geometry of an object; None where there are too few points for one."""
    segment = obj.segment or 0
    kind = obj.kind
    if kind == "raster_rect":
        west, south, east, north = obj.Rect
        corners = [(west, south), (east, south), (east, north), (west, north)]
        points = [frame.at(segment, x, y) for x, y in corners]
        return {"type": "Polygon", "coordinates": (tuple(_ring(points)),)}
    points = [tuple(point) for point in frame.place(segment, obj.points).tolist()]
    if kind == "line" and len(points) >= 2:
        return {"type": "LineString", "coordinates": tuple(points)}
    if kind == "polygon" and len(points) >= 3:
        ring = _ring(points)
        return {"type": "Polygon", "coordinates": (tuple(ring),)} if len(ring) >= 4 else None
    if kind in ("label", "raster_point"):
        return {"type": "Point", "coordinates": points[0]}
    return None


def _plain(value: Any) -> bool:
    return isinstance(value, (int, float, str))


def feature(obj: Any, frame: Any) -> dict[str, Any]:
    """An object as a feature."""
    properties = {
        "kind": obj.kind,
        "segment": obj.segment,
        "layer": obj.layer,
        "z_id": obj.z_id,
        "index": obj.index,
    }
    for name in obj.field_names:
        value = getattr(obj, name)
        if _plain(value):
            properties[name] = value
    links = [link.Text for link in obj.links]
    if links:
        properties["links"] = links
    return {"type": "Feature", "geometry": geometry(obj, frame), "properties": properties}


def collection(objects: Iterable[Any], frame: Any) -> dict[str, Any]:
    """Objects as a collection of features."""
    return {
        "type": "FeatureCollection",
        "features": [feature(obj, frame) for obj in objects],
    }


def _objects_of(layer: Any) -> Iterator[Any]:
    for z_id in layer.z_ids:
        yield from z_id.objects


def _frame_of(data: Any) -> Any:
    info = data._info
    if info is None:
        raise AttributeError("only what is part of a map that is read has a place on the earth")
    return _qenzor.Frame(info)


def _of_object(self: Any) -> dict[str, Any]:
    return feature(self, _frame_of(self))


def _of_layer(self: Any) -> dict[str, Any]:
    return collection(_objects_of(self), _frame_of(self))


def _of_map(self: Any) -> dict[str, Any]:
    return collection(self.objects(), _qenzor.Frame(self.info))


def install() -> None:
    """Gives objects, layers and maps their __geo_interface__."""
    _qenzor.AbstractObj.__geo_interface__ = property(_of_object)
    _qenzor.LayerData.__geo_interface__ = property(_of_layer)
    _qenzor.Qen.__geo_interface__ = property(_of_map)
