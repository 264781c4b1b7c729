"""The edit form: values, containers, and who owns what."""

from __future__ import annotations

import copy
from pathlib import Path
from typing import Any, Callable

import numpy as np
import pytest

import handmade
import qenzor


@pytest.fixture
def edit() -> Any:
    return qenzor.read(handmade.SMALL_MAP).edit()


@pytest.fixture
def objects(edit: Any) -> Any:
    return edit.segments[0].layers[0].z_ids[1].objects


def test_a_document_and_its_edit_form_hold_the_same(world: Any, style: Any) -> None:
    assert world.edit().to_map() == world
    assert style.edit().to_draw() == style
    assert bytes(world.edit()) == bytes(world)
    assert world.edit() == world.edit()
    assert world.edit().segments[7] == world.segments[7]


def test_fields_are_assigned_and_reach_the_file(edit: Any, tmp_path: Path) -> None:
    polygon = edit.segments[0].layers[0].z_ids[0].objects[0]
    polygon.Height = -7
    polygon.Pt = np.array([[1, 2], [3, 4]], dtype=np.int64)
    polygon.Pt.append((-32768, 32767))
    polygon.links[0].Text = "x"
    edit.info.Revision = 8
    edit.segments[1].MeshSegmentNo = 2
    edit.write(tmp_path / "a.qen")
    expected = handmade.qen(
        handmade.segment(
            0,
            handmade.layer(
                4,
                handmade.z_id(
                    10,
                    handmade.polygon(
                        -7, (1, 2), (3, 4), (-32768, 32767), links=handmade.link("x")
                    ),
                ),
                handmade.z_id(
                    2**64 - 1,
                    handmade.line((1, 2), (-3, 4)),
                    handmade.label(0x21, 30.0, 7, 8, "みなと\nPort"),
                ),
            ),
        ),
        handmade.segment(
            2,
            handmade.layer(
                5, handmade.z_id(11, handmade.line((-32768, 32767), (0, 1), (2, 3)))
            ),
        ),
    ).replace(b"\x02\x00\x07\x00\x00\x00", b"\x02\x00\x08\x00\x00\x00", 1)
    assert (tmp_path / "a.qen").read_bytes() == expected


def test_a_map_is_made_from_nothing() -> None:
    edit = qenzor.QenEdit()
    edit.info.IncRect = (0, 0, 7200000, 3600000)
    edit.info.SegmentNumX = 2
    edit.info.CompCoef = 100
    edit.info.Ident, edit.info.MinorVer, edit.info.Revision = b"QENMAP\r\n\x1a", 2, 7
    edit.info.GeoCoodinate = 1
    assert len(edit.segments) == 0
    edit.segments.append(
        qenzor.MeshSegment(
            MeshSegmentNo=1,
            layers=[
                qenzor.LayerData(
                    LayerNo=5,
                    z_ids=[
                        qenzor.ZIdObj(
                            ZId=11, objects=[qenzor.LineObj(Pt=[(-32768, 32767), (0, 1), [2, 3]])]
                        )
                    ],
                )
            ],
        )
    )
    line = handmade.line((-32768, 32767), (0, 1), (2, 3))
    assert bytes(edit) == handmade.qen(handmade.segment(1, handmade.layer(5, handmade.z_id(11, line))))


def test_reading_an_edit_form_changes_nothing() -> None:
    edit = qenzor.QenEdit()
    edit.segments.append(qenzor.MeshSegment())
    before = bytes(edit)
    segment = edit.segments[0]
    assert segment.LayerSet is None
    assert len(segment.layers) == 0 and list(segment.layers) == []
    assert bytes(edit) == before
    empty = segment.layers
    segment.layers.append(qenzor.LayerData(LayerNo=1))
    assert [layer.LayerNo for layer in empty] == [1]
    assert segment.LayerSet is segment.layers


