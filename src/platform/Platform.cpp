#include "Platform.h"

namespace vellmoor {

std::string CommandResult::combinedOutput() const {
    if (output.empty() || errorMessage.empty()) {
        return output + errorMessage;
    }
    return output + "\n" + errorMessage;
}

} // namespace vellmoor
