#pragma once

#include <cstdint>
#include <unordered_map>
#include <vector>

#include "qenzor/core/result.h"
#include "qenzor/draw/draw_op.h"
#include "qenzor/qen/qen.h"
#include "qenzor/view/filters.h"
#include "qenzor/view/frame.h"
#include "qenzor/view/style_book.h"

namespace qenzor {

/// What is drawn of a map at one scale, in the order in which it is drawn. Knows nothing of
/// pictures. Map and marks must outlive it and not be changed meanwhile.
class QENZOR_EXPORT CDrawList {
 public:
  /// Things in one list; more are refused. 40 bytes each.
  static constexpr std::size_t kMaxThings = 8'000'000;

  /// Collects what the styles draw of the objects that pass the filters, at 1:denominator. Fails
  /// for more than kMaxThings. The sink hears of what is passed over, each cause once.
  static Result<CDrawList> Make(const CQen& map, const CFrame& frame, const Filters& filters,
                                CStyleBook& styles, double denominator, const WarningSink& warn);

  std::size_t GetCount() const { return m_things.size(); }
  /// Hands everything over, in drawing order.
  void ForEach(const DrawSink& sink) const;

 private:
  /// One object drawn by one draw info.
  struct Thing {
    const CAbstractObj* Object;
    std::uint64_t ZId;
    std::uint32_t Index;
    std::uint32_t Style;
    std::uint32_t Info;  ///< position + 1, so that the default comes first
    std::uint32_t Sequence;
    std::uint16_t Pass;
    std::uint16_t Layer;
    std::uint16_t Segment;
    DrawSort What;
    ObjectKind Kind;
  };
  class CBuilder;

  explicit CDrawList(const CFrame& frame) : m_frame(frame) {}
  static bool IsBefore(const Thing& a, const Thing& b);
  void Hand(const Thing& thing, const CSegmentFrame& frame, std::vector<MapPoint>& points,
            const DrawSink& sink) const;

  CFrame m_frame;
  std::vector<Thing> m_things;
  std::vector<Style> m_styles;
  std::unordered_map<std::uint32_t, const CMarkData*> m_marks;
};

}  // namespace qenzor
