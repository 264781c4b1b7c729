#include "qenzor/draw/page.h"

#include <gtest/gtest.h>

#include <cmath>

namespace qenzor::testing {
namespace {

CPage PageOf(const MapBox& box, const PageOptions& options, bool plain = false) {
  const Result<CPage> page = CPage::Make(box, plain, options);
  EXPECT_TRUE(page) << page.GetFailure().Reason;
  return *page;
}

PageOptions AtScale(double denominator) {
  PageOptions options;
  options.Denominator = denominator;
  return options;
}

PageOptions OfSize(double width, double height) {
  PageOptions options;
  options.Size = {width, height};
  return options;
}

TEST(Page, OfDegreesIsSquareOnTheGroundInItsMiddle) {
  // 2 by 1 degrees about 60 north, where a degree of longitude is half one of latitude: 111319.49 m
  // a side, 111319.490793 / (1000000 * 0.0254 / 96) = 420.735 pixels.
  const CPage page = PageOf({10, 59.5, 12, 60.5}, AtScale(1000000));
  EXPECT_EQ(page.GetPixelWidth(), 421);
  EXPECT_EQ(page.GetPixelHeight(), 421);
  EXPECT_EQ(page.GetDenominator(), 1000000);
  EXPECT_NEAR(page.At({11, 60}).x, 210.5, 1e-9);
  EXPECT_NEAR(page.At({11, 60}).y, 210.5, 1e-9);
  EXPECT_NEAR(page.At({12, 60.5}).x, 210.5 + 420.735 / 2, 1e-3);
  EXPECT_NEAR(page.At({12, 60.5}).y, 210.5 - 420.735 / 2, 1e-3);
}

TEST(Page, WithoutDegreesCountsInMetres) {
  // 1000 m at 1:10000 are 0.1 m of paper, 377.95 pixels.
  const CPage page = PageOf({0, 0, 1000, 500}, AtScale(10000), true);
  EXPECT_EQ(page.GetPixelWidth(), 378);
  EXPECT_EQ(page.GetPixelHeight(), 189);
}

TEST(Page, IsSixteenHundredPixelsWideUnlessTold) {
  const CPage page = PageOf({0, 0, 3200, 100}, {}, true);
  EXPECT_EQ(page.GetPixelWidth(), 1600);
  EXPECT_EQ(page.GetPixelHeight(), 50);
  EXPECT_DOUBLE_EQ(page.GetDenominator(), 2 / (0.0254 / 96));
}

TEST(Page, ShowsMoreWhereItsShapeIsAnother) {
  const CPage page = PageOf({0, 0, 100, 100}, OfSize(400, 200), true);
  EXPECT_DOUBLE_EQ(page.GetDenominator(), 0.5 / (0.0254 / 96));
  EXPECT_NEAR(page.At({0, 0}).x, 100, 1e-9);
  EXPECT_NEAR(page.At({0, 0}).y, 200, 1e-9);
  EXPECT_NEAR(page.At({100, 100}).x, 300, 1e-9);
  EXPECT_NEAR(page.At({100, 100}).y, 0, 1e-9);
}

TEST(Page, HasMorePixelsOfTheSameSizeOnPaperWithMoreDpi) {
  PageOptions options = AtScale(10000);
  options.Dpi = 192;
  const CPage page = PageOf({0, 0, 1000, 500}, options, true);
  EXPECT_EQ(page.GetPixelWidth(), 756);
  EXPECT_EQ(page.GetDenominator(), 10000);
  EXPECT_EQ(page.GetWidth(), 378);
}

TEST(Page, InMercatorHasTheScaleOfItsMiddle) {
  PageOptions options = AtScale(1000000);
  options.How = Projection::kMercator;
  const CPage page = PageOf({10, 59.5, 12, 60.5}, options);
  EXPECT_EQ(page.GetPixelWidth(), 421);
  EXPECT_EQ(page.GetPixelHeight(), 421);
  // A quarter of a degree about 60.375 and 59.875 north: 420.735 / 4 * cos 60 / cos of those.
  EXPECT_NEAR(page.At({11, 60.25}).y - page.At({11, 60.5}).y, 106.393, 0.01);
  EXPECT_NEAR(page.At({11, 59.75}).y - page.At({11, 60.0}).y, 104.789, 0.01);
}

TEST(Page, RefusesWhatHasNoSize) {
  for (const MapBox& box : {MapBox{0, 0, 0, 1}, {0, 0, 1, 0}, {1, 0, 0, 1}, {0, 1, 1, 0}})
    EXPECT_FALSE(CPage::Make(box, false, {}));
  for (const double scale : {0.0, -1.0, std::nan(""), HUGE_VAL})
    EXPECT_FALSE(CPage::Make({0, 0, 1, 1}, false, AtScale(scale))) << scale;
  EXPECT_FALSE(CPage::Make({0, 0, 1, 1}, false, OfSize(0, 10)));
  PageOptions options;
  options.Dpi = 0;
  EXPECT_FALSE(CPage::Make({0, 0, 1, 1}, false, options));
  options.Dpi = 96;
  options.How = Projection::kMercator;
  EXPECT_FALSE(CPage::Make({0, 0, 1, 1}, true, options));
}

TEST(Page, IsBoundedOnlyWhereItIsDrawn) {
  EXPECT_TRUE(PageOf({0, 0, 1, 1}, OfSize(16384, 3906)).CheckSize());
  EXPECT_FALSE(PageOf({0, 0, 1, 1}, OfSize(16384, 3907)).CheckSize());
  EXPECT_FALSE(PageOf({0, 0, 1, 1}, OfSize(16385, 1)).CheckSize());
  EXPECT_FALSE(PageOf({0, 0, 1, 1}, OfSize(1, 16385)).CheckSize());
  EXPECT_FALSE(PageOf({0, 0, 1, 1}, AtScale(1e-9)).CheckSize());
}

}  // namespace
}  // namespace qenzor::testing
