// The page of symbols that docs/drawing.md shows: the files that it is made from, what is listed
// for it, and its picture. With QENZOR_RENEW in the environment these are written anew, to be
// looked at before they are committed.

#include "tests/draw/symbols.h"

#include <cairo.h>
#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <memory>
#include <string>

#include "tests/support/temp_file.h"

namespace qenzor::testing {
namespace {

const std::string kFolder = QENZOR_TEST_DATA "/draw/";
const std::string kDocs = QENZOR_TEST_DATA "/../../docs/";

bool Renew(const std::string& made, const std::string& kept) {
  if (std::getenv("QENZOR_RENEW") == nullptr) return false;
  std::filesystem::copy_file(made, kept, std::filesystem::copy_options::overwrite_existing);
  return true;
}

void ExpectSame(const std::string& made, const std::string& kept) {
  if (Renew(made, kept)) return;
  const auto load = [](const std::string& path) {
    std::ifstream file(path, std::ios::binary);
    return std::string(std::istreambuf_iterator<char>(file), {});
  };
  EXPECT_FALSE(load(kept).empty());
  EXPECT_TRUE(load(made) == load(kept)) << kept << " is not what is made now";
}

void RunTool(const std::string& arguments) {
  const std::string command = "cd " + kFolder + " && FONTCONFIG_FILE=" + kFolder +
                              "fonts.conf " QENZOR_TOOL " " + arguments + " 2>/dev/null";
  ASSERT_EQ(std::system(command.c_str()), 0) << command;
}

TEST(Symbols, StandInTheFilesThatAreKept) {
  const SymbolPage page;
  const TempFile map;
  const TempFile drawing;
  ASSERT_TRUE(page.Map->Write(map.Path()));
  ASSERT_TRUE(page.Drawing->Write(drawing.Path()));
  ExpectSame(map.Path(), kFolder + "symbols.qen");
  ExpectSame(drawing.Path(), kFolder + "symbols.zor");
}

TEST(Symbols, AreListedAsTheyAlwaysWere) {
  for (const std::string scale : {"4000", "60000"}) {
    const TempFile list;
    RunTool("render --list --frame plain=on --scale " + scale + " symbols.qen symbols.zor >" +
            list.Path());
    ExpectSame(list.Path(), kFolder + "symbols-" + scale + ".jsonl");
  }
}

TEST(Symbols, OfTheSampleAreListedAsTheyAlwaysWere) {
  const TempFile list;
  RunTool("render --list --bbox 0,40,20,55 --size 400x400 " QENZOR_SAMPLES
          "/world.qen " QENZOR_SAMPLES "/world.zor >" +
          list.Path());
  ExpectSame(list.Path(), kFolder + "world.jsonl");
}

using Surface = std::unique_ptr<cairo_surface_t, void (*)(cairo_surface_t*)>;

Surface LoadPng(const std::string& path) {
  return {cairo_image_surface_create_from_png(path.c_str()), &cairo_surface_destroy};
}

/// The share of pixels in which a part of the colour differs by more than can be put down to
/// another version of the libraries that draw; 1 for pictures of different sizes.
double ShareOfOtherPixels(const Surface& a, const Surface& b) {
  constexpr int kMostOff = 32;
  const int width = cairo_image_surface_get_width(a.get());
  const int height = cairo_image_surface_get_height(a.get());
  const int stride = cairo_image_surface_get_stride(a.get());
  if (width != cairo_image_surface_get_width(b.get()) ||
      height != cairo_image_surface_get_height(b.get()) ||
      stride != cairo_image_surface_get_stride(b.get()) || width == 0)
    return 1;
  int others = 0;
  for (int y = 0; y < height; ++y)
    for (int x = 0; x < width; ++x) {
      const std::ptrdiff_t at = std::ptrdiff_t{y} * stride + std::ptrdiff_t{4} * x;
      const unsigned char* one = cairo_image_surface_get_data(a.get()) + at;
      const unsigned char* two = cairo_image_surface_get_data(b.get()) + at;
      bool is_other = false;
      for (int part = 0; part < 3; ++part)
        is_other = is_other || std::abs(one[part] - two[part]) > kMostOff;
      others += is_other ? 1 : 0;
    }
  return static_cast<double>(others) / (static_cast<double>(width) * height);
}

TEST(Symbols, LookAsTheDocumentationShowsThem) {
  const TempFile folder;
  const std::string picture = folder.Path() + ".png";
  RunTool(
      "render --frame plain=on --bbox -30,0,1020,990 --scale 4000 --images images --all-labels "
      "symbols.qen symbols.zor " +
      picture);
  if (!Renew(picture, kDocs + "symbols.png")) {
    EXPECT_LE(ShareOfOtherPixels(LoadPng(picture), LoadPng(kDocs + "symbols.png")), 0.001);
  }
  std::filesystem::remove(picture);
}

TEST(Symbols, GiveTheSameBytesInEveryProcess) {
  for (const std::string format : {".svg", ".png", ".pdf"}) {
    const TempFile one;
    const TempFile two;
    const std::string before = "render --frame plain=on --scale 4000 symbols.qen symbols.zor ";
    RunTool(before + one.Path() + format);
    RunTool(before + two.Path() + format);
    const auto load = [&](const TempFile& file) {
      std::ifstream stream(file.Path() + format, std::ios::binary);
      return std::string(std::istreambuf_iterator<char>(stream), {});
    };
    EXPECT_GT(load(one).size(), 1000U);
    EXPECT_TRUE(load(one) == load(two)) << format;
    std::filesystem::remove(one.Path() + format);
    std::filesystem::remove(two.Path() + format);
  }
}

}  // namespace
}  // namespace qenzor::testing
