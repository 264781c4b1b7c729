#pragma once

#include <cstdint>
#include <type_traits>

#include "qenzor/zor/zor.h"

namespace qenzor {

/// Calls f(draw_info) for every draw info of the class, named by its chunk, that the draw attribute
/// of the z-id asks for, in the order of its list: ForEachDrawInfo<CLineDrawInfo>(zor, z_id, f),
/// without a class for all. The draw data are in the chunk or the edit form; what f gets is const
/// if they are, and other z-ids may share it. Positions beyond the set are passed over.
template <class Chunk = CAbstractDrawInfo, class Document, class F>
requires std::is_base_of_v<CZor, std::remove_const_t<Document>> ||
    std::is_base_of_v<CZorEdit, std::remove_const_t<Document>>
void ForEachDrawInfo(Document& zor, std::uint64_t z_id, F&& f) {
  constexpr bool kIsEdit = std::is_base_of_v<CZorEdit, std::remove_const_t<Document>>;
  using Wanted = std::conditional_t<kIsEdit, typename Chunk::EditClass, Chunk>;
  using Kept = std::conditional_t<std::is_const_v<Document>, const Wanted, Wanted>;
  const auto& atters = zor.DrawData.DrawAtterSet;
  const auto& infos = zor.DrawData.DrawInfoSet;
  if (atters == nullptr || infos == nullptr) return;
  const auto* atter = atters->GetElem(z_id);
  if (atter == nullptr || atter->DrawInfoIdxSet == nullptr) return;
  for (const std::uint32_t index : atter->DrawInfoIdxSet->DrawInfoIdx)
    if (auto* info = class_cast<Wanted>(infos->GetElem(index))) f(static_cast<Kept&>(*info));
}

}  // namespace qenzor
