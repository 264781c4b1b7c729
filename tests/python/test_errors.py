"""Failures say where and why, and damaged files never do worse."""

from __future__ import annotations

import pickle
from pathlib import Path
from typing import Any

import pytest

import handmade
import qenzor


def test_a_damaged_file_is_told_with_its_place(tmp_path: Path) -> None:
    path = tmp_path / "cut.qen"
    path.write_bytes(handmade.SMALL_MAP[:-3])
    with pytest.raises(qenzor.ReadError) as caught:
        qenzor.read(path)
    error = caught.value
    assert isinstance(error, ValueError)
    assert error.path == str(path)
    assert error.offset == 42
    assert error.line is None
    assert "truncated" in error.reason
    assert str(error).startswith(f"{path}: byte 42: ")
    again = pickle.loads(pickle.dumps(error))
    assert (type(again), str(again), again.offset) == (qenzor.ReadError, str(error), 42)


def test_damaged_xml_is_told_with_its_line() -> None:
    with pytest.raises(qenzor.ReadError) as caught:
        qenzor.read(b"<Qen>\n<QenMapData>\n</Qen>\n")
    assert caught.value.line == 3
    assert caught.value.offset is None


def test_what_is_no_document_and_what_is_not_there_are_read_errors(tmp_path: Path) -> None:
    for content in (b"", b"abc", b"<Other/>", bytes(1000)):
        with pytest.raises(qenzor.ReadError):
            qenzor.read(content)
    with pytest.raises(qenzor.ReadError) as caught:
        qenzor.read(tmp_path / "nothing")
    assert "No such file" in caught.value.reason
    with pytest.raises(qenzor.ReadError):
        qenzor.read(tmp_path)
    with pytest.raises(ValueError):
        qenzor.read(b"", kind="map")  # type: ignore[arg-type]


def test_what_cannot_be_written_is_a_write_error(world: Any, tmp_path: Path) -> None:
    with pytest.raises(qenzor.WriteError) as caught:
        world.write(tmp_path / "no such folder" / "a.qen")
    assert isinstance(caught.value, OSError)
    assert caught.value.path == str(tmp_path / "no such folder" / "a.qen")
    # A coordinate that XML holds and a file does not.
    line = "<LineObj><Pt><x>70000</x><y>0</y></Pt></LineObj>"
    xml = (
        "<Qen><QenFileInfo/><QenMapData><MeshSegmentSet><MeshSegment><LayerSet><LayerData>"
        f"<ZIdObjSet><ZIdObj><ObjSet>{line}</ObjSet></ZIdObj></ZIdObjSet></LayerData></LayerSet>"
        "</MeshSegment></MeshSegmentSet></QenMapData></Qen>"
    )
    map_ = qenzor.read(xml.encode())
    (wide,) = map_.objects()
    if wide.points.tolist() == [[70000, 0]]:
        for write in (bytes, lambda m: m.write(tmp_path / "wide.qen")):
            with pytest.raises(qenzor.WriteError) as caught:
                write(map_)
            assert "LineObj" in (caught.value.chunk_path or "")
    assert list(tmp_path.iterdir()) == []


def test_check_tells_all_findings(tmp_path: Path, world_path: Path) -> None:
    assert list(qenzor.check(world_path)) == []
    damaged = bytearray(handmade.SMALL_MAP)
    damaged[0] = ord("X")
    (tmp_path / "a.qen").write_bytes(damaged[:-3])
    findings = list(qenzor.check(tmp_path / "a.qen"))
    assert {f.severity for f in findings} >= {"error"}
    error = next(f for f in findings if f.severity == "error")
    assert error.code.startswith("Q1")
    assert error.name and error.reason and error.offset is not None
    assert all(f.code != error.code for f in qenzor.check(bytes(damaged[:-3]), skip=[error.code]))
    with pytest.raises(ValueError):
        qenzor.check(world_path, skip=["no-such-kind"])
    with pytest.raises(qenzor.ReadError):
        qenzor.check(b"abc")


def corpus(source: Path) -> list[Path]:
    folders = ["document_file", "document_memory", "xml", "xml_limits", "xml_pieces"]
    return [path for name in folders for path in sorted((source / "fuzz" / "corpus" / name).iterdir())]


def touch_all(document: Any) -> int:
    """Reads every field of everything, as Python sees it."""
    count = 0

    def visit(node: Any) -> None:
        nonlocal count
        count += 1
        repr(node)
        for name in node.field_names:
            value = getattr(node, name)
            if isinstance(value, qenzor.Data):
                visit(value)
            elif isinstance(value, qenzor.FieldList):
                for element in value:
                    if isinstance(element, qenzor.Data):
                        visit(element)
        if hasattr(node, "values"):
            for element in node.values():
                visit(element)
        elif hasattr(node, "pop"):
            for element in node:
                if element is not None:
                    visit(element)

    visit(document.info)
    visit(document.MapData if isinstance(document, (qenzor.Qen, qenzor.QenEdit)) else document.DrawData)
    return count


def test_every_file_of_the_fuzz_corpora_is_a_document_or_a_read_error(source: Path) -> None:
    files = corpus(source)
    assert len(files) > 200
    documents = 0
    for path in files:
        content = path.read_bytes()
        for kind in (None, "qen", "zor"):
            # The first byte of a case may choose among what the target tries.
            for start in (0, 1):
                try:
                    document = qenzor.read(content[start:], kind)  # type: ignore[arg-type]
                except qenzor.ReadError as error:
                    assert error.reason
                    continue
                documents += 1
                touch_all(document)
                with document.edit() as edit:
                    touch_all(edit)
                try:
                    written = bytes(document)
                except qenzor.WriteError:
                    continue
                again = qenzor.read(written, kind)  # type: ignore[arg-type]
                assert len(bytes(again)) == len(written)
        list_or_error(content)
    assert documents > 50


def list_or_error(content: bytes) -> None:
    try:
        list(qenzor.check(content))
    except qenzor.ReadError:
        pass


def test_every_cut_of_a_small_map_is_a_document_or_a_read_error() -> None:
    for size in range(len(handmade.SMALL_MAP)):
        with pytest.raises(qenzor.ReadError):
            qenzor.read(handmade.SMALL_MAP[:size], kind="qen")
