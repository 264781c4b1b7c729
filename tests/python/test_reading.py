"""What documents that are read give: checked against bytes that are put together by hand."""

from __future__ import annotations

import copy
import gc
import io
import pickle
from pathlib import Path
from typing import Any

import numpy as np
import pytest

import handmade
import qenzor


@pytest.fixture
def small() -> Any:
    return qenzor.read(handmade.SMALL_MAP)


def test_the_file_info_has_every_field(small: Any) -> None:
    info = small.info
    assert info.Ident == b"QENMAP\r\n\x1a"
    assert (info.Magic, info.MajorVer, info.MinorVer, info.Revision) == (0x4041, 1, 2, 7)
    assert (info.GeoCoodinate, info.SegmentNumX, info.SegmentNumY, info.CompCoef) == (1, 2, 1, 100)
    assert info.IncRect == qenzor.Rect(W=0, S=0, E=7200000, N=3600000)
    assert info.IncRect.E == 7200000


def test_containers_are_sequences_down_to_the_points(small: Any) -> None:
    assert [segment.MeshSegmentNo for segment in small.segments] == [0, 1]
    layer = small.segments[0].layers[0]
    assert layer.LayerNo == 4
    assert [z.ZId for z in layer.z_ids] == [10, 2**64 - 1]
    polygon = layer.z_ids[0].objects[0]
    assert isinstance(polygon, qenzor.PolyObj)
    assert isinstance(polygon, qenzor.AbstractObj)
    assert polygon.Height == 3
    assert list(polygon.Pt) == [(0, 0), (10, 0), (10, -5)]
    assert polygon.Pt[-1].y == -5
    assert [link.Text for link in polygon.links] == ["https://example.org/a"]
    line, label = layer.z_ids[-1].objects
    assert line.Pt == [(1, 2), (-3, 4)]
    assert len(line.links) == 0
    assert line.AddedObjInfoSet is None
    assert label.Text == "みなと\nPort"
    assert label.Pt == (7, 8)
    assert (label.CtrlFlgs, label.Angle, label.LblOffsetFontRate) == (0x21, 30.0, 0.5)
    assert qenzor.LabelFlags.HIDE_TEXT in qenzor.LabelFlags(label.CtrlFlgs)


def test_positions_count_from_the_end_and_slices_give_lists(small: Any) -> None:
    segments = small.segments
    assert segments[-1].MeshSegmentNo == 1
    assert [s.MeshSegmentNo for s in segments[::-1]] == [1, 0]
    for outside in (2, -3, 10**30):
        with pytest.raises(IndexError):
            segments[outside]
    with pytest.raises(TypeError):
        segments["0"]


def test_draw_data_have_every_field() -> None:
    draw = qenzor.read(handmade.SMALL_DRAWING)
    assert draw.info.Revision == 7
    assert set(draw.attributes) == {10, 11}
    assert list(draw.attributes[10].indices) == [0, 1]
    assert draw.attributes.get(12) is None
    assert 11 in draw.attributes and 12 not in draw.attributes and "x" not in draw.attributes
    with pytest.raises(KeyError):
        draw.attributes[12]
    info = draw.infos[0]
    assert isinstance(info, qenzor.LineDrawInfo)
    assert (info.LineCode, info.Color, info.Aspect) == (1, 0xFF102030, 2.0)
    record = info.ScData[0]
    assert (record.DenomMax, record.DenomMin, record.DenomMaxWidth) == (100000, 50000, 8)
    assert (record.Sensitivity, record.Extension) == (0.5, 1)
    mark = draw.marks[0]
    assert (mark.RectMin, mark.RectMax) == ((-1, -2), (3, 4))
    element = mark.MarkElem[0]
    assert (element.ElemKind, element.LineWidth, element.Color) == (1, 2, 0xFF00FF00)
    assert element.points.tolist() == [[0, 0], [5, 6]]


def test_styles_hold_at_a_scale() -> None:
    draw = qenzor.read(handmade.SMALL_DRAWING)
    assert draw.style_of(10, 100000) == [(0, "line", {"width": 8.0})]
    (style,) = draw.style_of(10, 50000)
    assert style.index == 0
    assert style.sizes["width"] == pytest.approx(8 * 2**0.5)
    assert draw.style_of(10, 100001) == []
    assert draw.style_of(99, 100000) == []
    with pytest.raises(ValueError):
        draw.style_of(10, 0)


