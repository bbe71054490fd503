#include "Platform.h"

#include "PosixFiles.h"

namespace vellmoor {

std::string CommandResult::combinedOutput() const {
    if (output.empty() || errorMessage.empty()) {
        return output + errorMessage;
    }
    return output + "\n" + errorMessage;
}

std::optional<std::string> Platform::fileStart(const Path& path, std::size_t count) const {
    return files::start(path, count);
}

} // namespace vellmoor
