#include "qenzor/view/style_book.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <string>
#include <vector>

#include "tests/support/placed.h"

namespace qenzor::testing {
namespace {

constexpr float kNan = std::numeric_limits<float>::quiet_NaN();
constexpr float kInf = std::numeric_limits<float>::infinity();

/// A book with one draw info, at position 0, that z-id 1 asks for.
template <class Kind>
Kind OneStyle(const Bytes& info, ObjectKind kind, double denominator) {
  const auto drawing = DrawingOf({Attribute(1, {0})}, {info});
  CStyleBook book(drawing.get());
  const auto styles = book.Find(1, kind, denominator);
  EXPECT_EQ(styles.size(), 1U);
  return styles.size() == 1 ? std::get<Kind>(styles[0].How) : Kind{};
}

double WidthOf(const Bytes& record, double denominator) {
  return OneStyle<StrokeStyle>(StrokeInfo(0, 0, 1, {record}), ObjectKind::kLine, denominator).Width;
}

std::vector<std::int64_t> InfosOf(CStyleBook& book, std::uint64_t z_id, ObjectKind kind,
                                  double denominator) {
  std::vector<std::int64_t> infos;
  for (const AppliedStyle& style : book.Find(z_id, kind, denominator)) infos.push_back(style.Info);
  return infos;
}

Bytes AnyStroke(std::uint32_t width = 1) {
  return StrokeInfo(0, 0xFF000000, 1, {StrokeRecord(0xFFFFFFFF, 0, width, 0)});
}
Bytes AnyFill() { return InfoBytes(id::kPolySolidBrushDrawInfo, Bytes().U32(5), {AnyScale()}); }

TEST(Sizes, KeepTheirSizeOnPaperOrGrowWithTheMap) {
  EXPECT_EQ(WidthOf(StrokeRecord(50000, 1000, 4, 0), 10000), 4);
  EXPECT_EQ(WidthOf(StrokeRecord(50000, 1000, 4, 1), 10000), 20);
  EXPECT_DOUBLE_EQ(WidthOf(StrokeRecord(40000, 1000, 4, 0.5F), 10000), 8);
  EXPECT_DOUBLE_EQ(WidthOf(StrokeRecord(40000, 1000, 4, -1), 10000), 1);
  EXPECT_EQ(WidthOf(StrokeRecord(50000, 1000, 4, 1), 50000), 4);
  // 3 * (25000 / 12345.6) ^ 0.75
  EXPECT_NEAR(WidthOf(StrokeRecord(25000, 1000, 3, 0.75F), 12345.6), 5.0926298349, 1e-6);
}

TEST(Sizes, StayWithinTheirLimits) {
  EXPECT_EQ(WidthOf(StrokeRecord(0xFFFFFFFF, 0, 65535, 1000), 1), 4096);
  EXPECT_EQ(WidthOf(StrokeRecord(0xFFFFFFFF, 0, 65535, -1000), 1), 0.1);
  EXPECT_EQ(WidthOf(StrokeRecord(0xFFFFFFFF, 0, 0, 1000), 1), 0);
  EXPECT_EQ(WidthOf(StrokeRecord(0xFFFFFFFF, 0, 5000, 0), 1), 4096);
}

TEST(Sizes, CountSensitivitiesThatAreNotFiniteAsZero) {
  for (const float odd : {kNan, kInf, -kInf})
    EXPECT_EQ(WidthOf(StrokeRecord(50000, 1000, 4, odd), 10000), 4);
}

TEST(Sizes, OfOffsetsKeepTheirSign) {
  const auto shadow = [](std::int32_t x, std::int32_t y, float sensitivity) {
    return OneStyle<ShadowStyle>(
        InfoBytes(id::kPolyShadowDrawInfo, Bytes().U32(0x80000000),
                  {Bytes().U32(20000).U32(0).I16(x).I16(y).F32(sensitivity)}),
        ObjectKind::kPolygon, 10000);
  };
  EXPECT_EQ(shadow(-3, 5, 1).OffsetX, -6);
  EXPECT_EQ(shadow(-3, 5, 1).OffsetY, 10);
  EXPECT_EQ(shadow(-32768, 0, 1).OffsetX, -4096);
  EXPECT_EQ(shadow(0, 32767, 100).OffsetY, 4096);
  EXPECT_EQ(shadow(0, 0, 100).OffsetX, 0);
  EXPECT_EQ(shadow(-3, 5, 1).Color, 0x80000000U);
}

TEST(Styles, HoldByTheFirstRecordInFileOrder) {
  const Bytes info = StrokeInfo(
      0, 0, 1,
      {StrokeRecord(100, 50, 1, 0), StrokeRecord(200, 50, 2, 0), StrokeRecord(60, 1, 3, 0)});
  const auto width = [&](double denominator) {
    return OneStyle<StrokeStyle>(info, ObjectKind::kLine, denominator).Width;
  };
  EXPECT_EQ(width(50), 1);
  EXPECT_EQ(width(100), 1);
  EXPECT_EQ(width(100.25), 2);
  EXPECT_EQ(width(200), 2);
  EXPECT_EQ(width(49.75), 3);
  const auto drawing = DrawingOf({Attribute(1, {0})}, {info});
  CStyleBook book(drawing.get());
  EXPECT_TRUE(book.Find(1, ObjectKind::kLine, 200.5).empty());
  EXPECT_TRUE(book.Find(1, ObjectKind::kLine, 0.5).empty());
}

TEST(Styles, FollowTheListAndDrawTwiceWhatIsListedTwice) {
  const auto drawing =
      DrawingOf({Attribute(7, {2, 0, 2})}, {AnyStroke(), AnyStroke(), AnyStroke()});
  CStyleBook book(drawing.get());
  EXPECT_EQ(InfosOf(book, 7, ObjectKind::kLine, 1000), (std::vector<std::int64_t>{2, 0, 2}));
  EXPECT_TRUE(InfosOf(book, 8, ObjectKind::kLine, 1000).empty());
}

TEST(Styles, PassOverWhatIsMissingOrDrawsAnotherKindWithAWarning) {
  const auto drawing = DrawingOf({Attribute(7, {9, 1, 0})}, {AnyStroke(), AnyFill()});
  std::vector<std::string> warnings;
  CStyleBook book(drawing.get(), false, [&](const std::string& w) { warnings.push_back(w); });
  EXPECT_EQ(InfosOf(book, 7, ObjectKind::kLine, 1000), std::vector<std::int64_t>{0});
  EXPECT_EQ(warnings, (std::vector<std::string>{"z-id 7: draw info 9 is not there",
                                                "z-id 7: draw info 1 does not draw a line"}));
}

TEST(Styles, UseTheFrontOfListsThatNoMapHas) {
  const auto drawing =
      DrawingOf({Attribute(7, std::vector<std::uint32_t>(70000, 0))}, {AnyStroke()});
  CStyleBook book(drawing.get());
  EXPECT_EQ(book.Find(7, ObjectKind::kLine, 1000).size(), CStyleBook::kMaxInfos);
}

TEST(Styles, OfAnAttributeWithoutAListDrawNothing) {
  const auto drawing = DrawingOf({BareAtterBytes(7)}, {AnyStroke()});
  CStyleBook book(drawing.get(), true);
  EXPECT_TRUE(book.Find(7, ObjectKind::kLine, 1000).empty());
}

TEST(Styles, ArePlainWithoutADrawingOrWhenAsked) {
  const auto drawing = DrawingOf({Attribute(7, {0})}, {AnyStroke()});
  CStyleBook asked(drawing.get(), true);
  EXPECT_EQ(InfosOf(asked, 7, ObjectKind::kLine, 1), std::vector<std::int64_t>{0});
  EXPECT_EQ(InfosOf(asked, 8, ObjectKind::kLine, 1), std::vector<std::int64_t>{kDefaultInfo});

  CStyleBook none(nullptr);
  const auto style = [&](ObjectKind kind) { return none.Find(7, kind, 5).at(0).How; };
  const auto stroke = std::get<StrokeStyle>(style(ObjectKind::kLine));
  EXPECT_EQ(stroke.Color, 0xFF000000U);
  EXPECT_EQ(stroke.Width, 1);
  EXPECT_EQ(std::get<FillStyle>(style(ObjectKind::kPolygon)).Color, 0xFFD3D3D3U);
  const auto label = std::get<LabelStyle>(style(ObjectKind::kLabel));
  EXPECT_EQ(label.Color, 0xFF000000U);
  EXPECT_EQ(label.FontSize, 10);
  EXPECT_TRUE(label.ShowsText);
  EXPECT_FALSE(label.ShowsMark);
  EXPECT_EQ(std::get<RasterRectStyle>(style(ObjectKind::kRasterRect)).Name, u"");
  const auto raster = std::get<RasterPointStyle>(style(ObjectKind::kRasterPoint));
  EXPECT_EQ(raster.Name, u"");
  EXPECT_EQ(raster.Width, 32);
}

TEST(Styles, OfLinesTakeOddCodesAsSolidAndOddAspectsAsOne) {
  const auto stroke = [](std::uint32_t code, float aspect) {
    return OneStyle<StrokeStyle>(StrokeInfo(code, 3, aspect, {StrokeRecord(9, 1, 1, 0)}),
                                 ObjectKind::kLine, 5);
  };
  EXPECT_EQ(stroke(4, 2.5F).Code, 4);
  EXPECT_EQ(stroke(4, 2.5F).Aspect, 2.5);
  EXPECT_EQ(stroke(5, 1).Code, 0);
  for (const float odd : {0.0F, -1.0F, kNan, kInf}) EXPECT_EQ(stroke(1, odd).Aspect, 1) << odd;
}

TEST(Styles, OfLabelsHaveEverySizeAtTheScale) {
  const auto label = [](std::uint32_t frame, float mark_scale) {
    return OneStyle<LabelStyle>(
        InfoBytes(id::kCmbLblDrawInfo,
                  Bytes().U16(3).U32(6).U8(2).U16(1).U8(frame).U32(10).U32(11).U32(12),
                  {Bytes().U32(20000).U32(1).F32(mark_scale).U16(8).U16(2).U16(1).I16(-3).F32(1)}),
        ObjectKind::kLabel, 10000);
  };
  const LabelStyle style = label(2, 1.5F);
  EXPECT_TRUE(style.ShowsText && style.ShowsMark && style.IsShaded);
  EXPECT_EQ(style.Mark, 6U);
  EXPECT_EQ(style.FontId, 2);
  EXPECT_EQ(style.Color, 10U);
  EXPECT_EQ(style.FrameColor, 11U);
  EXPECT_EQ(style.ShadowColor, 12U);
  EXPECT_EQ(style.MarkScale, 3);
  EXPECT_EQ(style.FontSize, 16);
  EXPECT_EQ(style.FrameMargin, 4);
  EXPECT_EQ(style.FrameWidth, 2);
  EXPECT_EQ(style.ShadowOffset, -6);
  EXPECT_EQ(style.Frame, LabelStyle::FrameKind::kRoundedRectangle);
  EXPECT_EQ(label(4, 1).Frame, LabelStyle::FrameKind::kRectangle);
  for (const float odd : {kNan, kInf, -2.0F}) EXPECT_EQ(label(0, odd).MarkScale, 0) << odd;
}

TEST(Styles, OfRastersAndBrushesNameTheirImage) {
  const auto rect = OneStyle<RasterRectStyle>(
      InfoBytes(id::kRasLLDrawInfo, Bytes().Text(u"a/b.png").U32(7), {AnyScale().U8(128)}),
      ObjectKind::kRasterRect, 5);
  EXPECT_EQ(rect.Name, u"a/b.png");
  EXPECT_EQ(rect.ColorKey, 7U);
  EXPECT_EQ(rect.Alpha, 128);
  const auto point =
      OneStyle<RasterPointStyle>(InfoBytes(id::kRasMMDrawInfo, Bytes().Text(u"c").U32(8),
                                           {Bytes().U32(100).U32(0).U16(20).F32(1)}),
                                 ObjectKind::kRasterPoint, 50);
  EXPECT_EQ(point.Name, u"c");
  EXPECT_EQ(point.ColorKey, 8U);
  EXPECT_EQ(point.Width, 40);
  EXPECT_EQ(
      OneStyle<PatternStyle>(InfoBytes(id::kPolyBmpBrushDrawInfo, Bytes().Text(u"d"), {AnyScale()}),
                             ObjectKind::kPolygon, 50)
          .Name,
      u"d");
}

TEST(Styles, AreFoundAtOneScaleAfterAnother) {
  const auto drawing =
      DrawingOf({Attribute(1, {0})}, {StrokeInfo(0, 0, 1, {StrokeRecord(100, 10, 1, 1)})});
  CStyleBook book(drawing.get());
  const auto width = [&](double denominator) {
    return std::get<StrokeStyle>(book.Find(1, ObjectKind::kLine, denominator).at(0).How).Width;
  };
  EXPECT_EQ(width(100), 1);
  EXPECT_EQ(width(50), 2);
  EXPECT_EQ(width(100), 1);
}

TEST(Styles, HoldInBandsOfScalesInWhichTheFirstRecordInFileOrderHolds) {
  // The second record holds where the first does not, on both sides of it.
  const auto drawing =
      DrawingOf({Attribute(1, {0})},
                {StrokeInfo(0, 0, 1,
                            {StrokeRecord(5000, 1000, 1, 0), StrokeRecord(20000, 500, 2, 0),
                             StrokeRecord(90000, 80000, 3, 0), StrokeRecord(7, 7, 4, 0)})});
  CStyleBook book(drawing.get());
  EXPECT_EQ(book.FindInfos(1, ObjectKind::kLine), std::vector<std::int64_t>{0});
  EXPECT_EQ(book.FindBands(0),
            (std::vector<ScaleBand>{{500, 1000}, {1000, 5000}, {5000, 20000}, {80000, 90000}}));
  const auto width = [&](double denominator) {
    return std::get<StrokeStyle>(*book.FindStyle(0, ObjectKind::kLine, denominator)).Width;
  };
  EXPECT_EQ(width(700), 2);
  EXPECT_EQ(width(3000), 1);
  EXPECT_EQ(width(5000), 1);
  EXPECT_EQ(width(5001), 2);
  EXPECT_FALSE(book.FindStyle(0, ObjectKind::kLine, 30000).has_value());
}

TEST(Marks, AreNamedByTheirPosition) {
  const auto drawing = DrawingOf({}, {}, {MarkBytes({}, {}), MarkBytes({1, 2, 3, 4}, {})});
  const CStyleBook book(drawing.get());
  ASSERT_NE(book.GetMark(1), nullptr);
  EXPECT_EQ(book.GetMark(1)->RectMax, (CPoint{3, 4}));
  EXPECT_EQ(book.GetMark(2), nullptr);
  EXPECT_EQ(CStyleBook(nullptr).GetMark(0), nullptr);
}

}  // namespace
}  // namespace qenzor::testing
