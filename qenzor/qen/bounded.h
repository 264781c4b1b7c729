#pragma once

#include <cstddef>

#include "qenzor/core/data_hooks.h"
#include "qenzor/core/forms.h"
#include "qenzor/platform/bounds.h"
#include "qenzor/platform/export.h"

namespace qenzor {

enum class QENZOR_EXPORT BoundsOf { kAllPoints, kRing };

/// Adds to the data of an object with points their bounding rectangle, taken while reading. It is
/// empty at the origin for an object without points and for one that was not read.
template <class Data, BoundsOf kOf>
class QENZOR_EXPORT CBounded : public Data {
 public:
  /// The bounding rectangle as it was found when the object was read.
  CRect GetBoundRect() const { return m_boundRect; }

  struct Hooks final : DataHooks<CBounded> {
    /// A ring closes where it began, so in memory its last point is left out.
    void AfterMemoryRead(CBounded& data) const override {
      const std::size_t count = data.Pt.size();
      const std::size_t bounded = kOf == BoundsOf::kRing && count > 1 ? count - 1 : count;
      data.m_boundRect = BoundRectOf({data.Pt.data(), bounded});
    }
    void AfterFileRead(CBounded& data) const override {
      data.m_boundRect = BoundRectOf({data.Pt.data(), data.Pt.size()});
    }
    void CopyDerived(const CBounded& from, CBounded& to) const override {
      to.m_boundRect = from.m_boundRect;
    }
  };

 private:
  CRect m_boundRect;
};

/// An edit object may be changed at any time and has no bounds.
template <class Data, BoundsOf kOf>
struct EditFormOf<CBounded<Data, kOf>> : EditFormOf<Data> {};

}  // namespace qenzor