def test_points_are_the_documents_own_memory_and_keep_it_alive() -> None:
    points = qenzor.read(handmade.SMALL_MAP).segments[1].layers[0].z_ids[0].objects[0].points
    gc.collect()
    assert points.tolist() == [[-32768, 32767], [0, 1], [2, 3]]
    assert points.dtype == np.int32
    assert not points.flags.owndata
    with pytest.raises(ValueError):
        points[0, 0] = 1
    with pytest.raises(ValueError):
        points.flags.writeable = True


def test_every_kind_of_source_gives_the_same(world_path: Path, world: Any, tmp_path: Path) -> None:
    content = world_path.read_bytes()
    (tmp_path / "日本 map.qen").write_bytes(content)
    sources = [
        str(world_path),
        bytes(world_path),
        content,
        bytearray(content),
        memoryview(content),
        io.BytesIO(content),
        tmp_path / "日本 map.qen",
    ]
    # A path may be bytes, but bytes are a document.
    del sources[1]
    for source in sources:
        assert qenzor.read(source) == world
    with open(world_path, "rb") as file:
        assert qenzor.read(file) == world
    with open(world_path, "r", encoding="latin-1") as file, pytest.raises(TypeError):
        qenzor.read(file)
    for wrong in (None, 3, ["a"]):
        with pytest.raises(TypeError):
            qenzor.read(wrong)  # type: ignore[arg-type]


def test_xml_is_read_as_what_its_root_says(world: Any, style: Any, tmp_path: Path) -> None:
    world.to_xml(tmp_path / "w")
    style.to_xml(tmp_path / "s", encoding="utf-8")
    again = qenzor.read(tmp_path / "w")
    assert isinstance(again, qenzor.Qen)
    assert again.info == world.info
    assert [o.points.tolist() for o in again.objects()] == [o.points.tolist() for o in world.objects()]
    draw = qenzor.read((tmp_path / "s").read_bytes(), encoding="utf-8")
    assert (draw.info, draw.attributes, draw.marks) == (style.info, style.attributes, style.marks)
    with pytest.raises(ValueError):
        qenzor.read(tmp_path / "w", encoding="ebcdic")  # type: ignore[arg-type]


def test_bytes_and_files_are_those_that_were_read(world: Any, world_path: Path, style: Any,
                                                  style_path: Path, tmp_path: Path) -> None:
    assert bytes(world) == world_path.read_bytes()
    style.write(tmp_path / "s.zor")
    assert (tmp_path / "s.zor").read_bytes() == style_path.read_bytes()
    assert bytes(qenzor.read(handmade.SMALL_MAP)) == handmade.SMALL_MAP
    assert bytes(qenzor.read(handmade.SMALL_DRAWING)) == handmade.SMALL_DRAWING


def test_documents_are_equal_by_content_copied_and_pickled(world: Any, style: Any) -> None:
    for document in (world, style):
        for same in (copy.copy(document), copy.deepcopy(document), pickle.loads(pickle.dumps(document))):
            assert same == document
            assert same is not document
    assert world != style
    assert world != 3
    with pytest.raises(TypeError):
        hash(world)
    with pytest.raises(TypeError):
        pickle.dumps(world.segments[0])


def test_nothing_of_a_document_that_is_read_can_be_changed(small: Any) -> None:
    polygon = next(small.objects())
    assert polygon.read_only
    with pytest.raises(AttributeError):
        polygon.Height = 4
    with pytest.raises(AttributeError):
        polygon.Pt = [(0, 0)]
    with pytest.raises(AttributeError):
        polygon.NoSuchField = 4
    with pytest.raises(TypeError):
        polygon.Pt.append((0, 0))
    with pytest.raises(TypeError):
        small.segments.clear()
    with pytest.raises(TypeError):
        del small.segments[0]
    with pytest.raises(TypeError):
        small.segments[1].layers[0].z_ids[0].objects[0].links.append(qenzor.UrlInfo(Text="x"))
    assert bytes(small) == handmade.SMALL_MAP


def test_what_is_shown_is_short(world: Any) -> None:
    assert repr(world) == "<qenzor.Qen of 24 x 12 segments>"
    for thing in (world.info, world.segments, world.segments[0], next(world.objects()),
                  next(world.objects()).Pt):
        assert repr(thing).startswith("<qenzor.")
        assert len(repr(thing)) < 300
