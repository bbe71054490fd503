#include "scan/EngineContext.h"

namespace vellmoor {

const CancelToken& EngineContext::never() {
    static const CancelToken token;
    return token;
}

} // namespace vellmoor
