"""The GDAL driver, through GDAL's own Python binding, against what the XML form of the same map says."""

import os
import subprocess
import tempfile
import threading
import unittest
import xml.etree.ElementTree as ElementTree
from pathlib import Path

from osgeo import gdal, ogr

TOOL = os.environ["QENZOR_TOOL"]
SAMPLES = Path(os.environ["QENZOR_SAMPLES"])
MAP = str(SAMPLES / "world.qen")
KINDS = {"LineObj": "line", "PolyObj": "polygon", "CmbLblObj": "label", "RasLLObj": "raster_rect",
         "RasMMObj": "raster_point"}

gdal.UseExceptions()
ogr.UseExceptions()


def open_map(path, *options):
    return gdal.OpenEx(path, gdal.OF_VECTOR, open_options=list(options))


def elements(parent, *path):
    for tag in path:
        parent = parent.find(tag) if parent is not None else None
    return [] if parent is None else list(parent)


class XmlMap:
    """The map as its XML form says it, placed by the formula of docs/drawing.md."""

    def __init__(self, path):
        with tempfile.TemporaryDirectory() as folder:
            out = os.path.join(folder, "map.xml")
            subprocess.run([TOOL, "to-xml", "--quiet", "--encoding", "utf-8", path, out], check=True,
                           stderr=subprocess.DEVNULL)
            self.root = ElementTree.parse(out).getroot()
        info = self.root.find("QenFileInfo")
        if info is None:
            info = self.root
        rect = info.find("IncRect")
        self.west, self.south, self.east, self.north = (int(rect.get(k)) for k in ("W", "S", "E", "N"))
        self.columns = int(info.find("SegmentNumX").text)
        self.rows = int(info.find("SegmentNumY").text)
        self.coef = int(info.find("CompCoef").text) or 1

    def place(self, segment, x, y):
        column, row = segment % self.columns, segment // self.columns
        return ((self.west + (self.east - self.west) * (2 * column + 1) / (2 * self.columns) +
                 x * self.coef) / 3600000,
                (self.south + (self.north - self.south) * (2 * row + 1) / (2 * self.rows) +
                 y * self.coef) / 3600000)

    def objects(self):
        """Each as (layer, kind, z-id, segment, index, places, element), in the order of the file."""
        for segment in elements(self.root, "QenMapData", "MeshSegmentSet"):
            number = int(segment.find("MeshSegmentNo").text)
            for layer in elements(segment, "LayerSet"):
                for group in elements(layer, "ZIdObjSet"):
                    z_id = int(group.find("ZId").text)
                    for index, element in enumerate(elements(group, "ObjSet")):
                        points = [self.place(number, int(p.get("x")), int(p.get("y")))
                                  for p in element.findall("Pt")]
                        for rect in element.findall("Rect"):
                            w, s, e, n = (int(rect.get(k)) for k in "WSEN")
                            points = [self.place(number, x, y)
                                      for x, y in ((w, s), (w, n), (e, n), (e, s), (w, s))]
                        yield (int(layer.find("LayerNo").text), KINDS[element.tag], z_id, number,
                               index, points, element)


def geometry_of(layer, fid):
    feature = layer.GetFeature(fid)
    return feature.GetGeometryRef().Clone()


def places_of(geometry):
    if geometry.GetGeometryName() == "POLYGON":
        geometry = geometry.GetGeometryRef(0) if geometry.GetGeometryCount() else geometry
    return [] if geometry.IsEmpty() else [p[:2] for p in geometry.GetPoints()]


