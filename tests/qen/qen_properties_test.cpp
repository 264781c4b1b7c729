// What holds for every map project, tried on generated ones.

#include <gtest/gtest.h>

#include <functional>

#include "qenzor/qen/line_obj.h"
#include "qenzor/qen/poly_obj.h"
#include "tests/support/qen_generator.h"
#include "tests/support/qen_xml.h"

namespace qenzor::testing {
namespace {

constexpr std::uint64_t kSeeds = 300;

std::unique_ptr<CQen> FromMemory(const Bytes& bytes) {
  auto doc = std::make_unique<CQen>();
  return doc->Read(bytes.data(), bytes.size()) ? std::move(doc) : nullptr;
}

std::unique_ptr<CQen> FromFile(const Bytes& bytes) {
  CMemFile file(bytes.vector());
  auto doc = std::make_unique<CQen>();
  return doc->Read(&file) ? std::move(doc) : nullptr;
}

Bytes Written(CQen& doc) {
  CMemFile file;
  return doc.Write(&file) ? Bytes(file.GetBytes()) : Bytes("not written");
}

/// The bounding rectangles of a document's objects, those of lines and polygons apart.
struct Rectangles {
  std::vector<CRect> Lines;
  std::vector<CRect> Polys;
  std::vector<Points> Rings;
};

template <class Set, class Visit>
void ForEachElem(Set* set, Visit&& visit) {
  for (std::uint32_t i = 0; set != nullptr && i < set->GetElemCount(); ++i) visit(set->GetElem(i));
}

Rectangles RectanglesOf(const CQen& doc) {
  Rectangles found;
  ForEachElem(doc.MapData->MeshSegmentSet.get(), [&](CMeshSegment* segment) {
    ForEachElem(segment->LayerSet.get(), [&](CLayerData* layer) {
      ForEachElem(layer->ZIdObjSet.get(), [&](CZIdObj* zid) {
        ForEachElem(zid->ObjSet.get(), [&](CAbstractObj* object) {
          if (auto* line = class_cast<CLineObj>(object))
            found.Lines.push_back(line->GetBoundRect());
          if (auto* poly = class_cast<CPolyObj>(object)) {
            found.Polys.push_back(poly->GetBoundRect());
            found.Rings.emplace_back(poly->Pt.begin(), poly->Pt.end());
          }
        });
      });
    });
  });
  return found;
}

class QenProperties : public ::testing::Test {
 protected:
  static void ForEachSeed(QenGenerator::Urls urls,
                          const std::function<void(const Bytes&)>& expect) {
    for (std::uint64_t seed = 0; seed < kSeeds && !HasFailure(); ++seed) {
      SCOPED_TRACE("seed " + std::to_string(seed));
      expect(QenGenerator(seed, urls).Document());
    }
  }
};

TEST_F(QenProperties, ReadingAndWritingKeepsEveryByteInBothPaths) {
  ForEachSeed(QenGenerator::Urls::kAny, [](const Bytes& bytes) {
    const auto memory = FromMemory(bytes);
    ASSERT_NE(memory, nullptr);
    EXPECT_TRUE(Written(*memory) == bytes);
    const auto file = FromFile(bytes);
    ASSERT_NE(file, nullptr);
    EXPECT_TRUE(Written(*file) == bytes);
  });
}

TEST_F(QenProperties, BothPathsAgreeButForTheLastPointOfAPolygon) {
  ForEachSeed(QenGenerator::Urls::kAny, [](const Bytes& bytes) {
    const auto memory = RectanglesOf(*FromMemory(bytes));
    const auto file = RectanglesOf(*FromFile(bytes));
    EXPECT_EQ(memory.Lines, file.Lines);
    ASSERT_EQ(memory.Polys.size(), file.Polys.size());
    for (std::size_t i = 0; i < file.Polys.size(); ++i) {
      CRect widened = memory.Polys[i];
      if (!file.Rings[i].empty()) {
        const CPoint last = file.Rings[i].back();
        widened = {std::min(widened.left, last.x), std::min(widened.top, last.y),
                   std::max(widened.right, last.x), std::max(widened.bottom, last.y)};
      }
      EXPECT_EQ(widened, file.Polys[i]);
    }
  });
}

TEST_F(QenProperties, CloneKeepsEveryByteAndRectangle) {
  ForEachSeed(QenGenerator::Urls::kAny, [](const Bytes& bytes) {
    const auto doc = FromMemory(bytes);
    const std::unique_ptr<CQen> clone(doc->Clone());
    ASSERT_NE(clone, nullptr);
    EXPECT_EQ(RectanglesOf(*clone).Lines, RectanglesOf(*doc).Lines);
    EXPECT_EQ(RectanglesOf(*clone).Polys, RectanglesOf(*doc).Polys);
    EXPECT_TRUE(Written(*clone) == bytes);
  });
}

TEST_F(QenProperties, TheEditFormKeepsEveryByteAndNoRectangle) {
  ForEachSeed(QenGenerator::Urls::kAny, [](const Bytes& bytes) {
    CQenEdit edit;
    edit.QenDataToEditData(FromMemory(bytes).get());
    const std::unique_ptr<CQen> doc(edit.EditDataToQenData());
    ASSERT_NE(doc, nullptr);
    for (const CRect& rect : RectanglesOf(*doc).Lines) EXPECT_EQ(rect, CRect{});
    for (const CRect& rect : RectanglesOf(*doc).Polys) EXPECT_EQ(rect, CRect{});
    EXPECT_EQ(doc->MapData->GetHeader().DataSize, 0U);
    EXPECT_TRUE(Written(*doc) == bytes);
  });
}

TEST_F(QenProperties, AllButUrlsSurvivesXml) {
  const TempFile file;
  ForEachSeed(QenGenerator::Urls::kEmpty, [&](const Bytes& bytes) {
    const auto doc = FromMemory(bytes);
    CQenTextConverter converter;
    ASSERT_TRUE(converter.ConvertChunkToText(file.Path(), *doc, 0));
    const std::unique_ptr<CQenEdit> edit(converter.ConvertTextToQenEdit(file.Path()));
    ASSERT_NE(edit, nullptr);
    const std::unique_ptr<CQen> back(edit->EditDataToQenData());
    EXPECT_TRUE(Written(*back) == bytes);
  });
}

TEST_F(QenProperties, XmlThatWasReadIsWrittenTheSame) {
  const TempFile first;
  const TempFile second;
  ForEachSeed(QenGenerator::Urls::kEmpty, [&](const Bytes& bytes) {
    CQenTextConverter converter;
    ASSERT_TRUE(converter.ConvertChunkToText(first.Path(), *FromMemory(bytes), 0));
    const std::unique_ptr<CQenEdit> edit(converter.ConvertTextToQenEdit(first.Path()));
    ASSERT_NE(edit, nullptr);
    const std::unique_ptr<CQen> back(edit->EditDataToQenData());
    ASSERT_TRUE(converter.ConvertChunkToText(second.Path(), *back, 0));
    EXPECT_TRUE(first.Text() == second.Text());
  });
}

TEST_F(QenProperties, WhatMemoryTakesAFileTakesToo) {
  // Not the other way round: a file skips the data of unknown chunks, which memory looks into.
  ForEachSeed(QenGenerator::Urls::kAny, [](const Bytes& bytes) {
    QenGenerator random(bytes.size());
    for (int i = 0; i < 20; ++i) {
      Bytes damaged = bytes;
      damaged[random.Number(damaged.size())] = static_cast<std::uint8_t>(random.Number(256));
      const auto memory = FromMemory(damaged);
      if (memory == nullptr) continue;
      const auto file = FromFile(damaged);
      ASSERT_NE(file, nullptr);
      EXPECT_TRUE(Written(*file) == Written(*memory));
    }
  });
}

TEST_F(QenProperties, ReadingWhatIsDamagedAndWritingItIsAFixedPoint) {
  ForEachSeed(QenGenerator::Urls::kAny, [](const Bytes& bytes) {
    QenGenerator random(bytes.size());
    for (int i = 0; i < 20; ++i) {
      Bytes damaged = bytes;
      damaged[random.Number(damaged.size())] = static_cast<std::uint8_t>(random.Number(256));
      const auto doc = FromMemory(damaged);
      if (doc == nullptr) continue;
      const Bytes once = Written(*doc);
      const auto again = FromMemory(once);
      ASSERT_NE(again, nullptr);
      EXPECT_TRUE(Written(*again) == once);
    }
  });
}

}  // namespace
}  // namespace qenzor::testing
