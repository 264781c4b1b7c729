#pragma once

#include <gtest/gtest.h>

#include <cstddef>
#include <string>

#include "qenzor/qen/qen.h"
#include "qenzor/zor/zor.h"
#include "tests/support/qen_bytes.h"
#include "tests/support/zor_draw_infos.h"

namespace qenzor::testing {

// The two documents, for tests of what holds for both.

struct QenKind {
  using Doc = CQen;
  using Edit = CQenEdit;
  using Converter = CQenTextConverter;
  static constexpr const char* kName = "Qen";
  static constexpr std::size_t kInfoSize = 42;

  /// A document in which every class occurs.
  static Bytes DocumentBytes() { return QenDocumentBytes(); }
  /// One whose last set is empty.
  static Bytes BareBytes() {
    return QenInfoBytes().Add(Chunk(id::kQenMapData, SetChunk(id::kMeshSegmentSet, {})));
  }

  static CAbstractChunk& Root(Doc& doc) { return *doc.MapData; }
  static CAbstractChunkEdit& Root(Edit& edit) { return *edit.MapData; }
  static void Empty(Doc& doc) { doc.MapData.reset(); }
  static void ToEdit(Doc& doc, Edit& edit) { edit.QenDataToEditData(&doc); }
  static Doc* ToDoc(Edit& edit) { return edit.EditDataToQenData(); }
  static Edit* FromXml(CString path) { return Converter().ConvertTextToQenEdit(std::move(path)); }
};

struct ZorKind {
  using Doc = CZor;
  using Edit = CZorEdit;
  using Converter = CZorTextConverter;
  static constexpr const char* kName = "Zor";
  static constexpr std::size_t kInfoSize = 19;

  static Bytes DocumentBytes() { return ZorInfoBytes().Add(DrawDataBytes(Sets())); }
  static Bytes BareBytes() {
    std::vector<Bytes> sets = Sets();
    sets.back() = SetChunk(id::kMarkDataSet, {});
    return ZorInfoBytes().Add(DrawDataBytes(sets));
  }
  static std::vector<Bytes> Sets() {
    std::vector<Bytes> sets = ThreeSets();
    sets[1] = SetChunk(
        id::kDrawInfoSet,
        {DrawInfoBytes<CLineDrawInfo>({50000}), DrawInfoBytes<CPolySolidBrushDrawInfo>({9, 8}),
         DrawInfoBytes<CPolyBmpBrushDrawInfo>({1}), DrawInfoBytes<CPolyShadowDrawInfo>({2}),
         DrawInfoBytes<CCmbLblDrawInfo>({3}), DrawInfoBytes<CRasLLDrawInfo>({4}),
         DrawInfoBytes<CRasMMDrawInfo>({5})});
    return sets;
  }

  static CAbstractChunk& Root(Doc& doc) { return doc.DrawData; }
  static CAbstractChunkEdit& Root(Edit& edit) { return edit.DrawData; }
  static void Empty(Doc& doc) {
    doc.DrawData.DrawAtterSet.reset();
    doc.DrawData.DrawInfoSet.reset();
    doc.DrawData.MarkDataSet.reset();
  }
  static void ToEdit(Doc& doc, Edit& edit) { edit.ZorDataToEditData(&doc); }
  static Doc* ToDoc(Edit& edit) { return edit.EditDataToZorData(); }
  static Edit* FromXml(CString path) { return Converter().ConvertTextToZorEdit(std::move(path)); }
};

using DocumentKinds = ::testing::Types<QenKind, ZorKind>;

/// Names typed tests after their document.
struct KindNames {
  template <class Kind>
  static std::string GetName(int /*index*/) {
    return Kind::kName;
  }
};

}  // namespace qenzor::testing
