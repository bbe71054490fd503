#include "MacLog.h"

#include <array>
#include <os/log.h>

namespace vellmoor::mac {
namespace {

os_log_t logOf(LogCategory category) {
    constexpr auto subsystem = "org.vellmoor.Vellmoor";
    static const std::array logs{os_log_create(subsystem, "files"), os_log_create(subsystem, "tools"),
                                 os_log_create(subsystem, "window")};
    return logs.at(static_cast<std::size_t>(category));
}

} // namespace

void logFailure(LogCategory category, const char* what, long code, const std::string& details) {
    os_log_error(logOf(category), "%{public}s failed (%{public}ld): %{private}s", what, code, details.c_str());
}

} // namespace vellmoor::mac
