#include "Purge.h"

#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <string_view>
#include <unistd.h>

namespace vellmoor {
namespace {

constexpr std::string_view pagesAndSlab = "3";

int failure(int error, std::FILE* errors) {
    std::fprintf(errors, "%s\n", purgeErrorText(error));
    return 1;
}

} // namespace

const char* purgeErrorText(int error) {
    return error == EACCES || error == EPERM ? "Operation not permitted" : std::strerror(error);
}

int dropFileCaches(const char* switchPath, std::FILE* errors, const std::function<void()>& writeDisks) {
    const int file = open(switchPath, O_WRONLY | O_CLOEXEC);
    if (file < 0) {
        return failure(errno, errors);
    }
    writeDisks(); // only clean pages can be dropped
    const ssize_t written = write(file, pagesAndSlab.data(), pagesAndSlab.size());
    const int error = written < 0 ? errno : EIO;
    close(file);
    return written == static_cast<ssize_t>(pagesAndSlab.size()) ? 0 : failure(error, errors);
}

} // namespace vellmoor
