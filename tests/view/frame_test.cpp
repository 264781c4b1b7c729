#include "qenzor/view/frame.h"

#include <gtest/gtest.h>

#include <random>
#include <string>
#include <vector>

#include "tests/support/placed.h"

namespace qenzor::testing {
namespace {

QenFileInfo World() {
  QenFileInfo info;
  info.GeoCoodinate = 1;
  info.IncRect = {-648000000, -324000000, 648000000, 324000000};
  info.SegmentNumX = 24;
  info.SegmentNumY = 12;
  info.CompCoef = 1000;
  return info;
}

FrameOptions Options(const std::string& words) {
  const Result<FrameOptions> options = FrameOptions::Parse(words);
  EXPECT_TRUE(options) << options.GetFailure().Reason;
  return options ? *options : FrameOptions{};
}

struct Worked {
  std::uint16_t Segment;
  CPoint Pt;
  MapPoint Place;
};

// The places were worked out with exact fractions.

TEST(Frame, PlacesPointsByTheCentreOfTheirSegment) {
  const CFrame frame(World());
  for (const Worked& w : std::vector<Worked>{{0, {0, 0}, {-172.5, -82.5}},
                                             {25, {100, -200}, {-566900. / 3600, -243200. / 3600}},
                                             {287, {27000, 27000}, {180, 90}}})
    EXPECT_EQ(frame.At(w.Segment, w.Pt), w.Place) << w.Segment;
}

TEST(Frame, PlacesPointsBySouthWestCornersWhenAsked) {
  const CFrame frame(World(), Options("origin=south-west"));
  for (const Worked& w : std::vector<Worked>{{0, {0, 0}, {-180, -90}},
                                             {25, {100, -200}, {-593900. / 3600, -270200. / 3600}},
                                             {287, {27000, 27000}, {172.5, 82.5}}})
    EXPECT_EQ(frame.At(w.Segment, w.Pt), w.Place) << w.Segment;
}

TEST(Frame, CountsRowsFromTheNorthWhenAsked) {
  const CFrame centre(World(), Options("rows=south"));
  EXPECT_EQ(centre.At(25, {100, -200}), (MapPoint{-566900. / 3600, 242800. / 3600}));
  EXPECT_EQ(centre.At(287, {27000, 27000}), (MapPoint{180, -75}));
  const CFrame corner(World(), Options("rows=south,origin=south-west"));
  EXPECT_EQ(corner.At(0, {0, 0}), (MapPoint{-180, 75}));
  EXPECT_EQ(corner.At(287, {27000, 27000}), (MapPoint{172.5, -82.5}));
}

TEST(Frame, DividesSegmentsThatDoNotComeOutEvenOnce) {
  QenFileInfo info = World();
  info.IncRect = {-100, -200, 301, 405};
  info.SegmentNumX = 3;
  info.SegmentNumY = 7;
  // 2/3 of the third column's half and 5 * 2.5 units: 740 / 3 and 175 / 2 units.
  EXPECT_EQ(CFrame(info, Options("unit=1,coef=2.5")).At(11, {5, -6}),
            (MapPoint{-100 + 401. * 5 / 6 + 12.5, 87.5}));
  EXPECT_EQ(CFrame(info, Options("unit=1,coef=2.5,origin=south-west,rows=south")).At(11, {5, -6}),
            (MapPoint{-100 + 401. * 4 / 6 + 12.5, 405 - 605. * 8 / 14 - 15}));
}

TEST(Frame, TakesDifferencesBeyond32Bits) {
  QenFileInfo info = World();
  info.IncRect = {INT32_MIN, INT32_MIN, INT32_MAX, INT32_MAX};
  info.SegmentNumX = 65535;
  info.SegmentNumY = 1;
  // 4294901757 / 2 and -1 / 2 units
  EXPECT_EQ(CFrame(info).At(65534, {0, 0}), (MapPoint{2147450878.5 / 3600000, -0.5 / 3600000}));
}

TEST(Frame, PlacesSegmentsBeyondTheMeshAsIfItWentOn) {
  const CFrame frame(World());
  EXPECT_TRUE(frame.HasSegment(287));
  EXPECT_FALSE(frame.HasSegment(288));
  EXPECT_EQ(frame.At(300, {0, 0}), (MapPoint{7.5, 97.5}));
  EXPECT_EQ(CFrame(World(), Options("rows=south")).At(300, {0, 0}), (MapPoint{7.5, -97.5}));
}

TEST(Frame, CellsOfNeighboursHaveTheirCommonEdgeAtTheSamePlace) {
  QenFileInfo info = World();
  info.SegmentNumX = 7;
  info.SegmentNumY = 11;
  for (const char* words : {"rows=north", "rows=south,origin=south-west"}) {
    const CFrame frame(info, Options(words));
    MapBox all = frame.GetCell(0);
    for (std::uint16_t segment = 0; segment < 77; ++segment) {
      const MapBox cell = frame.GetCell(segment);
      all.Add(cell);
      if (segment % 7 != 6) {
        EXPECT_EQ(cell.East, frame.GetCell(static_cast<std::uint16_t>(segment + 1)).West);
      }
      if (segment >= 70) continue;
      const MapBox next = frame.GetCell(static_cast<std::uint16_t>(segment + 7));
      EXPECT_TRUE(cell.North == next.South || cell.South == next.North) << segment;
    }
    EXPECT_EQ(all, frame.GetRect());
  }
  EXPECT_EQ(CFrame(World()).GetCell(25), (MapBox{-165, -75, -150, -60}));
  EXPECT_EQ(CFrame(World(), Options("rows=south")).GetCell(25), (MapBox{-165, 60, -150, 75}));
  EXPECT_EQ(CFrame(World(), Options("plain=on")).GetCell(25), MapBox{});
}

TEST(Frame, MultipliesByTheUnitThatIsGiven) {
  EXPECT_EQ(CFrame(World(), Options("unit=0.25")).At(0, {1, 2}),
            (MapPoint{-620999000. / 4, -296998000. / 4}));
  EXPECT_EQ(CFrame(World(), Options("unit=3/8")).At(0, {0, 0}),
            (MapPoint{-621000000. * 3 / 8, -297000000. * 3 / 8}));
}

TEST(Frame, CountsACompressionOfZeroAsOne) {
  QenFileInfo info = World();
  info.CompCoef = 0;
  EXPECT_EQ(CFrame(info).At(0, {1, 0}).x, -620999999. / 3600000);
  EXPECT_EQ(CFrame(info, Options("coef=0.5")).At(0, {1, 0}).x, -620999999.5 / 3600000);
}

TEST(Frame, NamesTheCoordinateSystemByTheCodeOrAsAsked) {
  QenFileInfo info = World();
  EXPECT_EQ(CFrame(info).GetCrs(), "EPSG:4326");
  EXPECT_EQ(CFrame(info, Options("crs=none")).GetCrs(), "");
  EXPECT_EQ(CFrame(info, Options("plain=on")).GetCrs(), "");
  info.GeoCoodinate = 2;
  EXPECT_EQ(CFrame(info).GetCrs(), "");
  EXPECT_EQ(CFrame(info).At(0, {0, 0}), (MapPoint{-172.5, -82.5}));
  EXPECT_EQ(CFrame(info, Options("crs=EPSG:4301")).GetCrs(), "EPSG:4301");
}

TEST(Frame, TakesCoordinatesAsTheyStandWhenPlain) {
  const CFrame frame(World(), Options("plain=on,unit=7,coef=9"));
  EXPECT_TRUE(frame.IsPlain());
  EXPECT_FALSE(frame.IsDegenerate());
  EXPECT_EQ(frame.At(25, {-3, 32767}), (MapPoint{-3, 32767}));
  EXPECT_EQ(frame.GetRect(), MapBox{});
  EXPECT_EQ(frame.FindSegment({1e9, -1e9}), 0);
  EXPECT_EQ(frame.ToSegment(3, {2.5, -2.5}), (CPoint{3, -3}));
}

TEST(Frame, IsPlainWithAWarningWhereTheFileInfoGivesNoMesh) {
  for (const auto spoil : std::vector<void (*)(QenFileInfo&)>{
           [](QenFileInfo& i) { i.SegmentNumX = 0; }, [](QenFileInfo& i) { i.SegmentNumY = 0; },
           [](QenFileInfo& i) { i.IncRect.right = i.IncRect.left; },
           [](QenFileInfo& i) { i.IncRect.bottom = i.IncRect.top - 1; }}) {
    QenFileInfo info = World();
    spoil(info);
    const CFrame frame(info);
    EXPECT_TRUE(frame.IsPlain());
    EXPECT_TRUE(frame.IsDegenerate());
    EXPECT_EQ(frame.GetCrs(), "");
    EXPECT_EQ(frame.At(25, {4, 5}), (MapPoint{4, 5}));
    std::vector<std::string> warnings;
    frame.Warn(CQen(), [&](const std::string& what) { warnings.push_back(what); });
    EXPECT_EQ(warnings.size(), 1U);
  }
}

TEST(Frame, WarnsOnceOfSegmentsBeyondTheMesh) {
  const auto map =
      MapOf({{3, 0, 0, {}}, {4, 0, 0, {}}, {65535, 0, 0, {}}}, {{0, 0, 100, 100}, 2, 2, 1});
  std::vector<std::string> warnings;
  CFrame(*map).Warn(*map, [&](const std::string& what) { warnings.push_back(what); });
  EXPECT_EQ(warnings, std::vector<std::string>{"the mesh has 4 segments; 2 lie outside it, the "
                                               "first is number 4"});
}

TEST(FrameInverse, GivesBackEveryPointAndItsSegment) {
  std::mt19937_64 random(1);
  const auto number = [&](std::int64_t low, std::int64_t high) {
    return low + static_cast<std::int64_t>(random() % static_cast<std::uint64_t>(high - low + 1));
  };
  for (int round = 0; round < 2000; ++round) {
    QenFileInfo info;
    info.IncRect = {static_cast<std::int32_t>(number(INT32_MIN, 0)),
                    static_cast<std::int32_t>(number(INT32_MIN, 0)),
                    static_cast<std::int32_t>(number(100000, INT32_MAX)),
                    static_cast<std::int32_t>(number(100000, INT32_MAX))};
    info.SegmentNumX = static_cast<std::uint16_t>(number(1, 300));
    info.SegmentNumY = static_cast<std::uint16_t>(number(1, 200));
    info.CompCoef = static_cast<std::uint16_t>(number(0, 65535));
    FrameOptions options;
    options.FromCentre = number(0, 1) == 0;
    options.RowsNorth = number(0, 1) == 0;
    if (number(0, 1) == 0) options.Unit = 1.0 / static_cast<double>(number(1, 5000000));
    if (number(0, 1) == 0) options.Coef = static_cast<double>(number(1, 80000)) / 8;
    const CFrame frame(info, options);
    const auto segment =
        static_cast<std::uint16_t>(number(0, info.SegmentNumX * info.SegmentNumY - 1));
    const CPoint point{static_cast<std::int32_t>(number(-32768, 32767)),
                       static_cast<std::int32_t>(number(-32768, 32767))};
    ASSERT_EQ(frame.ToSegment(segment, frame.At(segment, point)), point) << round;
    // The corner of a segment lies in it, not in those before it.
    options.FromCentre = false;
    const CFrame corners(info, options);
    ASSERT_EQ(corners.FindSegment(corners.At(segment, {0, 0})), segment) << round;
  }
}

TEST(FrameInverse, FindsTheLastSegmentsForTheEastAndNorthBorder) {
  const CFrame north(World());
  EXPECT_EQ(north.FindSegment({-180, -90}), 0);
  EXPECT_EQ(north.FindSegment({180, 90}), 287);
  EXPECT_EQ(north.FindSegment({180, -90}), 23);
  EXPECT_EQ(north.FindSegment({-165, -75}), 25);
  EXPECT_EQ(north.FindSegment({-165.0000001, -75.0000001}), 0);
  const CFrame south(World(), Options("rows=south"));
  EXPECT_EQ(south.FindSegment({-180, 90}), 0);
  EXPECT_EQ(south.FindSegment({-180, -90}), 264);
  EXPECT_EQ(south.FindSegment({-180, 75}), 0);
}

TEST(FrameInverse, RefusesWhatLiesOutsideTheMapOr16Bits) {
  const CFrame frame(World());
  EXPECT_EQ(frame.FindSegment({180.0000001, 0}), std::nullopt);
  EXPECT_EQ(frame.FindSegment({0, -90.0000001}), std::nullopt);
  EXPECT_EQ(frame.FindSegment({std::nan(""), 0}), std::nullopt);
  EXPECT_EQ(frame.ToSegment(0, {std::nan(""), 0}), std::nullopt);
  const CFrame plain(World(), Options("plain=on"));
  EXPECT_EQ(plain.ToSegment(0, {32767.4, -32768.4}), (CPoint{32767, -32768}));
  EXPECT_EQ(plain.ToSegment(0, {32767.5, 0}), std::nullopt);
  EXPECT_EQ(plain.ToSegment(0, {0, -32768.5}), std::nullopt);
}

TEST(FrameInverse, RefusesSegmentsWithoutANumber) {
  QenFileInfo info = World();
  info.SegmentNumX = 256;
  info.SegmentNumY = 257;
  EXPECT_EQ(CFrame(info).FindSegment({180, 89.6}), std::nullopt);
  EXPECT_EQ(CFrame(info).FindSegment({180, 89.2}), 65535);
}

TEST(FrameOptions, AreReadFromWords) {
  FrameOptions expected;
  expected.Unit = 0.5;
  expected.FromCentre = false;
  expected.RowsNorth = false;
  expected.Coef = 1e3;
  expected.Crs = "EPSG:4612";
  expected.Plain = true;
  EXPECT_EQ(Options("unit=1/2,origin=south-west,rows=south,coef=1e3,crs=EPSG:4612,plain=on"),
            expected);
  EXPECT_EQ(Options("rows=north,plain=off,origin=centre"), FrameOptions{});
}

TEST(FrameOptions, RefuseEveryOtherValueWithASentence) {
  for (const char* words :
       {"",         "unit",          "unit=",    "unit=0",    "unit=-1",           "unit=1/0",
        "unit=0/1", "unit=1/2/3",    "unit=nan", "unit=inf",  "unit=1e-300/1e300", "unit=1x",
        "unit= 1",  "origin=center", "origin=",  "rows=east", "rows=North",        "coef=0",
        "coef=1/2", "coef=",         "crs=",     "crs=4326",  "crs=EPSG:",         "plain=yes",
        "plain",    "size=1",        "unit=1,",  ",unit=1",   "unit=1,unit=1",     "Unit=1"}) {
    const Result<FrameOptions> options = FrameOptions::Parse(words);
    EXPECT_FALSE(options) << words;
    EXPECT_EQ(options.GetFailure().Kind, FailureKind::kWrongUsage);
    EXPECT_FALSE(options.GetFailure().Reason.empty());
  }
  EXPECT_EQ(FrameOptions::Parse("rows=east").GetFailure().Reason,
            "the frame's rows is north or south, not \"east\"");
}

}  // namespace
}  // namespace qenzor::testing
