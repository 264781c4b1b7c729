#include "qenzor/zor/walk.h"

#include <gtest/gtest.h>

#include <type_traits>
#include <vector>

#include "qenzor/zor/line_draw_info.h"
#include "qenzor/zor/poly_solid_brush_draw_info.h"

namespace {

using namespace qenzor;

/// Three draw infos, a brush between two lines; z-id 5 asks for the last, one that is not there,
/// the brush and the first.
void Fill(CZorEdit& zor) {
  zor.DrawData.DrawInfoSet = std::make_shared<CDrawInfoSetEdit>();
  zor.DrawData.DrawInfoSet->Append(std::make_unique<CLineDrawInfoEdit>()).LineCode = 1;
  zor.DrawData.DrawInfoSet->Append(std::make_unique<CPolySolidBrushDrawInfoEdit>());
  zor.DrawData.DrawInfoSet->Append(std::make_unique<CLineDrawInfoEdit>()).LineCode = 2;
  auto atter = std::make_unique<CDrawAtterEdit>();
  atter->ZId = 5;
  atter->DrawInfoIdxSet = std::make_unique<CDrawInfoIdxSetEdit>();
  atter->DrawInfoIdxSet->DrawInfoIdx = {2, 3, 1, 0};
  zor.DrawData.DrawAtterSet = std::make_shared<CDrawAtterSetEdit>();
  zor.DrawData.DrawAtterSet->Insert(std::move(atter));
}

TEST(ForEachDrawInfo, FollowsTheAttributesListAndPassesOverWhatIsNotThere) {
  CZorEdit zor;
  Fill(zor);
  std::vector<std::ptrdiff_t> found;
  ForEachDrawInfo(zor, 5, [&](CAbstractDrawInfoEdit& info) {
    for (std::uint32_t i = 0; i < 3; ++i)
      if (zor.DrawData.DrawInfoSet->GetElem(i) == &info) found.push_back(i);
  });
  EXPECT_EQ(found, (std::vector<std::ptrdiff_t>{2, 1, 0}));
  ForEachDrawInfo(zor, 6, [](auto&) { FAIL(); });
  const CZorEdit empty;
  ForEachDrawInfo(empty, 5, [](auto&) { FAIL(); });
}

TEST(ForEachDrawInfo, GivesThoseOfAClassInEitherForm) {
  CZorEdit edit;
  Fill(edit);
  std::vector<int> codes;
  ForEachDrawInfo<CLineDrawInfo>(edit, 5,
                                 [&](CLineDrawInfoEdit& line) { codes.push_back(line.LineCode); });
  const auto chunks = ToDocument(edit);
  ForEachDrawInfo<CLineDrawInfo>(std::as_const(*chunks), 5, [&](auto& line) {
    static_assert(std::is_same_v<decltype(line), const CLineDrawInfo&>);
    codes.push_back(line.LineCode);
  });
  EXPECT_EQ(codes, (std::vector<int>{2, 1, 2, 1}));
}

}  // namespace
