"""Walks, arrays and what GeoJSON makes of objects."""

from __future__ import annotations

import math
from typing import Any

import numpy as np
import pytest

import handmade
import qenzor

ALL_KINDS = ("line", "polygon", "label", "raster_rect", "raster_point")


def walk_by_hand(world: Any) -> list[tuple[int, int, int, int, str]]:
    found = []
    for segment in world.segments:
        for layer in segment.layers:
            for z_id in layer.z_ids:
                for index, obj in enumerate(z_id.objects):
                    place = (segment.MeshSegmentNo, layer.LayerNo, z_id.ZId, index)
                    assert (obj.segment, obj.layer, obj.z_id, obj.index) == place
                    found.append((*place, obj.kind))
    return found


def places(objects: Any) -> list[tuple[int, int, int, int, str]]:
    return [(o.segment, o.layer, o.z_id, o.index, o.kind) for o in objects]


def test_a_walk_meets_every_object_where_it_stands(world: Any) -> None:
    by_hand = walk_by_hand(world)
    assert places(world.objects()) == by_hand
    assert len(by_hand) > 2000


@pytest.mark.parametrize("kind", ALL_KINDS)
def test_filters_pick_what_they_say(world: Any, kind: str) -> None:
    by_hand = walk_by_hand(world)
    assert places(world.objects(kind=kind)) == [p for p in by_hand if p[4] == kind]
    assert places(world.objects(layer=1, kind=[kind, "line"])) == [
        p for p in by_hand if p[1] == 1 and p[4] in (kind, "line")
    ]
    assert places(world.objects(segment=(40, 41), kind=kind)) == [
        p for p in by_hand if p[0] in (40, 41) and p[4] == kind
    ]
    z_ids = {p[2] for p in by_hand[::50]}
    assert places(world.objects(z_id=z_ids)) == [p for p in by_hand if p[2] in z_ids]


def test_a_box_holds_the_labels_in_it(world: Any) -> None:
    frame = world.frame()
    inside = []
    for obj in world.objects(kind="label"):
        x, y = frame.at(obj.segment, *obj.Pt)
        if 120 <= x <= 150 and 20 <= y <= 50:
            inside.append(obj.Text)
    assert [o.Text for o in world.objects(kind="label", bbox=(120, 20, 150, 50))] == inside
    assert any("Japan" in text for text in inside)


def test_wrong_filters_are_refused(world: Any) -> None:
    for wrong in ({"kind": "lines"}, {"bbox": (1, 2, 3)}, {"frame": "unit=0"}):
        with pytest.raises(ValueError):
            world.objects(**wrong)
    for out_of_range in ({"layer": 65536}, {"segment": -1}, {"z_id": 2**64}):
        with pytest.raises(OverflowError):
            world.objects(**out_of_range)
    for wrong in ({"layer": "1"}, {"layer": 1.5}, {"kind": 3}, {"bbox": 3}):
        with pytest.raises(TypeError):
            world.objects(**wrong)
    with pytest.raises(TypeError):
        world.objects(1)


@pytest.mark.parametrize("kind", ALL_KINDS)
def test_arrays_hold_what_the_objects_do(world: Any, kind: str) -> None:
    arrays = world.arrays(None, kind)
    objects = list(world.objects(kind=kind))
    assert arrays.points.dtype == np.int32
    assert (arrays.z_ids.dtype, arrays.segments.dtype) == (np.uint64, np.uint16)
    assert len(arrays.offsets) == len(objects) + 1
    assert arrays.offsets[0] == 0 and arrays.offsets[-1] == len(arrays.points)
    assert arrays.z_ids.tolist() == [o.z_id for o in objects]
    assert arrays.segments.tolist() == [o.segment for o in objects]
    for i, obj in enumerate(objects):
        points = arrays.points[arrays.offsets[i] : arrays.offsets[i + 1]].tolist()
        if kind == "raster_rect":
            assert sum(points, []) == list(obj.Rect)
        else:
            assert points == obj.points.tolist()


def test_degrees_are_those_of_the_frame() -> None:
    # Two segments of a degree each: units of 100 thousandths of a second from their centres.
    small = qenzor.read(handmade.SMALL_MAP)
    arrays = small.arrays(5, "line", degrees=True)
    expected = [(1.5 - 32768 / 36000, 0.5 + 32767 / 36000), (1.5, 0.5 + 1 / 36000)]
    assert arrays.points[:2].ravel().tolist() == pytest.approx(np.ravel(expected).tolist())
    corner = small.arrays(5, "line", degrees=True, frame="origin=south-west")
    assert corner.points[1].tolist() == pytest.approx([1, 1 / 36000])
    frame = small.frame()
    assert frame.crs == "EPSG:4326"
    assert frame.rect == (0, 0, 2, 1)
    assert frame.find_segment(1.25, 0.5) == 1
    assert frame.to_segment(1, 1.25, 0.5) == (-9000, 0)
    assert frame.find_segment(3, 0) is None


def test_features_are_geojson(world: Any) -> None:
    collection = world.__geo_interface__
    assert collection["type"] == "FeatureCollection"
    objects = list(world.objects())
    assert len(collection["features"]) == len(objects)
    for feature, obj in zip(collection["features"], objects):
        properties = feature["properties"]
        assert (properties["segment"], properties["z_id"]) == (obj.segment, obj.z_id)
        geometry = feature["geometry"]
        if geometry["type"] == "Polygon":
            (ring,) = geometry["coordinates"]
            assert ring[0] == ring[-1] and len(ring) >= 4
            area = sum(a[0] * b[1] - b[0] * a[1] for a, b in zip(ring, ring[1:]))
            assert area >= 0
        elif geometry["type"] == "Point":
            assert all(math.isfinite(value) for value in geometry["coordinates"])
    layer = world.segments[0].layers[0].__geo_interface__
    assert layer["features"][0] == collection["features"][0]
    assert objects[0].__geo_interface__ == collection["features"][0]
    assert next(world.features(kind="label"))["properties"]["Text"]