@pytest.mark.parametrize(
    "field, value, error",
    [
        ("Height", 2**31, OverflowError),
        ("Height", "3", TypeError),
        ("Height", 1.5, TypeError),
        ("Height", None, TypeError),
        ("Pt", [(0, 0), (1, 32768)], OverflowError),
        ("Pt", np.array([[0, -32769]]), OverflowError),
        ("Pt", [(0, 0, 0)], ValueError),
        ("Pt", [(0, "a")], TypeError),
        ("Pt", 3, TypeError),
        ("Pt", np.zeros((3, 2)), TypeError),
        ("Pt", [(0, 0)] * 65536, ValueError),
        ("AddedObjInfoSet", [], TypeError),
        ("AddedObjInfoSet", qenzor.ObjSet(), TypeError),
        ("points", None, TypeError),
        ("kind", "line", AttributeError),
    ],
)
def test_wrong_values_are_refused_before_anything_changes(
    field: str, value: Any, error: type[Exception]
) -> None:
    polygon = qenzor.PolyObj(Height=3, Pt=[(0, 0), (1, 1)], links=[qenzor.UrlInfo(Text="a")])
    before = copy.copy(polygon)
    with pytest.raises(error):
        setattr(polygon, field, value)
    assert polygon == before


@pytest.mark.parametrize("text", ["a\0b", "x" * 32767])
def test_texts_without_a_form_in_the_file_are_refused(text: str) -> None:
    label = qenzor.CmbLblObj(Text="before")
    with pytest.raises(ValueError):
        label.Text = text
    assert label.Text == "before"
    label.Text = "x" * 32766
    brush = qenzor.PolyBmpBrushDrawInfo(BrushFileName="格子.bmp")
    for wrong in ("Côte.bmp", "x" * 32, "😀"):
        with pytest.raises(ValueError):
            brush.BrushFileName = wrong
    assert brush.BrushFileName == "格子.bmp"
    with pytest.raises(TypeError):
        brush.BrushFileName = b"bytes"  # type: ignore[assignment]


def test_numbers_without_a_form_in_the_file_are_refused() -> None:
    label = qenzor.CmbLblObj()
    for field, value, error in [
        ("CtrlFlgs", 65536, OverflowError),
        ("CtrlFlgs", -1, OverflowError),
        ("Angle", 1e39, OverflowError),
        ("Angle", "1", TypeError),
        ("Pt", (40000, 0), OverflowError),
        ("Pt", (1,), ValueError),
    ]:
        with pytest.raises(error):
            setattr(label, field, value)
    label.Angle = float("inf")
    label.CtrlFlgs = qenzor.LabelFlags.HIDE_MARK | qenzor.LabelOrigin.CENTRE
    assert label.CtrlFlgs == 0x49
    with pytest.raises(ValueError):
        qenzor.QenFileInfo().Ident = b"short"
    with pytest.raises(TypeError):
        qenzor.PolyObj(NoSuchField=1)  # type: ignore[call-arg]
    with pytest.raises(TypeError):
        qenzor.PolyObj([(0, 0)])  # type: ignore[call-arg]
    with pytest.raises(TypeError):
        qenzor.AbstractObj()


def test_what_belongs_to_nobody_is_moved_and_all_else_is_copied(objects: Any) -> None:
    new = qenzor.LineObj(Pt=[(1, 1), (2, 2)])
    objects.append(new)
    assert objects[2] is new
    objects.append(new)
    assert objects[3] is not new and objects[3] == new
    new.Pt[0] = (9, 9)
    assert objects[2].Pt[0] == (9, 9) and objects[3].Pt[0] == (1, 1)
    twice = qenzor.LineObj()
    objects[:] = [twice, twice]
    assert objects[0] is twice and objects[1] is not twice


def test_objects_of_a_map_that_is_read_are_copied_into_an_edit_form(world: Any, objects: Any) -> None:
    original = next(world.objects(kind="polygon"))
    objects.append(original)
    objects[-1].Height = 99
    assert original.Height == 0
    assert objects[-1].links == original.links
    objects.extend(world.objects(kind="raster_rect"))
    assert objects[-1].Rect == next(world.objects(kind="raster_rect")).Rect


