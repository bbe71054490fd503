#include "Platform.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace vellmoor {

std::string CommandResult::combinedOutput() const {
    if (output.empty() || errorMessage.empty()) {
        return output + errorMessage;
    }
    return output + "\n" + errorMessage;
}

std::optional<std::string> Platform::fileStart(const Path& path, std::size_t count) const {
    // Not blocking: what was a file a moment ago may be a FIFO by now.
    const int descriptor = ::open(path.c_str(), O_RDONLY | O_NONBLOCK | O_NOFOLLOW | O_NOCTTY | O_CLOEXEC);
    if (descriptor < 0) {
        return std::nullopt;
    }
    std::optional<std::string> start;
    struct stat status{};
    if (::fstat(descriptor, &status) == 0 && S_ISREG(status.st_mode)) {
        std::string bytes(count, '\0');
        const ssize_t got = ::pread(descriptor, bytes.data(), bytes.size(), 0);
        if (got >= 0) {
            bytes.resize(static_cast<std::size_t>(got));
            start = std::move(bytes);
        }
    }
    ::close(descriptor);
    return start;
}

} // namespace vellmoor
