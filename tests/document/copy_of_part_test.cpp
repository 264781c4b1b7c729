// Copying makes room first, and what goes to make it may be the source.

#include <gtest/gtest.h>

#include "tests/support/document_kinds.h"

namespace qenzor::testing {
namespace {

class CopyOfPart : public ::testing::Test {
 protected:
  CopyOfPart() {
    const Bytes map = QenKind::DocumentBytes();
    const Bytes draw = ZorKind::DocumentBytes();
    EXPECT_TRUE(m_map.Read(map.data(), map.size()));
    EXPECT_TRUE(m_draw.Read(draw.data(), draw.size()));
  }

  /// That it is as good as new when it has copied its first element, in either form.
  template <class Root, class Atters>
  static void ExpectReleased(Root& root, Atters& atters) {
    auto& segments = *root.MeshSegmentSet;
    segments.DeepCopy(segments.GetElem(0));
    EXPECT_TRUE(segments.empty());
    root.DeepCopy(&segments);
    EXPECT_EQ(root.MeshSegmentSet, nullptr);
    atters.DeepCopy(atters.GetElems().at(0));
    EXPECT_TRUE(atters.empty());
  }

  CQen m_map;
  CZor m_draw;
};

TEST_F(CopyOfPart, ReleasesAChunk) {
  ExpectReleased(*m_map.MapData, *m_draw.DrawData.DrawAtterSet);
}

TEST_F(CopyOfPart, ReleasesAnEditObject) {
  CQenEdit map;
  map.QenDataToEditData(&m_map);
  CZorEdit draw;
  draw.ZorDataToEditData(&m_draw);
  ExpectReleased(*map.MapData, *draw.DrawData.DrawAtterSet);
}

}  // namespace
}  // namespace qenzor::testing
