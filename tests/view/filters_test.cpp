#include "qenzor/view/filters.h"

#include <gtest/gtest.h>

#include <fstream>
#include <string>
#include <utility>
#include <vector>

#include "tests/support/temp_file.h"

namespace qenzor::testing {
namespace {

TEST(Filters, AreReadAsUsersGiveThem) {
  Filters filters;
  EXPECT_TRUE(filters.PassAll());
  EXPECT_TRUE(filters.Add("bbox", "-1.5,2,3e1,2"));
  EXPECT_TRUE(filters.Add("layer", "0,65535"));
  EXPECT_TRUE(filters.Add("layer", "7"));
  EXPECT_TRUE(filters.Add("segment", "12"));
  EXPECT_TRUE(filters.Add("zid", "18446744073709551615,1"));
  EXPECT_TRUE(filters.Add("objects", "line,raster_point"));
  EXPECT_TRUE(filters.Add("objects", "label"));
  EXPECT_EQ(filters.Box, (MapBox{-1.5, 2, 30, 2}));
  EXPECT_EQ(filters.Layers, (std::set<std::uint16_t>{0, 7, 65535}));
  EXPECT_EQ(filters.Segments, (std::set<std::uint16_t>{12}));
  EXPECT_EQ(filters.ZIds, (std::set<std::uint64_t>{1, UINT64_MAX}));
  EXPECT_TRUE(filters.Passes(ObjectKind::kLine));
  EXPECT_FALSE(filters.Passes(ObjectKind::kPolygon));
  EXPECT_TRUE(filters.Passes(ObjectKind::kLabel));
  EXPECT_FALSE(filters.Passes(ObjectKind::kRasterRect));
  EXPECT_TRUE(filters.Passes(ObjectKind::kRasterPoint));
  EXPECT_FALSE(filters.PassAll());
}

TEST(Filters, RefuseEverythingElseWithASentence) {
  using Words = std::pair<const char*, const char*>;
  for (const auto& [name, text] : std::vector<Words>{{"bbox", ""},
                                                     {"bbox", "1,2,3"},
                                                     {"bbox", "1,2,3,4,5"},
                                                     {"bbox", "1,2,3,x"},
                                                     {"bbox", "1,2,3,nan"},
                                                     {"bbox", "1,2,inf,4"},
                                                     {"bbox", "3,2,1,4"},
                                                     {"bbox", "1,4,3,2"},
                                                     {"layer", ""},
                                                     {"layer", "1,"},
                                                     {"layer", "65536"},
                                                     {"layer", "-1"},
                                                     {"segment", "1-3"},
                                                     {"zid", "18446744073709551616"},
                                                     {"zid", "1 2"},
                                                     {"objects", ""},
                                                     {"objects", "lines"},
                                                     {"objects", "line,"},
                                                     {"kind", "qen"}}) {
    Filters filters;
    const Result<void> result = filters.Add(name, text);
    ASSERT_FALSE(result) << name << ' ' << text;
    EXPECT_EQ(result.GetFailure().Kind, FailureKind::kWrongUsage);
    EXPECT_FALSE(result.GetFailure().Reason.empty());
    EXPECT_TRUE(filters.PassAll()) << name << ' ' << text;
  }
}

TEST(Filters, TakeZIdsFromAFile) {
  const TempFile file;
  std::ofstream(file.Path()) << "# towns\r\n1 2\t3\n\n  4,5 # and 6\n18446744073709551615";
  Filters filters;
  ASSERT_TRUE(filters.Add("zid", "9"));
  ASSERT_TRUE(filters.Add("zid", "@" + file.Path()));
  EXPECT_EQ(filters.ZIds, (std::set<std::uint64_t>{1, 2, 3, 4, 5, 9, UINT64_MAX}));
}

TEST(Filters, NameTheLineOfAFileThatIsWrong) {
  const TempFile file;
  std::ofstream(file.Path()) << "1\n2 x\n";
  Filters filters;
  const Result<void> result = filters.Add("zid", "@" + file.Path());
  ASSERT_FALSE(result);
  EXPECT_EQ(result.GetFailure().Path, file.Path());
  EXPECT_EQ(result.GetFailure().Line, 2U);
  EXPECT_TRUE(filters.PassAll());
}

TEST(Filters, SayWhenAFileIsNotThere) {
  Filters filters;
  const Result<void> result = filters.Add("zid", "@/no/such/file");
  ASSERT_FALSE(result);
  EXPECT_EQ(result.GetFailure().Kind, FailureKind::kCannotOpen);
}

TEST(Filters, LetNothingPassForAFileWithoutNumbers) {
  const TempFile file;
  std::ofstream(file.Path()) << "# none\n";
  Filters filters;
  ASSERT_TRUE(filters.Add("zid", "@" + file.Path()));
  EXPECT_EQ(filters.ZIds, std::set<std::uint64_t>{});
}

}  // namespace
}  // namespace qenzor::testing