class Driver(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.xml = XmlMap(MAP)
        cls.expected = {}
        for layer, kind, *rest in cls.xml.objects():
            cls.expected.setdefault(f"{layer}_{kind}", []).append(rest)

    def setUp(self):
        self.folder = tempfile.TemporaryDirectory()
        self.addCleanup(self.folder.cleanup)
        self.map = open_map(MAP)

    def at(self, name):
        return os.path.join(self.folder.name, name)

    def assert_same_places(self, places, expected, within=1e-9):
        self.assertEqual(len(places), len(expected))
        for (x, y), (u, v) in zip(places, expected):
            self.assertAlmostEqual(x, u, delta=within)
            self.assertAlmostEqual(y, v, delta=within)

    def test_maps_are_recognised_and_nothing_else(self):
        self.assertEqual(gdal.IdentifyDriver(MAP).ShortName, "QENZOR")
        xml = self.at("map.xml")
        subprocess.run([TOOL, "to-xml", "--quiet", MAP, xml], check=True, stderr=subprocess.DEVNULL)
        self.assertEqual(gdal.IdentifyDriver(xml).ShortName, "QENZOR")
        good = Path(MAP).read_bytes()
        for name, content in {"ident": good[:6] + b"\r\r\x1a" + good[9:],
                              "magic": good[:9] + b"\0\0" + good[11:],
                              "root": good[:42] + b"\1" + good[43:],
                              "short": good[:45], "other.xml": b"<Qenx></Qenx>"}.items():
            Path(self.at(name)).write_bytes(content)
            driver = gdal.IdentifyDriver(self.at(name))
            self.assertTrue(driver is None or driver.ShortName != "QENZOR", name)

    def test_every_object_is_a_feature_of_the_layer_of_its_number_and_kind(self):
        names = [self.map.GetLayer(i).GetName() for i in range(self.map.GetLayerCount())]
        self.assertEqual(sorted(names), sorted(self.expected))
        for name, objects in self.expected.items():
            layer = self.map.GetLayer(name)
            self.assertEqual(layer.GetFeatureCount(), len(objects))
            for fid, (feature, (z_id, segment, index, places, element)) in enumerate(
                    zip(layer, objects)):
                self.assertEqual(feature.GetFID(), fid)
                self.assertEqual(feature["z_id"], z_id)
                self.assertEqual(feature["segment"], segment)
                self.assertEqual(feature["index"], index)
                found = places_of(feature.GetGeometryRef())
                if name.endswith("polygon") and places and places[0] != places[-1]:
                    places = places + places[:1]
                self.assert_same_places(found, places)
                if name.endswith("_polygon"):
                    self.assertEqual(feature["Height"], int(element.find("Height").text))
                if name.endswith("label"):
                    self.assertEqual(feature["Text"], (element.find("Text").text or "")
                                     .replace("<br />", "\n").replace("&nbsp;", " "))
                    self.assertEqual(feature["Angle"], float(element.find("Angle").text))

    def test_extents_and_filters_agree_with_brute_force(self):
        for name in self.expected:
            layer = self.map.GetLayer(name)
            features = [feature.Clone() for feature in layer]
            around = [feature.GetGeometryRef().GetEnvelope() for feature in features
                      if not feature.GetGeometryRef().IsEmpty()]
            whole = (min(e[0] for e in around), max(e[1] for e in around),
                     min(e[2] for e in around), max(e[3] for e in around))
            self.assertEqual(layer.GetExtent(), whole)
            for box in [(-10, 35, 30, 60), (100, -50, 180, 10), (0, 0, 0.5, 0.5)]:
                ring = ogr.CreateGeometryFromWkt(
                    "POLYGON(({0} {1},{0} {3},{2} {3},{2} {1},{0} {1}))".format(*box))
                layer.SetSpatialFilterRect(*box)
                found = [feature.GetFID() for feature in layer]
                layer.SetSpatialFilter(None)
                self.assertEqual(found, [f.GetFID() for f in features
                                         if f.GetGeometryRef().Intersects(ring)], (name, box))
            layer.SetAttributeFilter("segment = 3")
            self.assertEqual([f.GetFID() for f in layer],
                             [f.GetFID() for f in features if f["segment"] == 3])
            layer.SetAttributeFilter(None)

    def test_features_are_found_by_their_number_in_any_order(self):
        name = max(self.expected, key=lambda n: len(self.expected[n]))
        layer = self.map.GetLayer(name)
        last = layer.GetFeatureCount() - 1
        for fid in [last, 0, last // 2, 1]:
            self.assertEqual(layer.GetFeature(fid)["z_id"], self.expected[name][fid][0])
        for fid in [-1, last + 1, 2**40]:
            self.assertIsNone(layer.GetFeature(fid))
        layer.SetNextByIndex(last)
        self.assertEqual(layer.GetNextFeature().GetFID(), last)
        self.assertIsNone(layer.GetNextFeature())

    def test_layers_can_be_read_in_turns(self):
        layers = [self.map.GetLayer(i) for i in range(self.map.GetLayerCount())]
        counts = [0] * len(layers)
        for _ in range(50):
            for i, layer in enumerate(layers):
                counts[i] += layer.GetNextFeature() is not None
        self.assertEqual(counts, [min(50, layer.GetFeatureCount()) for layer in layers])

    def test_two_threads_read_two_datasets(self):
        counts = []

        def count():
            dataset = open_map(MAP)
            counts.append(sum(1 for i in range(dataset.GetLayerCount())
                              for _ in dataset.GetLayer(i)))

        threads = [threading.Thread(target=count) for _ in range(2)]
        for thread in threads:
            thread.start()
        for thread in threads:
            thread.join()
        self.assertEqual(counts, [sum(map(len, self.expected.values()))] * 2)

    def test_files_in_memory_are_read(self):
        content = Path(MAP).read_bytes()
        gdal.FileFromMemBuffer("/vsimem/a.qen", content)
        self.addCleanup(gdal.Unlink, "/vsimem/a.qen")
        self.assertEqual(open_map("/vsimem/a.qen").GetLayerCount(), len(self.expected))

    def test_the_frame_follows_the_open_options(self):
        name = next(iter(self.expected))
        plain = open_map(MAP, "PLAIN=YES")
        self.assertIsNone(plain.GetLayer(name).GetSpatialRef())
        self.assertEqual(self.map.GetLayer(name).GetSpatialRef().GetAuthorityCode(None), "4326")
        with self.assertRaisesRegex(RuntimeError, "north"):
            open_map(MAP, "ROWS=up")

    def test_the_drawing_beside_the_map_gives_styles(self):
        self.assertIn(str(SAMPLES / "world.zor"), self.map.GetFileList())
        styles = {name: {f.GetStyleString() for f in self.map.GetLayer(name)} - {None}
                  for name in self.expected}
        for name, tool in {"polygon": "BRUSH(fc:#", "line": "PEN(c:#", "label": "LABEL(t:\""}.items():
            found = set().union(*(s for n, s in styles.items() if n.endswith("_" + name)))
            self.assertTrue(found, name)
            self.assertTrue(all(tool in style for style in found), name)

    def test_a_damaged_drawing_is_a_warning(self):
        Path(self.at("a.qen")).write_bytes(Path(MAP).read_bytes())
        Path(self.at("a.zor")).write_bytes(b"no drawing")
        heard = []
        gdal.PushErrorHandler(lambda severity, number, text: heard.append((severity, text)))
        try:
            dataset = open_map(self.at("a.qen"))
        finally:
            gdal.PopErrorHandler()
        self.assertEqual(dataset.GetLayerCount(), len(self.expected))
        self.assertEqual([severity for severity, _ in heard], [gdal.CE_Warning])
        self.assertIn("a.zor", heard[0][1])

    def test_a_damaged_map_says_where_and_why(self):
        content = Path(MAP).read_bytes()
        Path(self.at("a.qen")).write_bytes(content[:len(content) // 2])
        with self.assertRaisesRegex(RuntimeError, r"a\.qen: byte \d+: .*MeshSegment"):
            open_map(self.at("a.qen"))

    def test_z_ids_beyond_the_signed_range_are_text(self):
        text = Path(self.write_xml()).read_text(encoding="utf-8")
        first = text.index("<ZId>") + 5
        z_id = str(2**64 - 1)
        Path(self.at("b.xml")).write_text(
            text[:first] + z_id + text[text.index("</ZId>", first):], encoding="utf-8")
        dataset = open_map(self.at("b.xml"))
        types = {layer.GetLayerDefn().GetFieldDefn(0).GetType(): layer
                 for layer in (dataset.GetLayer(i) for i in range(dataset.GetLayerCount()))}
        self.assertIn(ogr.OFTInteger64, types)
        self.assertIn(z_id, {feature["z_id"] for feature in types[ogr.OFTString]})

    def write_xml(self):
        path = self.at("map.xml")
        subprocess.run([TOOL, "to-xml", "--quiet", MAP, path], check=True, stderr=subprocess.DEVNULL)
        text = Path(path).read_text(encoding="cp932").replace("Shift_JIS", "UTF-8")
        Path(path).write_text(text, encoding="utf-8")
        return path


class Writer(unittest.TestCase):
    def setUp(self):
        self.folder = tempfile.TemporaryDirectory()
        self.addCleanup(self.folder.cleanup)

    def at(self, name):
        return os.path.join(self.folder.name, name)

    def write(self, features, *options, name="things", fields=()):
        """Features as (WKT, {field: value})."""
        path = self.at("out.qen")
        dataset = gdal.GetDriverByName("QENZOR").Create(path, 0, 0, 0, gdal.GDT_Unknown, list(options))
        layer = dataset.CreateLayer(name)
        for field, kind in fields:
            layer.CreateField(ogr.FieldDefn(field, kind))
        for wkt, values in features:
            feature = ogr.Feature(layer.GetLayerDefn())
            feature.SetGeometry(ogr.CreateGeometryFromWkt(wkt))
            for field, value in values.items():
                feature[field] = value
            layer.CreateFeature(feature)
        del layer, dataset
        return path

    def test_what_is_written_is_read_within_half_a_grid_unit(self):
        features = [("LINESTRING(1.234 2.345,3.456 4.567,9 9.5)", {}), ("POINT(5 5.5)", {}),
                    ("POLYGON((1 1,2 1.5,1.75 3,1 1))", {})]
        dataset = open_map(self.write(features))
        coef = 8.5 * 3600000 / 2 / 32767
        for name, wkt in [("0_line", features[0][0]), ("0_label", features[1][0])]:
            found = places_of(geometry_of(dataset.GetLayer(name), 0))
            expected = places_of(ogr.CreateGeometryFromWkt(wkt))
            for (x, y), (u, v) in zip(found, expected):
                self.assertAlmostEqual(x, u, delta=(coef + 1) / 3600000)
                self.assertAlmostEqual(y, v, delta=(coef + 1) / 3600000)
        ring = geometry_of(dataset.GetLayer("0_polygon"), 0)
        points = ring.GetGeometryRef(0).GetPoints()
        self.assertLess(sum(x * v - u * y for (x, y), (u, v) in zip(points, points[1:])), 0)
        self.assertEqual(ring.GetGeometryRef(0).GetPointCount(), 4)

    def test_areas_and_lines_are_cut_at_the_segments_and_keep_their_size(self):
        hole = "POLYGON((0 0,0 10,10 10,10 0,0 0),(2 2,7 2,7 7,2 7,2 2))"
        path = self.write([(hole, {}), ("LINESTRING(0 1,10 1)", {})], "SEGMENTS=4x3", "BBOX=0,0,10,10")
        dataset = open_map(path)
        areas = [f.GetGeometryRef().Clone() for f in dataset.GetLayer("0_polygon")]
        self.assertAlmostEqual(sum(area.Area() for area in areas), 75, delta=0.01)
        self.assertTrue(all(area.IsValid() and area.GetGeometryCount() == 1 for area in areas))
        lines = [f.GetGeometryRef().Length() for f in dataset.GetLayer("0_line")]
        self.assertEqual(len(lines), 4)
        self.assertAlmostEqual(sum(lines), 10, delta=0.001)

    def test_fields_become_values_links_texts_and_z_ids(self):
        fields = [("Text", ogr.OFTString), ("Angle", ogr.OFTReal), ("z_id", ogr.OFTString),
                  ("url", ogr.OFTString), ("elsewhere", ogr.OFTInteger)]
        heard = []
        gdal.PushErrorHandler(lambda severity, number, text: heard.append(text))
        path = self.write([("POINT(1 1)", {"Text": "東京", "Angle": 12.5, "z_id": str(2**63 - 1),
                                           "url": "(2:http://a/,http://b/)", "elsewhere": 1}),
                           ("POINT(2 2)", {})], fields=fields)
        gdal.PopErrorHandler()
        self.assertEqual([text for text in heard if "elsewhere" in text], heard)
        dataset = open_map(path)
        features = list(dataset.GetLayer("0_label"))
        self.assertEqual(features[0]["Text"], "東京")
        self.assertEqual(features[0]["Angle"], 12.5)
        self.assertEqual(features[0]["z_id"], 2**63 - 1)
        self.assertEqual(features[0]["url"], ["http://a/", "http://b/"])
        self.assertEqual((features[1]["Text"], features[1]["z_id"]), ("", 1))

    def test_layer_names_give_number_and_kind(self):
        path = self.write([("POLYGON((1 1,1 2,3 2,3 1,1 1))", {})], name="7_raster_rect")
        dataset = open_map(path)
        self.assertEqual(dataset.GetLayer(0).GetName(), "7_raster_rect")
        self.assertAlmostEqual(geometry_of(dataset.GetLayer(0), 0).Area(), 2, 2)

    def test_what_cannot_be_stored_names_the_feature(self):
        with self.assertRaisesRegex(RuntimeError, "outside the map's rectangle"):
            self.write([("POINT(11 1)", {})], "BBOX=0,0,10,10")
        for options in [["SEGMENTS=1x1", "COEF=1", "BBOX=0,0,10,10"], ["BBOX=1,1,0,0"],
                        ["SEGMENTS=300x300", "BBOX=0,0,10,10"], ["COEF=x"]]:
            with self.assertRaises(RuntimeError, msg=str(options)):
                self.write([], *options)

    def test_a_failed_conversion_leaves_no_file_and_skipped_features_are_few(self):
        Path(self.at("in.geojson")).write_text(
            '{"type":"FeatureCollection","features":[' + ",".join(
                '{"type":"Feature","properties":{},"geometry":{"type":"Point","coordinates":[%d,1]}}'
                % x for x in (1, 50, 2)) + "]}")
        call = ["ogr2ogr", "-f", "QENZOR", self.at("a.qen"), self.at("in.geojson"), "-dsco",
                "BBOX=0,0,10,10"]
        failed = subprocess.run(call, capture_output=True, text=True)
        self.assertNotEqual(failed.returncode, 0)
        self.assertIn("outside the map's rectangle", failed.stderr)
        self.assertFalse(os.path.exists(self.at("a.qen")))
        subprocess.run(call + ["-skipfailures"], capture_output=True, check=True)
        dataset = open_map(self.at("a.qen"))
        self.assertEqual(dataset.GetLayer(0).GetFeatureCount(), 2)

    def test_the_sample_survives_a_geopackage(self):
        subprocess.run(["ogr2ogr", "-f", "GPKG", self.at("a.gpkg"), MAP], check=True,
                       stderr=subprocess.DEVNULL)
        xml = XmlMap(MAP)
        degrees = [n / 3600000 for n in (xml.west, xml.south, xml.east, xml.north)]
        subprocess.run(["ogr2ogr", "-f", "QENZOR", self.at("b.qen"), self.at("a.gpkg"), "-dsco",
                        "BBOX=" + ",".join(map(str, degrees)), "-dsco",
                        f"SEGMENTS={xml.columns}x{xml.rows}", "-dsco", f"COEF={xml.coef}"],
                       check=True, stderr=subprocess.DEVNULL)

        def content(path):
            return sorted((layer, kind, z_id, segment, sorted(points), element.findtext("Text"))
                          for layer, kind, z_id, segment, _, points, element in XmlMap(path).objects()
                          if kind != "polygon")

        self.assertEqual(content(self.at("b.qen")), content(MAP))


if __name__ == "__main__":
    unittest.main()
