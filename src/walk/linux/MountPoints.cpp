#include "MountPoints.h"

#include <cerrno>
#include <fcntl.h>
#include <unistd.h>

namespace vellmoor::walk {

std::expected<std::unique_ptr<const MountPoints>, std::errc> MountPoints::below(const std::filesystem::path& root) {
    const int fd = ::open("/proc/self/mountinfo", O_RDONLY | O_CLOEXEC);
    if (fd < 0 && (errno == EMFILE || errno == ENFILE)) {
        return std::unexpected(std::errc::too_many_files_open);
    }
    if (fd < 0) {
        return nullptr; // no /proc: the device test alone must do
    }
    std::string text;
    char buffer[16384];
    ssize_t count = 0;
    while ((count = ::read(fd, buffer, sizeof buffer)) > 0) {
        text.append(buffer, static_cast<std::size_t>(count));
    }
    ::close(fd);
    // Mount points are listed with their links resolved, but /home may be a link to /var/home.
    std::error_code error;
    const std::filesystem::path real = std::filesystem::canonical(root, error);
    return parse(text, error ? root.native() : real.native());
}

} // namespace vellmoor::walk
