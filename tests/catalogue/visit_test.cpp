#include "qenzor/visit.h"

#include <gtest/gtest.h>

#include <string>

#include "qenzor/core/unknown_chunk.h"

namespace {

using namespace qenzor;

std::string Kind(const CAbstractChunk& chunk) {
  std::string kind = "none";
  Visit(
      chunk, [&](const CLineObj&) { kind = "line"; },
      [&](const CAbstractObj&) { kind = "other object"; },
      [&](const CAbstractDrawInfo&) { kind = "draw info"; });
  return kind;
}

TEST(Visit, CallsTheFunctionThatFitsTheClassBest) {
  EXPECT_EQ(Kind(CLineObj()), "line");
  EXPECT_EQ(Kind(CPolyObj()), "other object");
  EXPECT_EQ(Kind(CRasLLDrawInfo()), "draw info");
}

TEST(Visit, CallsNoneForAClassThatNoFunctionTakes) {
  EXPECT_EQ(Kind(CLayerData()), "none");
  EXPECT_EQ(Kind(CUnKnownChunk()), "none");
  const CUnKnownChunk unknown;
  EXPECT_FALSE(Visit(unknown, [](const auto&) {}));
}

TEST(Visit, HandsOnAnObjectThatMayBeChanged) {
  CPolyObj poly;
  CAbstractObj& obj = poly;
  EXPECT_TRUE(Visit(obj, [](CPolyObj& found) { found.Height = 7; }));
  EXPECT_EQ(poly.Height, 7);
}

TEST(Visit, HandsAGenericFunctionTheClassItself) {
  const CZIdObj z_id_obj;
  const CAbstractChunk& chunk = z_id_obj;
  std::string tag;
  EXPECT_TRUE(Visit(chunk, [&](const auto& found) { tag = found.kTag; }));
  EXPECT_EQ(tag, "ZIdObj");
}

TEST(Visit, KnowsEditObjects) {
  CPolyObjEdit poly;
  CAbstractObjEdit& edit = poly;
  bool line = false;
  EXPECT_TRUE(Visit(
      edit, [&](CLineObjEdit&) { line = true; }, [](CPolyObjEdit& found) { found.Height = 9; }));
  EXPECT_FALSE(line);
  EXPECT_EQ(poly.Height, 9);
}

TEST(Visit, KnowsAClassThatAUserDerives) {
  struct CMyLine : CLineObj {};
  EXPECT_EQ(Kind(CMyLine()), "line");
}

TEST(ClassCast, GivesAConstObjectForAConstOne) {
  const CLineObj line;
  const CAbstractObj* obj = &line;
  EXPECT_EQ(class_cast<CLineObj>(obj), &line);
  EXPECT_EQ(class_cast<const CLineObj>(obj), &line);
  EXPECT_EQ(class_cast<const CPolyObj>(obj), nullptr);
  EXPECT_EQ(class_cast<const CLineObj>(static_cast<const CAbstractObj*>(nullptr)), nullptr);
}

TEST(ClassCast, KnowsEditObjects) {
  CLineObjEdit line;
  CAbstractChunkEdit* edit = &line;
  EXPECT_EQ(class_cast<CLineObjEdit>(edit), &line);
  EXPECT_EQ(class_cast<CPolyObjEdit>(edit), nullptr);
  const CAbstractChunkEdit* read_only = edit;
  EXPECT_EQ(class_cast<const CAbstractObjEdit>(read_only), &line);
}

}  // namespace
