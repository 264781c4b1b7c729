// Sets and the factory of edit objects, while memory runs out at every allocation in turn.

#include <gtest/gtest.h>

#include "qenzor/edit/chunk_edit_factory.h"
#include "qenzor/qen/line_obj.h"
#include "qenzor/qen/obj_set.h"
#include "qenzor/zor/draw_atter_set.h"
#include "tests/support/allocation_faults.h"
#include "tests/support/bytes.h"

namespace qenzor::testing {
namespace {

class DrawAtterSetAllocation : public ::testing::Test {
 protected:
  static constexpr std::uint32_t kCount = 20;

  DrawAtterSetAllocation() {
    std::vector<Bytes> elements;
    for (std::uint64_t key = 0; key < kCount; ++key) {
      const Bytes index_set = Chunk(23, Bytes().U32(2).U32(3).U32(4));
      elements.push_back(Chunk(id::kDrawAtter, Bytes().U64(key).Add(index_set)));
    }
    m_bytes = SetChunk(id::kDrawAtterSet, elements);
    static_cast<void>(m_set.Read(m_bytes.data(), m_bytes.size()));
  }

  Bytes m_bytes;
  CDrawAtterSet m_set;
};

TEST_F(DrawAtterSetAllocation, ReadingGivesFalse) {
  ExpectSurvivesFaults(
      OnFault::kGivesNothing,
      [this] {
        CDrawAtterSet set;
        return set.Read(m_bytes.data(), m_bytes.size());
      },
      [](bool) {});
}

TEST_F(DrawAtterSetAllocation, CloneGivesNull) {
  ExpectSurvivesFaults(
      OnFault::kGivesNothing, [this] { return std::unique_ptr<CAbstractChunk>(m_set.Clone()); },
      [](const auto& clone) {
        EXPECT_EQ(static_cast<CDrawAtterSet&>(*clone).GetElemCount(), kCount);
      });
}

TEST_F(DrawAtterSetAllocation, ConvertingAndCopyingTheEditFormThrows) {
  ExpectSurvivesFaults(
      OnFault::kThrows,
      [this] {
        auto edit = std::make_unique<CDrawAtterSetEdit>();
        edit->ChunkDataToEditData(&m_set);
        return edit;
      },
      [](const auto& edit) { EXPECT_EQ(edit->GetElemCount(), kCount); });
  CDrawAtterSetEdit edit;
  edit.ChunkDataToEditData(&m_set);
  ExpectSurvivesFaults(
      OnFault::kThrows, [&] { return std::unique_ptr<CAbstractChunkEdit>(edit.Clone()); },
      [](const auto& clone) {
        EXPECT_EQ(static_cast<CDrawAtterSetEdit&>(*clone).GetElemCount(), kCount);
      });
  ExpectSurvivesFaults(
      OnFault::kThrows, [&] { return std::unique_ptr<CAbstractChunk>(edit.EditDataToChunkData()); },
      [](const auto& chunk) {
        EXPECT_EQ(static_cast<CDrawAtterSet&>(*chunk).GetElemCount(), kCount);
      });
}

TEST_F(DrawAtterSetAllocation, GivingItAnElementThrowsAndDestroysTheElement) {
  ExpectSurvivesFaults(
      OnFault::kThrows,
      [] {
        CDrawAtterSet set;
        CDrawAtterSetEdit edit;
        for (std::uint64_t key = 0; key < kCount; ++key) {
          auto atter = std::make_unique<CDrawAtter>();
          atter->ZId = key;
          set.SubChunkSet(0, atter.release());
          auto atter_edit = std::make_unique<CDrawAtterEdit>();
          atter_edit->ZId = key;
          edit.AddElem(atter_edit.release());
        }
        return true;
      },
      [](bool) {});
}

TEST(ObjSetAllocation, GivingItAnElementThrowsAndDestroysTheElement) {
  ExpectSurvivesFaults(
      OnFault::kThrows,
      [] {
        CObjSet set;
        for (int i = 0; i < 40; ++i) set.SubChunkSet(0, new CLineObj);
        return true;
      },
      [](bool) {});
  ExpectSurvivesFaults(
      OnFault::kThrows,
      [] {
        CObjSetEdit set;
        for (int i = 0; i < 20; ++i) set.SetSubChunkEdit(new CLineObjEdit);
        for (std::uint32_t i = 0; i < 20; ++i) set.AddElem(i, new CLineObjEdit);
        return true;
      },
      [](bool) {});
}

TEST(EditFactoryAllocation, AnEditObjectForAConverterIsNull) {
  CLineObjTextConverter converter;
  ExpectSurvivesFaults(
      OnFault::kGivesNothing,
      [&] {
        return std::unique_ptr<CAbstractChunkEdit>(
            CChunkEditFactory::CreateInitInstance(&converter));
      },
      [](const auto& edit) { EXPECT_NE(dynamic_cast<CLineObjEdit*>(edit.get()), nullptr); });
}

}  // namespace
}  // namespace qenzor::testing
