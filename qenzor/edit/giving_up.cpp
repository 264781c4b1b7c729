#include "qenzor/edit/giving_up_impl.h"

namespace qenzor {

// NOLINTNEXTLINE(cppcoreguidelines-avoid-non-const-global-variables): false between two calls
QENZOR_NEAR_TLS constinit thread_local bool CGivingUp::s_isUnderWay = false;

}  // namespace qenzor
