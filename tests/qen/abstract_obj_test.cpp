// An object class of the caller's own, over the base of all objects.

#include "qenzor/qen/abstract_obj.h"

#include <gtest/gtest.h>

#include "qenzor/qen/added_obj_info_set.h"
#include "qenzor/qen/line_obj.h"

namespace qenzor::testing {
namespace {

class OwnObj : public CAbstractObj {
 public:
  CAbstractChunk* Clone() override {
    auto* clone = new OwnObj;
    clone->DeepCopy(this);
    return clone;
  }
  void RecursiveReCalcDataSize() override { m_header.DataSize = 0; }
  using CAbstractObj::Release;

 protected:
  bool ReadPrimitiveBlock(const void* /*data*/, const std::uint32_t& /*size*/,
                          std::uint32_t& consumed) override {
    consumed = 0;
    return true;
  }
  bool ReadPrimitiveBlock(CFile* /*file*/, std::uint32_t& consumed) override {
    consumed = 0;
    return true;
  }
  bool WriteData(CFile* /*file*/, bool /*recalc*/) override { return true; }
};

class OwnObjEdit : public CAbstractObjEdit {
 public:
  CAbstractChunk* EditDataToChunkData() override { return new OwnObj; }
  void ChunkDataToEditData(CAbstractChunk* /*chunk*/) override {}
  CAbstractChunkEdit* Clone() override { return new OwnObjEdit; }
  void DeepCopy(CAbstractChunkEdit* /*source*/) override {}
  void Release() override {}
};

TEST(AbstractObj, TheBaseKeepsAndCopiesTheInfoSet) {
  OwnObj obj;
  obj.SubChunkSet(0, new CAddedObjInfoSet);
  obj.SubChunkSet(1, new CLineObj);  // has no place here
  ASSERT_NE(obj.AddedObjInfoSet, nullptr);
  const std::unique_ptr<CAbstractChunk> clone(obj.Clone());
  const auto& copied = static_cast<const OwnObj&>(*clone).AddedObjInfoSet;
  ASSERT_NE(copied, nullptr);
  EXPECT_NE(copied, obj.AddedObjInfoSet);
  obj.DeepCopy(&obj);
  EXPECT_NE(obj.AddedObjInfoSet, nullptr);
  obj.Release();
  EXPECT_EQ(obj.AddedObjInfoSet, nullptr);
  CLineObj line;
  EXPECT_EQ(class_cast<CAbstractObj>(&line), &line);
  EXPECT_EQ(&static_cast<CAbstractChunk&>(obj).GetRuntimeClass(), &CAbstractObj::kRuntimeClass);
}

TEST(AbstractObj, TheEditBaseTakesAnInfoSetEditOnly) {
  OwnObjEdit edit;
  EXPECT_TRUE(edit.SetSubChunkEdit(new CAddedObjInfoSetEdit));
  EXPECT_FALSE(edit.SetSubChunkEdit(new CLineObjEdit));
  EXPECT_NE(edit.AddedObjInfoSet, nullptr);
}

}  // namespace
}  // namespace qenzor::testing
