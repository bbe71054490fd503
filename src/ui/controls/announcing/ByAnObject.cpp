// Before 6.8 Qt has no words for it: an object has to appear.
#include "Spoken.h"

namespace vellmoor {

bool Spoken::announce(const QString& /*text*/, bool /*urgent*/) const {
    return false;
}

} // namespace vellmoor
