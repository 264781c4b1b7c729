#pragma once

#include <utility>

#include "qenzor/platform/near_tls_impl.h"

namespace qenzor {

/// While one lives, an edit form that is turned into chunks on its thread gives up its elements one
/// by one, so that the two forms need not be in memory together. The conversions are virtual, with
/// fixed signatures, so there is no argument to tell them.
class CGivingUp {
 public:
  CGivingUp() noexcept : m_before(std::exchange(s_isUnderWay, true)) {}
  ~CGivingUp() { s_isUnderWay = m_before; }
  CGivingUp(const CGivingUp&) = delete;
  CGivingUp& operator=(const CGivingUp&) = delete;

  static bool IsUnderWay() noexcept { return s_isUnderWay; }

 private:
  // NOLINTNEXTLINE(cppcoreguidelines-avoid-non-const-global-variables)
  QENZOR_NEAR_TLS static constinit thread_local bool s_isUnderWay;
  bool m_before;
};

}  // namespace qenzor