def test_what_a_list_has_dropped_raises(edit: Any, objects: Any) -> None:
    line, label = objects
    points = line.Pt
    del objects[0]
    for use in (lambda: line.Pt, lambda: points[0], lambda: len(points), lambda: points.append((0, 0)),
                lambda: objects.append(line), lambda: line.links, lambda: copy.copy(line),
                lambda: setattr(line, "Pt", []), lambda: line == qenzor.LineObj()):
        with pytest.raises(ReferenceError):
            use()
    assert repr(line) == "<qenzor.LineObj, dropped>"
    segment = edit.segments[0]
    url = segment.layers[0].z_ids[0].objects[0].links[0]
    edit.segments.clear()
    for gone in (label, objects, url, segment):
        with pytest.raises(ReferenceError):
            copy.copy(gone)
    assert len(edit.segments) == 0


def test_what_is_replaced_is_dropped(edit: Any, objects: Any) -> None:
    line = objects[0]
    objects[0] = qenzor.PolyObj(Height=1)
    with pytest.raises(ReferenceError):
        line.points
    layer = edit.segments[0].layers[0]
    layers = edit.segments[0].LayerSet
    edit.segments[0].LayerSet = qenzor.LayerSet([qenzor.LayerData(LayerNo=8)])
    with pytest.raises(ReferenceError):
        layer.LayerNo
    with pytest.raises(ReferenceError):
        len(layers)
    edit.segments[0].LayerSet = edit.segments[0].LayerSet
    assert [one.LayerNo for one in edit.segments[0].layers] == [8]
    edit.segments[0].LayerSet = None
    assert edit.segments[0].LayerSet is None


def test_what_is_taken_out_lives_on(objects: Any) -> None:
    line = objects[0]
    points = line.Pt
    assert objects.pop(0) is line
    assert len(objects) == 1
    points.append((5, 6))
    assert line.Pt[-1] == (5, 6)
    objects.insert(0, line)
    assert objects[0] is line
    with pytest.raises(IndexError):
        objects.pop(7)


def test_lists_have_the_methods_of_pythons_lists(objects: Any) -> None:
    def numbers() -> list[int]:
        return [o.Height for o in objects]

    objects[:] = [qenzor.PolyObj(Height=n) for n in (3, 1, 2)]
    first = objects[0]
    objects.reverse()
    assert numbers() == [2, 1, 3] and objects[2] is first
    objects.sort(key=lambda o: o.Height)
    assert numbers() == [1, 2, 3] and objects[2] is first
    objects.remove(qenzor.PolyObj(Height=2))
    assert numbers() == [1, 3]
    objects += [qenzor.PolyObj(Height=9)]
    assert objects.index(first) == 1 and first in objects and objects.count(first) == 1
    objects.insert(-1, qenzor.PolyObj(Height=8))
    assert numbers() == [1, 3, 8, 9]
    del objects[::2]
    assert numbers() == [3, 9]
    objects[::-1] = [qenzor.PolyObj(Height=4), qenzor.PolyObj(Height=5)]
    assert numbers() == [5, 4]
    with pytest.raises(ValueError):
        objects[::2] = []
    with pytest.raises(TypeError):
        objects.extend([qenzor.PolyObj(), qenzor.LayerData()])
    with pytest.raises(ValueError):
        objects.remove(qenzor.PolyObj(Height=77))
    assert numbers() == [5, 4]
    points = objects[0].Pt
    points.extend([(1, 1), (2, 2), (3, 3)])
    points.reverse()
    assert points == [(3, 3), (2, 2), (1, 1)]
    points[1:2] = np.array([[7, 7], [8, 8]])
    assert points.pop() == (1, 1)
    assert points == [(3, 3), (7, 7), (8, 8)]


