#include "qenzor/edit/giving_up_impl.h"

namespace qenzor {

constinit thread_local bool CGivingUp::s_isUnderWay = false;

}  // namespace qenzor
