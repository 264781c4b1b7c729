#!/usr/bin/env python3
"""What `qenzor render --list` is to print, worked out from docs/drawing.md and the XML of both
documents, with nothing of the library: list_reference.py MAP.xml DRAW.xml DENOMINATOR <LIST compares a list with it,
says where the two part, and exits 1. Frames are the default ones. XML lacks what its code page does."""
import json
import math
import struct
import sys
import xml.etree.ElementTree as ET


def load(path):
    with open(path, "rb") as file:
        text = file.read().decode("cp932")
    return ET.fromstring(text.split("?>", 1)[1].strip())


def number(element, tag):
    found = element.find(tag)
    return 0 if found is None else float(found.text)


def single(element, tag):
    """A number as the file holds it: infinite and undefined ones count as 0."""
    value = struct.unpack("f", struct.pack("f", number(element, tag)))[0]
    return value if math.isfinite(value) else 0


def color(element, tag):
    parts = element.find(tag)
    return "#" + "".join("%02X" % (int(parts.get(p)) & 255) for p in "ARGB")


def text_of(element, tag):
    found = element.find(tag)
    text = (found.text if found is not None else "") or ""
    return text.replace("<br />", "\n").replace("&nbsp;", " ")


def point(element):
    return int(element.get("x")), int(element.get("y"))


def shown(value, decimals):
    """As a JSON number with so many decimals at most."""
    text = "%.*f" % (decimals, value)
    text = text.rstrip("0").rstrip(".") if "." in text else text
    return Shown("0" if text in ("-0", "") else text)


class Shown(str):
    """What stands in JSON as it is."""


def dump(value):
    if isinstance(value, Shown):
        return value
    if isinstance(value, dict):
        return "{" + ",".join(json.dumps(k) + ":" + dump(v) for k, v in value.items()) + "}"
    if isinstance(value, list):
        return "[" + ",".join(map(dump, value)) + "]"
    return json.dumps(value, ensure_ascii=False)


def place(value):
    return [shown(value[0], 9), shown(value[1], 9)]


def bare(name):
    for separator in "/\\:":
        name = name[name.rfind(separator) + 1:]
    return name


class Frame:
    def __init__(self, info):
        rect = info.find("IncRect")
        self.w, self.s, self.e, self.n = (int(rect.get(k)) for k in "WSEN")
        self.x, self.y = int(number(info, "SegmentNumX")), int(number(info, "SegmentNumY"))
        self.coef = int(number(info, "CompCoef")) or 1
        self.plain = not (self.x and self.y and self.w < self.e and self.s < self.n)

    def at(self, segment, p):
        if self.plain:
            return float(p[0]), float(p[1])
        c, r = segment % self.x, segment // self.x
        x = self.w + (self.e - self.w) * (2 * c + 1) / (2 * self.x) + p[0] * self.coef
        y = self.s + (self.n - self.s) * (2 * r + 1) / (2 * self.y) + p[1] * self.coef
        return x / 3600000, y / 3600000


KINDS = {"LineDrawInfo": "LineObj", "PolySolidBrushDrawInfo": "PolyObj",
         "PolyBmpBrushDrawInfo": "PolyObj", "PolyShadowDrawInfo": "PolyObj",
         "CmbLblDrawInfo": "CmbLblObj", "RasLLDrawInfo": "RasLLObj", "RasMMDrawInfo": "RasMMObj"}
SORTS = {"PolyShadowDrawInfo": 0, "PolySolidBrushDrawInfo": 1, "PolyBmpBrushDrawInfo": 1,
         "LineDrawInfo": 2, "RasLLDrawInfo": 3, "RasMMDrawInfo": 3, "CmbLblDrawInfo": 4}


class Drawing:
    def __init__(self, root, denominator):
        self.d = denominator
        data = root.find("ZorDrawData")
        self.lists = {a.find("ZId").text: [int(i.text) for i in a.findall(".//DrawInfoIdx")]
                      for a in data.findall("DrawAtterSet/DrawAtter")}
        self.infos = list(data.find("DrawInfoSet") or [])
        self.marks = len(data.findall("MarkDataSet/MarkData"))

    def record(self, info):
        for record in info.findall("ScData"):
            if number(record, "DenomMin") <= self.d <= number(record, "DenomMax"):
                return record
        return None

    def size(self, record, stored, limits=(0, 4096)):
        if stored == 0:
            return 0
        base = number(record, "DenomMax") / self.d
        try:
            factor = base ** single(record, "Sensitivity")
        except (OverflowError, ZeroDivisionError):
            factor = math.inf
        return min(max(stored * factor, limits[0]), limits[1])

    def width(self, record, tag):
        stored = number(record, tag)
        return max(0.1, self.size(record, stored)) if stored else 0