def test_records_are_known_by_their_place() -> None:
    edit = qenzor.read(handmade.SMALL_DRAWING).edit()
    records = edit.infos[0].ScData
    first = records[0]
    new = qenzor.LineDrawScData(DenomMax=5, Sensitivity=0.25)
    records.insert(0, new)
    assert records[0] is new and records[1] is first
    first.DenomMaxWidth = 77
    assert records[1].DenomMaxWidth == 77
    records.append(first)
    assert records[2] is not first and records[2] == first
    del records[0]
    with pytest.raises(ReferenceError):
        new.DenomMax
    assert records[0] is first
    taken = records.pop(0)
    assert taken.DenomMaxWidth == 77
    with pytest.raises(ReferenceError):
        first.DenomMax
    edit.infos.clear()
    with pytest.raises(ReferenceError):
        len(records)


def test_attributes_are_a_mapping() -> None:
    edit = qenzor.read(handmade.SMALL_DRAWING).edit()
    attributes = edit.attributes
    ten = attributes[10]
    assert attributes[10] is ten
    with pytest.raises(ValueError):
        attributes[13] = qenzor.DrawAtter(ZId=14)
    with pytest.raises(ValueError):
        ten.ZId = 11
    assert ten.ZId == 10
    ten.ZId = 12
    assert set(attributes) == {11, 12} and attributes[12] is ten
    new = qenzor.DrawAtter(ZId=13, indices=[1, 0])
    attributes.add(new)
    assert attributes[13] is new and list(new.indices) == [1, 0]
    attributes[13] = new
    new_again = attributes[13]
    assert new_again == qenzor.DrawAtter(ZId=13, indices=[1, 0])
    with pytest.raises(ReferenceError):
        new.ZId
    assert attributes.pop(12) is ten
    assert ten.ZId == 12 and attributes.pop(12, None) is None
    ten.ZId = 11
    eleven = attributes[11]
    attributes.add(ten)
    assert attributes[11] is ten
    with pytest.raises(ReferenceError):
        eleven.ZId
    with pytest.raises(OverflowError):
        ten.indices = [2**32]
    with pytest.raises(KeyError):
        del attributes[99]
    del attributes[13]
    assert len(attributes) == 1
    draw = edit.to_draw()
    assert list(draw.attributes) == [11]


def test_the_end_of_with_closes_the_edit_form(world: Any) -> None:
    with world.edit() as edit:
        segment = edit.segments[0]
        segments = edit.segments
        points = segment.layers[0].z_ids[0].objects[0].points
    uses: list[Callable[[], Any]] = [
        lambda: edit.info, lambda: edit.segments, edit.to_map, lambda: bytes(edit),
        lambda: edit.write("/nowhere/x"), lambda: segment.MeshSegmentNo, lambda: len(segments),
        edit.__enter__,
    ]
    for use in uses:
        with pytest.raises(ReferenceError):
            use()
    assert edit.closed and "closed" in repr(edit)
    edit.close()
    assert len(points) > 2


def test_code_that_runs_while_values_are_taken_cannot_do_harm(objects: Any) -> None:
    line = objects[0]

    class Spoiler:
        def __index__(self) -> int:
            objects.clear()
            return 1

    with pytest.raises(ReferenceError):
        line.Pt.append((Spoiler(), 2))
    with pytest.raises(ReferenceError):
        line.Pt = [(0, 0), (Spoiler(), 2)]
    polygon = qenzor.PolyObj(Height=5)
    objects.append(polygon)
    with pytest.raises(ReferenceError):
        polygon.Height = Spoiler()
    line = qenzor.LineObj(Pt=[(0, 0)] * 100)
    objects.append(line)

    def shrink() -> Any:
        line.Pt.clear()
        yield (1, 1)

    line.Pt[50:60] = shrink()
    assert line.Pt == [(1, 1)]

    def elements() -> Any:
        objects.clear()
        yield qenzor.LineObj()

    objects[1:2] = elements()
    assert len(objects) == 1
