#include "Platform.h"

#include "PosixFiles.h"

namespace vellmoor {

std::string CommandResult::combinedOutput() const {
    if (output.empty() || errorMessage.empty()) {
        return output + errorMessage;
    }
    return output + "\n" + errorMessage;
}

std::string valueOf(const KeyFile& file, std::string_view group, std::string_view key) {
    const auto keys = file.find(std::string(group));
    if (keys == file.end()) {
        return {};
    }
    const auto found = keys->second.find(std::string(key));
    return found == keys->second.end() ? std::string() : found->second;
}

std::optional<std::string> Platform::fileStart(const Path& path, std::size_t count) const {
    return files::start(path, count);
}

} // namespace vellmoor
