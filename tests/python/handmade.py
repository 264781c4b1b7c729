"""Documents written with struct alone, as docs/file-format.md tells."""

from __future__ import annotations

import struct


def chunk(chunk_id: int, *parts: bytes) -> bytes:
    data = b"".join(parts)
    return struct.pack("<II", chunk_id, len(data)) + data


def text(value: str) -> bytes:
    stored = b"" if not value else b"\xff\xfe" + value.encode("utf-16-le")
    return struct.pack("<H", len(stored)) + stored


def array_set(chunk_id: int, *elements: bytes) -> bytes:
    return chunk(chunk_id, struct.pack("<I", len(elements)), *elements)


def front(ident: bytes) -> bytes:
    return ident + b"\r\n\x1a" + struct.pack("<HHHI", 0x4041, 1, 2, 7)


def line(*points: tuple[int, int], links: bytes = b"") -> bytes:
    packed = b"".join(struct.pack("<hh", x, y) for x, y in points)
    return chunk(9, struct.pack("<H", len(points)), packed, links)


def polygon(height: int, *points: tuple[int, int], links: bytes = b"") -> bytes:
    packed = b"".join(struct.pack("<hh", x, y) for x, y in points)
    return chunk(13, struct.pack("<iH", height, len(points)), packed, links)


def label(flags: int, angle: float, x: int, y: int, words: str) -> bytes:
    return chunk(5, struct.pack("<Hfhhff", flags, angle, x, y, 0.5, 90.0), text(words))


def link(url: str) -> bytes:
    return array_set(1, chunk(19, text(url)))


def z_id(number: int, *objects: bytes) -> bytes:
    return chunk(21, struct.pack("<Q", number), array_set(22, *objects))


def layer(number: int, *z_ids: bytes) -> bytes:
    return chunk(7, struct.pack("<H", number), array_set(20, *z_ids))


def segment(number: int, *layers: bytes) -> bytes:
    return chunk(30, struct.pack("<H", number), array_set(8, *layers))


def qen(*segments: bytes, x: int = 2, y: int = 1) -> bytes:
    info = struct.pack("<BiiiiHHH", 1, 0, 0, 7200000, 3600000, x, y, 100)
    return front(b"QENMAP") + info + chunk(25, array_set(29, *segments))


def attribute(key: int, *indices: int) -> bytes:
    packed = struct.pack(f"<I{len(indices)}I", len(indices), *indices)
    return chunk(3, struct.pack("<Q", key), chunk(23, packed))


def line_info(color: int, *records: tuple[int, int, int, float, int]) -> bytes:
    packed = b"".join(struct.pack("<IIHfH", *record) for record in records)
    return chunk(10, struct.pack("<BIfH", 1, color, 2.0, len(records)), packed)


def mark(*elements: tuple[int, int, int, tuple[tuple[int, int], ...]]) -> bytes:
    packed = b""
    for kind, width, color, points in elements:
        packed += struct.pack("<hhIH", kind, width, color, len(points))
        packed += b"".join(struct.pack("<hh", x, y) for x, y in points)
    return chunk(11, struct.pack("<hhhhH", -1, -2, 3, 4, len(elements)), packed)


def zor(attributes: bytes, infos: bytes, marks: bytes) -> bytes:
    return front(b"ZORDRW") + chunk(26, attributes, infos, marks)


SMALL_MAP = qen(
    segment(
        0,
        layer(
            4,
            z_id(10, polygon(3, (0, 0), (10, 0), (10, -5), links=link("https://example.org/a"))),
            z_id(2**64 - 1, line((1, 2), (-3, 4)), label(0x21, 30.0, 7, 8, "みなと\nPort")),
        ),
    ),
    segment(1, layer(5, z_id(11, line((-32768, 32767), (0, 1), (2, 3))))),
)

SMALL_DRAWING = zor(
    array_set(2, attribute(10, 0, 1), attribute(11, 1)),
    array_set(6, line_info(0xFF102030, (100000, 50000, 8, 0.5, 1)), line_info(0x80FF0000)),
    array_set(24, mark((1, 2, 0xFF00FF00, ((0, 0), (5, 6))))),
)