def ops(drawing, info, record, obj, frame, segment):
    """The things that a draw info makes of an object, as (op, keys)."""
    com, kind = info.find("ComData"), info.tag
    points = [frame.at(segment, point(p)) for p in obj.findall("Pt")]
    if obj.tag == "LineObj" and len(points) < 2 or obj.tag == "PolyObj" and len(points) < 3:
        return
    if kind == "LineDrawInfo":
        width, code = drawing.width(record, "DenomMaxWidth"), int(number(com, "LineCode"))
        if width > 0:
            yield "stroke", dict(color=color(com, "Color"), size=shown(width, 6),
                                 code=code if code <= 4 else 0, points=list(map(place, points)))
    elif kind == "PolySolidBrushDrawInfo":
        yield "fill", dict(color=color(com, "Color"), size=None, points=list(map(place, points)))
    elif kind == "PolyBmpBrushDrawInfo":
        yield "pattern", dict(color=None, size=None, name=bare(text_of(com, "BrushFileName")),
                              points=list(map(place, points)))
    elif kind == "PolyShadowDrawInfo":
        offset = [shown(drawing.size(record, v, (-4096, 4096)), 6)
                  for v in point(record.find("DenomMaxOffset"))]
        yield "shadow", dict(color=color(com, "ShadowColor"), size=None, offset=offset,
                             points=list(map(place, points)))
    elif kind == "RasLLDrawInfo":
        w, s, e, n = (int(obj.find("Rect").get(k)) for k in "WSEN")
        if w < e and s < n:
            rect = place(frame.at(segment, (w, s))) + place(frame.at(segment, (e, n)))
            yield "image", dict(color=color(com, "ColorKey"), size=None,
                                name=bare(text_of(com, "RasFileName")), rect=rect,
                                alpha=int(number(record, "Alpha")))
    elif kind == "RasMMDrawInfo":
        width = drawing.size(record, number(record, "DenomMaxRasWidth"))
        if width > 0:
            yield "image", dict(color=color(com, "ColorKey"), size=shown(width, 6),
                                name=bare(text_of(com, "RasFileName")), at=place(points[0]))
    else:
        yield from label(drawing, com, record, obj, points[0])


def label(drawing, com, record, obj, at):
    flags, shows = int(number(obj, "CtrlFlgs")), int(number(com, "CtrlFlgs"))
    scale = drawing.size(record, single(record, "DenomMaxMarkScale"))
    mark = int(number(com, "MarkDataIdx"))
    if shows & 2 and not flags & 64 and scale > 0 and mark < drawing.marks:
        yield "mark", dict(color=None, size=shown(scale, 6), at=place(at), mark=mark)
    size, text = drawing.size(record, number(record, "DenomMaxFontSize")), text_of(obj, "Text")
    if not shows & 1 or flags & 32 or not size > 0 or not text:
        return
    angle = math.radians(single(obj, "LblOffsetAngle") % 360)
    move = single(obj, "LblOffsetFontRate") * size
    offset = [min(max(move * turn, -4096), 4096) for turn in (math.cos(angle), math.sin(angle))]
    anchor = flags & 15 if 1 <= flags & 15 <= 9 else 1
    keys = dict(color=color(com, "FontColor"), size=shown(size, 6),
                offset=[shown(v, 6) for v in offset], at=place(at), text=text, anchor=anchor,
                angle=shown(single(obj, "Angle") % 360, 6), vertical=bool(flags & 16))
    frame, width = int(number(com, "FrameCtrl")), drawing.width(record, "DenomMaxFrameWidth")
    if frame and width > 0:
        keys["frame"] = dict(kind=frame if frame <= 3 else 1, color=color(com, "FrameColor"),
                             width=shown(width, 6),
                             margin=shown(drawing.size(record, number(record, "DenomMaxFrameMgn")), 6))
    if int(number(com, "FontCtrl")) & 1:
        shadow = drawing.size(record, number(record, "DenomMaxShadowOffset"), (-4096, 4096))
        keys["shadow"] = dict(color=color(com, "ShadowColor"), offset=shown(shadow, 6))
    yield "text", keys


def objects(root):
    for segment in root.iter("MeshSegment"):
        number_of = int(number(segment, "MeshSegmentNo"))
        for layer in segment.iter("LayerData"):
            for group in layer.iter("ZIdObj"):
                found = group.find("ObjSet")
                for index, obj in enumerate(found if found is not None else []):
                    yield number_of, int(number(layer, "LayerNo")), group.find("ZId").text, index, obj


def main():
    root, denominator = load(sys.argv[1]), float(sys.argv[3])
    drawing = Drawing(load(sys.argv[2]), denominator)
    frame = Frame(root.find("QenFileInfo"))
    things = []
    for sequence, (segment, layer, z_id, index, obj) in enumerate(objects(root)):
        passes = {}
        for turn, k in enumerate(drawing.lists.get(z_id, [])):
            if k >= len(drawing.infos) or KINDS.get(drawing.infos[k].tag) != obj.tag:
                continue
            info, record = drawing.infos[k], drawing.record(drawing.infos[k])
            if record is None:
                continue
            sort = SORTS[info.tag]
            passes[sort] = passes.get(sort, -1) + 1
            for part, (op, keys) in enumerate(ops(drawing, info, record, obj, frame, segment)):
                line = dict(op=op, layer=layer, segment=segment, z_id=int(z_id), index=index, info=k)
                line.update(keys)
                order = ((1, sequence, turn, part) if sort == 4
                         else (0, layer, sort, passes[sort], k, sequence))
                things.append((order, line))
    things.sort(key=lambda t: t[0])
    found = sys.stdin.buffer.read().decode().splitlines()
    for at, (_, expected) in enumerate(things):
        line = found[at].encode("cp932", "replace").decode("cp932") if at < len(found) else "nothing"
        if line != dump(expected):
            sys.exit("line %d:\nexpected %s\nfound    %s" % (at + 1, dump(expected), line))
    if len(found) != len(things):
        sys.exit("%d lines are expected, %d found" % (len(things), len(found)))
    print(len(found), "lines agree")


main()
